// Where a link leads, by its own pathname and what it says. Only texts that need no disk
// are here; the simulated machine shows the others.

#include <fl/filesystem/windows.hpp>

#include "support/names.hpp"

namespace fl::filesystem::detail::windows {
namespace {

using namespace test_support;

constexpr auto relative_link = link_type_symlink_relative;

constexpr row_of_texts<wchar_t> relative_cases[] = {
    {LR"(C:\d\l)", LR"(x\y)", LR"(\\?\C:\d\x\y)", "below the link's directory"},
    {LR"(C:\l)", L"x", LR"(\\?\C:\x)", "in the root"},
    {LR"(C:\d\l\)", L"x", LR"(\\?\C:\d\l\x)", "a separator at the end cuts behind the link"},
    {LR"(\\?\C:\d\l)", L"x", LR"(\\?\C:\d\x)", "a prefix stays"},
    {LR"(\\?\C:\l)", L"x", LR"(\\?\C:\x)", "a prefix stays"},
    {LR"(\\s\h\d\l)", L"x", LR"(\\?\UNC\s\h\d\x)", "on a share"},
    {LR"(\\s\h\l)", L"x", LR"(\\?\UNC\s\h\x)", "in a share's root"},
    {LR"(\\s\h)", L"x", LR"(\\?\UNC\s\h\x)", "the share is the directory"},
    {LR"(\\?\UNC\s\h\d\l)", L"x", LR"(\\?\UNC\s\h\d\x)", "on a share"},
    {LR"(\\?\UNC\s\h\l)", L"x", LR"(\\?\UNC\s\h\x)", "in a share's root"},
    {LR"(\\?\UNC\s\h)", L"x", LR"(\\?\UNC\s\h\x)", "the share is the directory"},
    {L"l", L"x", LR"(\\?\x)", "no separator: the cut is at the root, and there is none"},
    {L"", L"x", LR"(\\?\x)", "no separator: the cut is at the root, and there is none"},
    {L"C:l", L"x", LR"(\\?\C:\x)", "no separator: the cut is behind the drive"},
    {LR"(d\l)", L"x", LR"(\\?\d\x)", "the directory, wherever it is"},
    {LR"(\l)", L"x", LR"(\\?\\x)", "the root, whichever it is"},
    {LR"(C:\d\l)", L"x/../y", LR"(\\?\C:\d\x/../y)", "slashes are no separators here"},
    {LR"(C:\d\l)", L"x//y", LR"(\\?\C:\d\x//y)", "slashes are no separators here"},
    {LR"(C:\d\l)", LR"(x\)", LR"(\\?\C:\d\x\)", "a clean text stays as it is"},
    {LR"(C:\d\l)", L"", LR"(\\?\C:\d\)", "nothing is clean"},
    {LR"(C:\d\l)", LR"(C:\x)", LR"(\\?\C:\d\C:\x)", "the type alone tells"},
    {LR"(C:\d\l)", LR"(\x)", LR"(\\?\C:\d\\x)", "the type alone tells"},
    {LR"(C:\d\..\.\l)", L"x", LR"(\\?\C:\d\..\.\x)", "the link's own pathname isn't looked into"},
};

TEST(BuildTargetPath, OfARelativeLinkIsInItsDirectory)
{
    expect_rows(relative_cases, [](auto first, auto second) {
        return build_target_path_bridge(first, second, relative_link);
    });
}

constexpr row_of_texts<wchar_t> absolute_cases[] = {
    {L"", LR"(C:\x)", LR"(\\?\C:\x)", "a drive gets the prefix"},
    {L"", LR"(C:\)", LR"(\\?\C:\)", "a drive gets the prefix"},
    {L"", LR"(C:\x\)", LR"(\\?\C:\x\)", "a clean text stays as it is"},
    {L"", LR"(\\?\C:\x)", LR"(\\?\C:\x)", "as it is"},
    {L"", LR"(\\?\C:\)", LR"(\\?\C:\)", "as it is"},
    {L"", LR"(\\s\h\x)", LR"(\\?\UNC\s\h\x)", "a share gets its prefix"},
    {L"", LR"(\\s\h\)", LR"(\\?\UNC\s\h\)", "a share gets its prefix"},
    {L"", LR"(\\?\UNC\s\h\x)", LR"(\\?\UNC\s\h\x)", "as it is"},
    {L"", LR"(C:\x/y//z/./..)", LR"(\\?\C:\x/y//z/./..)", "slashes are no separators here"},
    {L"", L"x", LR"(\\?\x)", "nobody rejects what has no root"},
    {L"", LR"(\x)", LR"(\\?\\x)", "nobody rejects what has no drive"},
    {L"", L"", LR"(\\?\)", "nobody rejects nothing"},
    {LR"(D:\d\l)", LR"(C:\x)", LR"(\\?\C:\x)", "the link's own pathname doesn't count"},
};

TEST(BuildTargetPath, OfAnyOtherLinkStandsByItself)
{
    for (auto const &row : absolute_cases)
        for (auto const type : {link_type_symlink_absolute, link_type_mount_point, link_type_none})
            EXPECT_EQ(build_target_path_bridge(row.first, row.second, type), row.expected)
                << printable(units(row.second)) << ": " << row.why;
}

TEST(BuildTargetPath, RefusesWhatLinksCantSay)
{
    auto const nowhere = not_found(u"");
    auto const no_type = invalid_argument("Invalid Path Type");
    failing_row<wchar_t const *> const cases[] = {
        {L"C:", nowhere, "on the drive's current directory"},
        {L"C:x", nowhere, "on the drive's current directory"},
        {L"C:/x", nowhere, "a slash is no root"},
        {LR"(\\s\h)", nowhere, "a share without a separator behind it"},
        {LR"(\\server\)", nowhere, "no share, and nothing behind it"},
        {LR"(\\s\)", no_type, "too short to be looked into"},
        {LR"(\\?\x)", no_type, "no root, as far as links go, and two separators"},
        {LR"(\\?\C:)", nowhere, "a prefix that nothing expands"},
        {LR"(\\?\C:x)", nowhere, "a prefix that nothing expands"},
        {LR"(\\?\UNC\s\h)", nowhere, "a share without a separator behind it"},
        {LR"(\\.\COM1)", no_type, "a device"},
        {LR"(\\)", no_type, "no server"},
        {LR"(\\s)", no_type, "no share"},
        {LR"(\\s\..\x)", no_type, "that is no share"},
        {LR"(\\?\UNC\s)", no_type, "no share"},
        {LR"(\\?\UNC\server)", no_type, "no share"},
    };
    expect_failures(cases, [](auto given) {
        build_target_path_bridge(LR"(C:\d\l)", given, link_type_symlink_absolute);
    });
}

TEST(BuildTargetPath, UncleanTextsNeedARootToWalkFrom)
{
    auto const nowhere = not_found(u"");
    auto const no_type = invalid_argument("Invalid Path Type");
    constexpr auto absolute_link = link_type_symlink_absolute;
    EXPECT_FAILURE(build_target_path_bridge({}, LR"(..\x)", absolute_link), no_type);
    EXPECT_FAILURE(build_target_path_bridge({}, LR"(\..\x)", absolute_link), nowhere);
    EXPECT_FAILURE(build_target_path_bridge(L"l", LR"(..\x)", relative_link), no_type);
    EXPECT_FAILURE(build_target_path_bridge(LR"(\l)", LR"(..\x)", relative_link), nowhere);
    EXPECT_FAILURE(build_target_path_bridge(L"C:l", LR"(..\x)", relative_link), nowhere);
    EXPECT_FAILURE(build_target_path_bridge(LR"(\\s\h)", LR"(..\x)", relative_link), nowhere)
        << "by the type of the link's pathname";
    EXPECT_FAILURE(build_target_path_bridge(LR"(\\.\l)", LR"(..\x)", relative_link), no_type);
}

} // namespace
} // namespace fl::filesystem::detail::windows
