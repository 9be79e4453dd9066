#include "platform/contract.hpp"

namespace contract {

namespace {

DWORD set_variable(wchar_t const *name, wchar_t const *value)
{
    return outcome_of([&] { return ::SetEnvironmentVariableW(name, value) != FALSE; });
}

/// The outcome of asking for a value, which is never empty here.
DWORD get_variable(wchar_t const *name)
{
    wchar_t buffer[40];
    return outcome_of([&] { return ::GetEnvironmentVariableW(name, buffer, 40) != 0; });
}

TEST(EnvironmentVariable, IsSetReadAndRemoved)
{
    EXPECT_EQ(get_variable(L"FL_TEST"), DWORD{ERROR_ENVVAR_NOT_FOUND});
    EXPECT_EQ(set_variable(L"FL_TEST", L"value"), success);
    wchar_t buffer[40];
    EXPECT_EQ(::GetEnvironmentVariableW(L"fl_Test", buffer, 40), 5U) << "case doesn't matter";
    EXPECT_STREQ(buffer, L"value");
    EXPECT_EQ(set_variable(L"FL_TEST", nullptr), success);
    EXPECT_EQ(get_variable(L"FL_TEST"), DWORD{ERROR_ENVVAR_NOT_FOUND});
}

TEST(EnvironmentVariable, SaysHowMuchRoomItNeeds)
{
    ASSERT_EQ(set_variable(L"FL_TEST", L"value"), success);
    wchar_t buffer[] = L"untouched";
    EXPECT_EQ(::GetEnvironmentVariableW(L"FL_TEST", nullptr, 0), 6U);
    EXPECT_EQ(::GetEnvironmentVariableW(L"FL_TEST", buffer, 5), 6U) << "no room for the NUL";
    EXPECT_STREQ(buffer, L"untouched");
    EXPECT_EQ(::GetEnvironmentVariableW(L"FL_TEST", buffer, 6), 5U);
    EXPECT_STREQ(buffer, L"value");
    set_variable(L"FL_TEST", nullptr);
}

// A length of 0 is no failure then. The last error tells, but it is not reset.
TEST(EnvironmentVariable, CanBeEmpty)
{
    ASSERT_EQ(set_variable(L"FL_TEST", L""), success);
    wchar_t buffer[] = L"former text";
    ::SetLastError(success);
    EXPECT_EQ(::GetEnvironmentVariableW(L"FL_TEST", buffer, 5), 0U);
    EXPECT_NE(::GetLastError(), DWORD{ERROR_ENVVAR_NOT_FOUND});
    EXPECT_STREQ(buffer, L"");
    EXPECT_EQ(::GetEnvironmentVariableW(L"FL_TEST", buffer, 0), 1U);
    set_variable(L"FL_TEST", nullptr);
}

TEST(EnvironmentVariable, MayBeginWithAnEqualsSign)
{
    EXPECT_EQ(set_variable(L"=Q:", LR"(Q:\dir)"), success);
    EXPECT_EQ(get_variable(L"=q:"), success);
    EXPECT_EQ(set_variable(L"=Q:", nullptr), success);
}

TEST(EnvironmentVariable, HasAName)
{
    EXPECT_EQ(set_variable(L"", L"value"), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(set_variable(L"a=b", L"value"), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(get_variable(L""), DWORD{ERROR_ENVVAR_NOT_FOUND});
}

} // namespace

} // namespace contract
