// A volume without a backslash behind its name: the device below the file system.

#include "platform/contract.hpp"

namespace contract {

namespace {

/// `\\?\C:` and its kin, for the drive of the workspace.
std::vector<std::wstring> raw_names(workspace const &space)
{
    std::wstring const drive = wide(space.root()).substr(0, 2);
    return {LR"(\\?\)" + drive, LR"(\\.\)" + drive, LR"(//./)" + drive};
}

TEST(RawVolume, OpensForWhoAsksNothingOfItsContent)
{
    NEEDS(!runs_under_wine(), "the host decides who gets at its disks");
    workspace space;
    for (std::wstring const &name : raw_names(space)) {
        for (DWORD const access : {DWORD{0}, DWORD{FILE_READ_ATTRIBUTES}})
            EXPECT_EQ(code_of_open(name, {.access = access}), success) << name;
    }
}

TEST(RawVolume, OpensToNobodyElse)
{
    NEEDS(!runs_under_wine(), "the host decides who gets at its disks");
    workspace space;
    for (std::wstring const &name : raw_names(space)) {
        for (DWORD const access : {DWORD{GENERIC_READ}, DWORD{GENERIC_WRITE}, DWORD{DELETE}})
            EXPECT_EQ(code_of_open(name, {.access = access}), DWORD{ERROR_ACCESS_DENIED}) << name;
    }
}

TEST(RawVolume, HasNoFinalPathname)
{
    NEEDS(!runs_under_wine(), "the host decides who gets at its disks");
    workspace space;
    for (std::wstring const &name : raw_names(space)) {
        handle const raw = open(name, {.access = 0});
        wchar_t buffer[100] = {};
        EXPECT_EQ(outcome_of([&] {
                      return ::GetFinalPathNameByHandleW(raw.get(), buffer, 100,
                                                         FILE_NAME_NORMALIZED) != 0;
                  }),
                  DWORD{ERROR_INVALID_FUNCTION});
        BY_HANDLE_FILE_INFORMATION information = {};
        EXPECT_EQ(outcome_of([&] {
                      return ::GetFileInformationByHandle(raw.get(), &information) != FALSE;
                  }),
                  DWORD{ERROR_INVALID_PARAMETER});
    }
}

TEST(RawVolume, IsNoDirectory)
{
    workspace space;
    std::wstring const name = LR"(\\?\)" + wide(space.root()).substr(0, 2);
    EXPECT_EQ(get_file_attributes(name), expected(ERROR_INVALID_PARAMETER, ERROR_BAD_DEV_TYPE));
    EXPECT_EQ(get_file_attributes(name + L'\\'), success) << "with a backslash it is one";
}

/// One backslash more at the root is passed over; nowhere else, and no second one.
TEST(RootsOfPrefixedNames, TakeOneBackslashMore)
{
    workspace space;
    space.make_file(space.path(u"dir\\file"));
    std::wstring const prefix = LR"(\\?\)";
    std::wstring const root = wide(space.root());
    std::wstring const drive = prefix + root.substr(0, 2);
    std::wstring const rest = root.substr(2) + LR"(\dir\file)";
    EXPECT_EQ(code_of_open(drive + rest), success);
    EXPECT_EQ(code_of_open(drive + L'\\' + rest), success);
    EXPECT_EQ(code_of_open(drive + LR"(\\)" + rest), DWORD{ERROR_INVALID_NAME});
    EXPECT_EQ(get_file_attributes(drive + LR"(\\)"), success) << "the root itself";
    EXPECT_EQ(code_of_open(prefix + root + LR"(\\dir\file)"), DWORD{ERROR_INVALID_NAME});
}

// An empty name is no name, whether what stands ahead of it is there or not.
TEST(EmptyNames, AreRefusedBeforeTheLookup)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    for (wchar_t const *text : {LR"(?@\dir\\)", LR"(?@\missing\\)", LR"(?@\missing\\a)",
                                LR"(?@\missing\a\\b)", LR"(?@\dir\\\a)"}) {
        std::wstring const name = text_in(space, text);
        EXPECT_EQ(get_file_attributes(name), DWORD{ERROR_INVALID_NAME}) << text;
        EXPECT_EQ(create_directory(name), DWORD{ERROR_INVALID_NAME}) << text;
        EXPECT_EQ(delete_file(name), DWORD{ERROR_INVALID_NAME}) << text;
    }
    EXPECT_EQ(get_file_attributes(text_in(space, LR"(?@\missing\)")), DWORD{ERROR_FILE_NOT_FOUND});
}

} // namespace

} // namespace contract
