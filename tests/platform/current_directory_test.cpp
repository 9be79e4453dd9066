#include "platform/contract.hpp"

namespace contract {

namespace {

TEST(CurrentDirectory, Outcomes)
{
    auto const change = [](workspace const &space, std::wstring const &name) {
        DWORD const code = set_current_directory(name);
        std::wstring const there = code == success ? in(space, L"dir") : wide(space.root());
        if (name != L"nul" || !runs_under_wine()) { // which stands nowhere then
            EXPECT_EQ(current_directory(), there) << name;
        }
        return code;
    };
    expect_code(fill, change, success, {LR"(@\dir)", LR"(@\dir\)", LR"(@\dir\..\dir\.)", L"dir"});
    expect_codes(fill, change, missing_names);
    expect_code(fill, change, ERROR_DIRECTORY, {LR"(@\file)"});
    expect_code(fill, change, expected(ERROR_DIRECTORY, success), {L"nul"});
    expect_code(fill, change, ERROR_INVALID_NAME, {L"", L"  "});
}

TEST(CurrentDirectory, KeepsTheNameAsItWasTyped)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    EXPECT_EQ(set_current_directory(in(space, L"DIR")), success);
    EXPECT_EQ(current_directory(), in(space, L"DIR"));
}

TEST(CurrentDirectory, EndsInASeparatorOnlyInARoot)
{
    workspace space;
    std::wstring const drive = wide(space.root()).substr(0, 3);
    EXPECT_EQ(set_current_directory(drive), success);
    EXPECT_EQ(current_directory(), drive);
}

// `=X:` is kept by the C runtime's own calls, not by this one.
TEST(CurrentDirectory, IsNotNotedInTheEnvironment)
{
    workspace space;
    std::wstring const variable = L'=' + wide(space.root()).substr(0, 2);
    ::SetEnvironmentVariableW(variable.c_str(), nullptr);
    EXPECT_EQ(set_current_directory(wide(space.root())), success);
    DWORD const code =
        outcome_of([&] { return ::GetEnvironmentVariableW(variable.c_str(), nullptr, 0) != 0; });
    EXPECT_EQ(code, DWORD{ERROR_ENVVAR_NOT_FOUND});
}

// Wine knows no limit here.
TEST(CurrentDirectory, HasALimit)
{
    workspace space;
    for (std::size_t const length : {257U, 259U}) {
        std::wstring const directory = long_path(space, length);
        space.make_directory(units(directory));
        DWORD const code = length == 257 ? success : beyond_limit(ERROR_FILENAME_EXCED_RANGE);
        EXPECT_EQ(set_current_directory(directory), code) << length;
    }
}

TEST(CurrentDirectory, SaysHowMuchRoomItNeeds)
{
    workspace space;
    space.change_directory(space.root());
    std::wstring const root = wide(space.root());
    DWORD const length = static_cast<DWORD>(root.size());
    std::wstring buffer(100, L'#');

    EXPECT_EQ(::GetCurrentDirectoryW(0, nullptr), length + 1);
    EXPECT_EQ(::GetCurrentDirectoryW(length, buffer.data()), length + 1) << "no room for the NUL";
    EXPECT_EQ(buffer[0], L'#');
    EXPECT_EQ(::GetCurrentDirectoryW(length + 1, buffer.data()), length);
    EXPECT_EQ(buffer.c_str(), root);
}

} // namespace

} // namespace contract
