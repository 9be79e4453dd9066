#include "platform/contract.hpp"

namespace contract {

namespace {

/// One call on a folder that holds `dir` and `file`. See `text_in`.
struct attribute_case
{
    wchar_t const *text;
    DWORD code;
    char const *why;
    DWORD wine = as_windows;
};

constexpr attribute_case attribute_cases[] = {
    {LR"(@\dir)", success, "a directory"},
    {LR"(@\DIR\)", success, "with a separator, in another case"},
    {LR"(@\file)", success, "a file"},
    {LR"(@/dir/../FILE)", success, "by a detour"},
    {LR"(@\file. )", success, "once the end is trimmed"},
    {LR"(?@\file)", success, "as it stands"},
    {LR"(C:\)", success, "the root of a drive"},
    {LR"(@\missing)", ERROR_FILE_NOT_FOUND, "not there"},
    {LR"(@\missing\a)", ERROR_PATH_NOT_FOUND, "nor the directory above"},
    {LR"(@\file\a)", ERROR_PATH_NOT_FOUND, "below a file"},
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory", ERROR_PATH_NOT_FOUND},
    {LR"(@\a*b)", ERROR_INVALID_NAME, "no name"},
    {LR"(@\a<b\c)", ERROR_INVALID_NAME, "nor the one above"},
    {LR"(@\missing\a*b)", ERROR_PATH_NOT_FOUND, "names are checked in their turn",
     ERROR_INVALID_NAME},
    {LR"(?@\file.)", ERROR_FILE_NOT_FOUND, "as it stands, it is another name"},
    {LR"(?@\dir\.)", ERROR_INVALID_NAME, "as they stand, dots are no names"},
    {LR"(?@/dir)", ERROR_INVALID_NAME, "nor is a slash in one"},
    {L"", ERROR_PATH_NOT_FOUND, "no text"},
    {L"  ", ERROR_PATH_NOT_FOUND, "blanks only"},
    {LR"(\\?\C:)", ERROR_INVALID_PARAMETER, "as it stands, the volume and no directory",
     ERROR_BAD_DEV_TYPE},
    {LR"(Q:\)", ERROR_PATH_NOT_FOUND, "no such drive"},
    {LR"(Q:\a)", ERROR_PATH_NOT_FOUND, "nor anything on it", ERROR_FILE_NOT_FOUND},
    {LR"(\\fl-dead-server\share)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
    {LR"(\\fl-dead-server\share\a)", ERROR_BAD_NETPATH, "nor anything on it", ERROR_PATH_NOT_FOUND},
};

TEST(FileAttributes, Outcomes)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    space.make_file(space.path(u"file"));
    space.change_directory(space.root());
    for (attribute_case const &row : attribute_cases) {
        DWORD const code = expected(row.code, row.wine);
        EXPECT_EQ(get_file_attributes(text_in(space, row.text)), code) << row.why;
    }
}

TEST(FileAttributes, TellDirectoriesFromFiles)
{
    workspace space;
    space.make_file(space.path(u"file"));
    constexpr DWORD kind = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_ARCHIVE;
    EXPECT_EQ(attributes_of(wide(space.root())) & kind, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(attributes_of(in(space, L"file")) & kind, DWORD{FILE_ATTRIBUTE_ARCHIVE});
}

TEST(FileAttributes, AreMadeUpForDevices)
{
    workspace space;
    EXPECT_EQ(attributes_of(L"nul"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(attributes_of(in(space, L"con.txt")), DWORD{FILE_ATTRIBUTE_ARCHIVE});
}

// Wine knows no such limit.
TEST(FileAttributes, NeedALongPrefixFrom260Units)
{
    workspace space;
    for (std::size_t const length : {258U, 259U, 260U, 300U}) {
        std::wstring const name = long_path(space, length);
        space.make_file(units(name));
        DWORD const windows = length < 260 ? success : ERROR_PATH_NOT_FOUND;
        EXPECT_EQ(get_file_attributes(name), expected(windows, success)) << length;
        EXPECT_EQ(get_file_attributes(LR"(\\?\)" + name), success) << length;
    }
}

TEST(FileAttributes, ExistForAShare)
{
    workspace space;
    if (!space.has_share())
        GTEST_SKIP() << "there is no share";
    std::wstring const root = wide(space.share_root());
    space.make_file(space.share_root() + u"\\file");
    EXPECT_EQ(get_file_attributes(root), success);
    EXPECT_EQ(get_file_attributes(root + LR"(\FILE)"), success);
    EXPECT_EQ(get_file_attributes(LR"(\\fl-server\share)"), success);
    EXPECT_EQ(get_file_attributes(LR"(\\fl-server\share\)"), success);
    EXPECT_EQ(get_file_attributes(root + LR"(\missing)"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(get_file_attributes(LR"(\\fl-server\fl-missing-share\a)"),
              expected(ERROR_BAD_NET_NAME, ERROR_PATH_NOT_FOUND));
}

} // namespace

} // namespace contract
