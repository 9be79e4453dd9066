#include "platform/contract.hpp"

namespace contract {

namespace {

constexpr call_row attribute_cases[] = {
    {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory", ERROR_PATH_NOT_FOUND},
    {LR"(\\?\C:)", ERROR_INVALID_PARAMETER, "as it stands, the volume and no directory",
     ERROR_BAD_DEV_TYPE},
};

TEST(FileAttributes, Outcomes)
{
    expect_codes(fill, get_file_attributes, names_of_file, names_of_directories, missing_names,
                 as_it_stands, no_names, missing_roots, attribute_cases);
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

TEST(FileAttributes, NeedALongPrefixFrom260Units)
{
    expect_limit_of_260(get_file_attributes);
}

TEST(FileAttributes, ExistForAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
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
