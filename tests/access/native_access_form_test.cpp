// The forms that callers build their own system calls with, through the DLL.

#include <fl/filesystem.hpp>

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/windows.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using windows::make_native_access_form_bridge;

constexpr row_of<char16_t const *, wchar_t const *> form_cases[] = {
    {uR"(C:\x)", LR"(C:\x)", "nothing to do"},
    {uR"(C:\a\.\b)", LR"(C:\a\b)", "a full stop"},
    {uR"(C:\a\..\b)", LR"(C:\b)", "the system drops two by text"},
    {uR"(C:\link\..\x)", LR"(C:\x)", "whatever stands there"},
    {uR"(C:\)", LR"(C:\)", "a root keeps its separator"},
    {uR"(C:\a\)", LR"(C:\a)", "a name doesn't"},
    {uR"(C:\..\..\a)", LR"(C:\a)", "nothing is above a root"},
    {uR"(\\server\share)", LR"(\\server\share)", "a share"},
    {uR"(\\server\share\a\.\b)", LR"(\\server\share\a\b)", "on a share"},
    {uR"(\\server\share\a\..\b)", LR"(\\server\share\b)", "on a share"},
    {uR"(\\?\C:\a)", LR"(C:\a)", "a prefix that nobody needs goes"},
    {uR"(\\?\UNC\server\share\a)", LR"(\\server\share\a)", "a prefix that nobody needs goes"},
};

TEST_IN_WORKSPACE(NativeAccessForm, Table)
{
    expect_rows(form_cases,
                [](auto const &given) { return make_native_access_form_bridge(given); });
    expect_rows(form_cases, [](auto const &given) { return make_native_access_form(given); });
    expect_rows(form_cases,
                [](auto const &given) { return make_native_access_form_with_cleanup(given); });
}

TEST_IN_WORKSPACE(NativeAccessForm, GetsThePrefixFrom260Units)
{
    char16_t const *const drive = uR"(C:\)";
    char16_t const *const share = uR"(\\server\share\)";
    for (std::size_t const size : {258U, 259U}) {
        EXPECT_EQ(make_native_access_form_bridge(of_size(drive, size)), wide(of_size(drive, size)));
        EXPECT_EQ(make_native_access_form_bridge(of_size(share, size)), wide(of_size(share, size)));
    }
    for (std::size_t const size : {260U, 261U, 2000U}) {
        EXPECT_EQ(make_native_access_form_bridge(of_size(drive, size)),
                  LR"(\\?\)" + wide(of_size(drive, size)));
        EXPECT_EQ(make_native_access_form_bridge(of_size(share, size)),
                  LR"(\\?\UNC\)" + wide(of_size(share, size)).substr(2));
    }
}

TEST_IN_WORKSPACE(NativeAccessForm, StandsOnTheCurrentDirectory)
{
    EXPECT_EQ(make_native_access_form_bridge(u"x"), wide(at(u"x")));
    EXPECT_EQ(make_native_access_form_bridge(uR"(a\..\x\.)"), wide(at(u"x")));
    EXPECT_EQ(make_native_access_form(uR"(\x)"), wide(work.root().substr(0, 2)) + LR"(\x)");
    EXPECT_EQ(make_native_access_form_with_cleanup(u"a//./x/"), wide(at(uR"(a\x)")));
}

TEST_IN_WORKSPACE(NativeAccessForm, TellsWhatIsNoPathname)
{
    for (char16_t const *path : {uR"(\\server)", uR"(\\.\COM1)"}) {
        EXPECT_FAILURE(make_native_access_form_bridge(path), bad_path_type(path));
        EXPECT_EQ(make_native_access_form(path), wide(path)) << "and that one never tells";
        EXPECT_EQ(make_native_access_form_with_cleanup(path), wide(path));
    }
    EXPECT_EQ(make_native_access_form_with_cleanup(u"//server//"), LR"(\\server\)");
}

TEST_IN_WORKSPACE(NativeAccessForm, CleansWhatUsersWrite)
{
    EXPECT_EQ(make_native_access_form_with_cleanup(u"C:/a//b"), LR"(C:\a\b)");
    EXPECT_EQ(make_native_access_form_with_cleanup(u"//server/share//a/"), LR"(\\server\share\a)");
}

TEST(IsPathCleanBridge, ExamplesOfTheHeader)
{
    using windows::is_path_clean_bridge;
    EXPECT_TRUE(is_path_clean_bridge(LR"(a\b)", 3));
    EXPECT_TRUE(is_path_clean_bridge(L"...", 3));
    EXPECT_FALSE(is_path_clean_bridge(LR"(.\a)", 3));
    EXPECT_FALSE(is_path_clean_bridge(LR"(a\..)", 4));
    EXPECT_FALSE(is_path_clean_bridge(LR"(a\\b)", 4));
    EXPECT_FALSE(is_path_clean_bridge(LR"(\\server\share)", 14)) << "two separators ahead";
    EXPECT_FALSE(is_path_clean_bridge(LR"(abcd\..\x)", 4)) << "also behind the length";
    EXPECT_TRUE(is_path_clean_bridge(L"", 0));
    EXPECT_TRUE(is_path_clean_bridge(L"ab", std::uint64_t{1} << 40U));
}

} // namespace
} // namespace fl::filesystem::detail
