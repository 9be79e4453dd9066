#include "platform/attribute_cases.hpp"

namespace contract {

namespace {

constexpr call_row attribute_cases[] = {
    {LR"(C:\)", success, "the root of a drive"},
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory", ERROR_PATH_NOT_FOUND},
    {LR"(\\?\C:)", ERROR_INVALID_PARAMETER, "as it stands, the volume and no directory",
     ERROR_BAD_DEV_TYPE},
};

void expect_outcome(workspace const &space, call_row const &row)
{
    DWORD const code = expected(row.code, row.wine);
    EXPECT_EQ(get_file_attributes(text_in(space, row.text)), code) << row.why;
}

TEST(FileAttributes, Outcomes)
{
    workspace space;
    fill_for_attributes(space);
    for (call_row const &row : common_attribute_cases)
        expect_outcome(space, row);
    for (call_row const &row : attribute_cases)
        expect_outcome(space, row);
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
}

// Wine knows no such limit.
TEST(FileAttributes, NeedALongPrefixFrom260Units)
{
    workspace space;
    for (std::size_t const length : {258U, 259U, 260U, 300U}) {
        std::wstring const name = long_path(space, length);
        space.make_file(units(name));
        DWORD const code = length < 260 ? success : beyond_limit(ERROR_PATH_NOT_FOUND);
        EXPECT_EQ(get_file_attributes(name), code) << length;
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
