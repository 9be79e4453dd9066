// Failures as values, and the door to the translation of codes.

#include <fl/filesystem/attempt.hpp>

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"
#include "support/translation.hpp"

#include <memory>
#include <new>
#include <stdexcept>

namespace fl::filesystem::tests {
namespace {

TEST_IN_WORKSPACE(Attempt, HasTheResultOfACallThatDoesntThrow)
{
    auto const number = attempt([] { return 42; });
    static_assert(std::is_same_v<decltype(number), outcome<int> const>);
    EXPECT_TRUE(number);
    EXPECT_TRUE(number.has_value());
    EXPECT_EQ(*number, 42);
    EXPECT_EQ(number.value_or(1), 42);
    EXPECT_THROW(static_cast<void>(number.error()), std::bad_variant_access);
    std::string const text = "text";
    auto const copied = attempt([&]() -> std::string const & { return text; });
    EXPECT_EQ(copied->size(), 4U);
    EXPECT_EQ(*attempt([] { return std::make_unique<int>(7); }).value(), 7) << "moved out";
    std::unique_ptr<int> const moved = *attempt([] { return std::make_unique<int>(7); });
    EXPECT_EQ(*moved, 7);
    int calls = 0;
    EXPECT_TRUE(attempt([&] { ++calls; }));
    EXPECT_NO_THROW(attempt([&] { ++calls; }).value());
    EXPECT_EQ(calls, 2);
}

TEST_IN_WORKSPACE(Attempt, HasAllThatAFailureTells)
{
    std::u16string const missing = at(u"no");
    auto const tried = attempt([&] { return read_symlink(missing); });
    ASSERT_FALSE(tried);
    EXPECT_EQ(tried.error().id(), fsys_excp_path_not_found);
    EXPECT_EQ(tried.error().identifier(), "fl:filesystem:PathNotFound");
    EXPECT_EQ(tried.error().path_name(), missing);
    EXPECT_TRUE(tried.error().additional_path_names().empty());
    EXPECT_EQ(tried.error().error_code(), 0U);
    EXPECT_EQ(tried.value_or(u"x"), u"x");
    EXPECT_THROW(static_cast<void>(tried.value()), PathNotFound) << "the exception itself";
    EXPECT_THROW(static_cast<void>(*tried), PathNotFound);
    try {
        static_cast<void>(read_symlink(missing));
    } catch (FsysExceptionBase const &exception) {
        EXPECT_EQ(tried.error().describe(), describe(exception));
    }
    auto const removed = attempt([&] { remove(missing); });
    EXPECT_EQ(removed.error(), tried.error());
    EXPECT_THROW(removed.value(), PathNotFound);
    auto const other = attempt([] { throw SystemError(32, u"a", {u"b"}); });
    EXPECT_EQ(other.error().error_code(), 32U);
    EXPECT_EQ(other.error().additional_path_names(), std::vector<std::u16string>{u"b"});
    EXPECT_NE(other.error(), tried.error());
}

TEST_IN_WORKSPACE(Attempt, TakesWhatOperationsThrowThatIsNotOfTheFamily)
{
    auto const of_ctype = attempt([] { throw foundation::ustring::CtypeInvalidCharacter(); });
    EXPECT_EQ(static_cast<int>(of_ctype.error().id()), 0);
    EXPECT_EQ(of_ctype.error().identifier(), foundation::ustring::CtypeInvalidCharacter().what());
    std::filesystem::filesystem_error const error("absolute",
                                                  std::error_code(5, std::system_category()));
    auto const of_standard = attempt([&] { throw error; });
    EXPECT_EQ(static_cast<int>(of_standard.error().id()), 0);
    EXPECT_EQ(of_standard.error().identifier(), error.what());
    EXPECT_EQ(of_standard.error().error_code(), 5U);
    EXPECT_EQ(of_standard.error().describe(), error.what() + std::string(" (code 5)"));
    EXPECT_EQ(of_ctype.error().describe(), of_ctype.error().identifier());
    auto const refused = attempt([] { static_cast<void>(space(upath())); });
    EXPECT_EQ(refused.error().describe(),
              "fl:filesystem:InvalidArgument: Empty Path not permitted");
    EXPECT_THROW(of_standard.value(), std::filesystem::filesystem_error);
}

TEST_IN_WORKSPACE(Attempt, FailuresAreEqualIfEachFieldIs)
{
    auto const told = [](char const *identifier, char16_t const *path, char16_t const *more,
                         unsigned int code) {
        return failure(FsysExceptionBase(identifier, fsys_excp_access_denied, path, {more}, code));
    };
    auto const one = told("id", u"p", u"m", 1);
    EXPECT_EQ(one, told("id", u"p", u"m", 1));
    for (failure const &other :
         {told("i", u"p", u"m", 1), told("id", u"q", u"m", 1), told("id", u"p", u"n", 1),
          told("id", u"p", u"m", 2), failure(AccessDenied(u"p")),
          failure(FsysExceptionBase("id", fsys_excp_path_not_found, u"p", {u"m"}, 1))}) {
        EXPECT_NE(one, other);
        EXPECT_NE(other, one);
    }
}

TEST_IN_WORKSPACE(Attempt, LetsAllOtherExceptionsPass)
{
    EXPECT_THROW(static_cast<void>(attempt([] { throw std::bad_alloc(); })), std::bad_alloc);
    EXPECT_THROW(static_cast<void>(attempt([]() -> int { throw std::logic_error("x"); })),
                 std::logic_error);
}

TEST(ThrowLastError, SpeaksTheWordsOfTheOperations)
{
    std::u16string const p = uR"(C:\x)";
    for (unsigned int const code :
         {0U, 2U, 3U, 5U, 32U, 80U, 123U, 145U, 161U, 183U, 206U, 267U, 1920U, 4390U}) {
        EXPECT_EQ(failure_of([&] { throw_last_error(code, p); }), translated(code, p)) << code;
        EXPECT_EQ(failure_of([&] { throw_last_error(code, upath(p)); }), translated(code, p));
    }
    std::u16string const overlong(32768, u'x');
    EXPECT_EQ(failure_of([&] { throw_last_error(3, overlong); }), too_large(overlong));
    auto const expected = system_error(32, p, u"D:\\y");
    EXPECT_EQ(failure_of([&] { throw_last_error(32, p, u"D:\\y"); }), expected);
    EXPECT_EQ(failure_of([&] { throw_last_error(32, upath(p), upath(u"D:\\y")); }), expected);
    EXPECT_EQ(failure_of([&] { throw_last_error(32, upath(p), u"D:\\y"); }), expected) << "mixed";
    EXPECT_EQ(failure_of([&] { throw_last_error(5, p, u"D:\\y"); }), denied(p));
    EXPECT_EQ(failure_of([&] { throw_last_error(5, u"C:/x "); }), denied(u"C:/x "))
        << "a text as it is";
}

} // namespace
} // namespace fl::filesystem::tests
