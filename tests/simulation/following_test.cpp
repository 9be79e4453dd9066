// How the system follows links that a test has put on the disks.

#include "platform/links.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

namespace fl::simulation {

namespace {

using contract::content_of;
using contract::opened;
using contract::success;

class Following : public testing::Test
{
protected:
    Following()
    {
        machine.add_drive(u'D').add_share(u"server", u"share").add_share(u"server", u"other");
        machine.add_file(u"C:\\file", "root").add_file(u"C:\\dir\\sub\\file", "deep");
        machine.add_file(u"C:\\dir\\file", "inner").add_file(u"D:\\dir\\file", "other drive");
        machine.add_file(u"\\\\server\\share\\dir\\file", "remote");
        machine.add_file(u"\\\\server\\other\\dir\\file", "other share");
    }
    DWORD open(std::wstring const &name) { return opened(name, GENERIC_READ).code; }

    simulated_machine machine;
};

struct target_case
{
    char16_t const *link;
    char16_t const *target;
    flavour is;
    wchar_t const *opened;
    char const *content;
    char const *why;
};

constexpr flavour to_file = flavour::file;
constexpr flavour to_directory = flavour::directory;

constexpr target_case target_cases[] = {
    {u"C:\\link", u"file", to_file, L"C:\\link", "root", "at the end"},
    {u"C:\\link", u"dir", to_directory, L"C:\\link\\file", "inner", "in the middle"},
    {u"C:\\link", u"dir", to_directory, L"C:\\LINK\\sub\\file", "deep", "far from the end"},
    {u"C:\\dir\\sub\\link", u"..\\..\\file", to_file, L"C:\\dir\\sub\\link", "root", "upwards"},
    {u"C:\\dir\\link", u"..\\..\\..\\..\\file", to_file, L"C:\\dir\\link", "root",
     "above the root there is nothing"},
    {u"C:\\dir\\link", u".\\sub\\.\\file", to_file, L"C:\\dir\\link", "deep", "full stops"},
    {u"C:\\dir\\link", u"\\file", to_file, L"C:\\dir\\link", "root", "rooted"},
    {u"C:\\dir\\link", u"\\dir\\sub\\..\\file", to_file, L"C:\\dir\\link", "inner",
     "rooted, with dots"},
    {u"D:\\link", u"\\dir", to_directory, L"D:\\link\\file", "other drive",
     "rooted, on the link's own drive"},
    {u"C:\\link", u"D:\\dir", to_directory, L"C:\\link\\file", "other drive", "another drive"},
    {u"C:\\link", u"\\\\server\\share", to_directory, L"C:\\link\\dir\\file", "remote", "a share"},
    {u"C:\\link", u"\\\\server\\share\\dir\\file", to_file, L"C:\\link", "remote",
     "a file on a share"},
    {u"C:\\link", u"\\\\?\\C:\\dir", to_directory, L"\\\\?\\C:\\link\\file", "inner",
     "long prefixes"},
    {u"C:\\link", u"dir\\", to_directory, L"C:\\link\\file", "inner", "with a separator"},
    {u"C:\\link", u".", to_directory, L"C:\\link\\link\\file", "root", "to its own directory"},
};

TEST_F(Following, LeadsToTheTarget)
{
    for (target_case const &row : target_cases) {
        machine.add_symbolic_link(row.link, row.target, row.is);
        EXPECT_EQ(content_of(row.opened), row.content) << row.why;
        machine.remove(row.link);
    }
}

struct broken_case
{
    char16_t const *link;
    char16_t const *target;
    flavour is;
    wchar_t const *opened;
    DWORD code;
    char const *why;
};

constexpr broken_case broken_cases[] = {
    {u"C:\\link", u"none", to_file, L"C:\\link", ERROR_FILE_NOT_FOUND, "nothing there"},
    {u"C:\\link", u"none", to_directory, L"C:\\link\\file", ERROR_PATH_NOT_FOUND,
     "nothing there, in the middle"},
    {u"C:\\link", u"Q:\\dir", to_directory, L"C:\\link", ERROR_PATH_NOT_FOUND, "no such drive"},
    {u"C:\\link", u"Q:\\dir", to_directory, L"C:\\link\\file", ERROR_PATH_NOT_FOUND,
     "no such drive, in the middle"},
    {u"C:\\link", u"\\\\none\\share", to_directory, L"C:\\link\\file", ERROR_BAD_NETPATH,
     "no such server"},
    {u"C:\\link", u"\\\\server\\none", to_directory, L"C:\\link\\file", ERROR_BAD_NET_NAME,
     "no such share"},
    {u"C:\\link", u"file", to_directory, L"C:\\link", ERROR_DIRECTORY, "a directory was meant"},
    {u"C:\\link", u"dir", to_file, L"C:\\link", ERROR_ACCESS_DENIED, "a file was meant"},
    {u"C:\\link", u"file", to_file, L"C:\\link\\below", ERROR_PATH_NOT_FOUND, "a file has none"},
    {u"C:\\link", u"link", to_file, L"C:\\link", ERROR_CANT_RESOLVE_FILENAME, "itself"},
    {u"C:\\link", u"link\\a", to_directory, L"C:\\link\\b", ERROR_CANT_RESOLVE_FILENAME,
     "itself, and longer each time"},
    {u"C:\\link", u"dir/file", to_file, L"C:\\link", ERROR_INVALID_NAME, "no separator there"},
    {u"\\\\server\\share\\link", u"dir", to_directory, L"\\\\server\\share\\link\\file",
     ERROR_SYMLINK_CLASS_DISABLED, "on a share"},
    {u"\\\\server\\share\\link", u"C:\\dir", to_directory, L"\\\\server\\share\\link",
     ERROR_SYMLINK_CLASS_DISABLED, "from a share to a drive"},
    {u"C:\\link", u"NUL", to_file, L"C:\\link", ERROR_FILE_NOT_FOUND, "a plain name here"},
};

TEST_F(Following, LeadsAstray)
{
    for (broken_case const &row : broken_cases) {
        machine.add_symbolic_link(row.link, row.target, row.is);
        EXPECT_EQ(open(row.opened), row.code) << row.why;
        std::wstring const self = test_support::wide(row.link);
        EXPECT_EQ(contract::get_file_attributes(self), success) << row.why;
        EXPECT_EQ(
            opened(self, GENERIC_READ, contract::share_all, FILE_FLAG_OPEN_REPARSE_POINT).code,
            success)
            << row.why;
        machine.remove(row.link);
    }
    EXPECT_EQ(machine.open_handles(), 0);
}

TEST_F(Following, GoesOnFor63Links)
{
    struct
    {
        int links;
        bool is_in_the_middle;
        DWORD code;
    } const rows[] = {
        {63, false, success},
        {64, false, ERROR_CANT_RESOLVE_FILENAME},
        {63, true, success},
        {64, true, ERROR_CANT_RESOLVE_FILENAME},
    };
    std::u16string target = u"dir";
    for (int link = 1; link <= 64; ++link) {
        std::u16string const name = u"C:\\l" + test_support::units(std::to_wstring(link));
        machine.add_symbolic_link(name, target, to_directory);
        target = name.substr(3);
    }
    for (auto const &row : rows) {
        std::wstring const link = L"C:\\l" + std::to_wstring(row.links);
        EXPECT_EQ(open(row.is_in_the_middle ? link + L"\\file" : link), row.code) << row.links;
    }
}

TEST_F(Following, CountsTheLinksOfAllNames)
{
    std::wstring name = L"\\\\?\\C:";
    machine.add_symbolic_link(u"C:\\dir\\here", u".", to_directory);
    name += L"\\dir";
    for (int link = 1; link <= 63; ++link)
        name += L"\\here";
    EXPECT_EQ(content_of(name + L"\\file"), "inner");
    EXPECT_EQ(open(name + L"\\here\\file"), DWORD{ERROR_CANT_RESOLVE_FILENAME});
}

TEST_F(Following, LoopsOfSeveralEnd)
{
    machine.add_symbolic_link(u"C:\\a", u"D:\\b", to_directory);
    machine.add_symbolic_link(u"D:\\b", u"C:\\a", to_directory);
    machine.add_junction(u"C:\\self", u"C:\\self");
    EXPECT_EQ(open(L"C:\\a\\file"), DWORD{ERROR_CANT_RESOLVE_FILENAME});
    EXPECT_EQ(open(L"C:\\self"), DWORD{ERROR_CANT_RESOLVE_FILENAME});
    EXPECT_EQ(contract::remove_directory(L"C:\\self"), success);
}

TEST_F(Following, LinksWithinLinksStartFromWhereTheyAre)
{
    machine.add_symbolic_link(u"C:\\dir\\up", u"..\\file");
    machine.add_symbolic_link(u"D:\\to_dir", u"C:\\dir", to_directory);
    machine.add_junction(u"D:\\to_to_dir", u"D:\\to_dir");
    EXPECT_EQ(content_of(L"D:\\to_to_dir\\up"), "root");
    machine.add_symbolic_link(u"C:\\dir\\rooted", u"\\dir\\file");
    EXPECT_EQ(content_of(L"D:\\to_to_dir\\rooted"), "inner") << "of the drive it is on";
}

TEST_F(Following, SharesAreFollowedWhereThatIsTurnedOn)
{
    machine.add_symbolic_link(u"\\\\server\\share\\near", u"dir", to_directory);
    machine.add_symbolic_link(u"\\\\server\\share\\far", u"\\\\server\\other\\dir", to_directory);
    machine.add_symbolic_link(u"\\\\server\\share\\local", u"C:\\dir", to_directory);
    machine.add_symbolic_link(u"C:\\link", u"\\\\server\\share\\near", to_directory);
    machine.add_junction(u"\\\\server\\share\\junction", u"C:\\dir");
    EXPECT_EQ(open(L"C:\\link\\file"), DWORD{ERROR_SYMLINK_CLASS_DISABLED}) << "arrived there";
    machine.follow_remote_links();
    EXPECT_EQ(content_of(L"\\\\server\\share\\near\\file"), "remote");
    EXPECT_EQ(content_of(L"\\\\server\\share\\far\\file"), "other share");
    EXPECT_EQ(content_of(L"\\\\server\\share\\local\\file"), "inner");
    EXPECT_EQ(content_of(L"C:\\link\\file"), "remote");
    EXPECT_EQ(open(L"\\\\server\\share\\junction\\file"), DWORD{ERROR_PATH_NOT_FOUND})
        << "the server's own matter";
}

TEST_F(Following, JunctionsOnSharesLeadNowhere)
{
    machine.add_junction(u"\\\\server\\share\\junction", u"C:\\dir");
    EXPECT_EQ(open(L"\\\\server\\share\\junction"), DWORD{ERROR_PATH_NOT_FOUND});
    machine.map_drive(u'X', u"server", u"share");
    EXPECT_EQ(open(L"X:\\junction"), DWORD{ERROR_PATH_NOT_FOUND}) << "by a letter, too";
}

TEST_F(Following, MappedDrivesAreReached)
{
    machine.map_drive(u'X', u"server", u"share");
    machine.add_symbolic_link(u"C:\\link", u"X:\\dir", to_directory);
    EXPECT_EQ(content_of(L"C:\\link\\file"), "remote");
    machine.add_dead_server(u"server");
    EXPECT_EQ(open(L"C:\\link\\file"), DWORD{ERROR_BAD_NETPATH});
}

// Only the last name of a pathname is the link itself, and only to some calls.
TEST_F(Following, CallsThatMeanTheLinkItself)
{
    constexpr DWORD directory_link = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    machine.add_symbolic_link(u"C:\\link", u"dir", to_directory);
    machine.add_symbolic_link(u"C:\\link2", u"file", to_file).add_junction(u"C:\\j", u"C:\\dir");
    EXPECT_EQ(::GetFileAttributesW(L"C:\\link"), directory_link);
    EXPECT_EQ(::GetFileAttributesW(L"C:\\j\\"), directory_link) << "also with a separator";
    EXPECT_EQ(::GetFileAttributesW(L"C:\\j\\file"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(contract::delete_file(L"C:\\link"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(contract::delete_file(L"C:\\j"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(contract::remove_directory(L"C:\\link2"), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(contract::set_attributes(L"C:\\link2", FILE_ATTRIBUTE_HIDDEN), success);
    EXPECT_EQ(machine.attributes(u"C:\\file"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    ASSERT_TRUE(::MoveFileExW(L"C:\\j", L"C:\\dir\\moved", 0));
    EXPECT_EQ(machine.reparse_tag(u"C:\\dir\\moved"), DWORD{IO_REPARSE_TAG_MOUNT_POINT});
    EXPECT_EQ(contract::delete_file(L"C:\\link2"), success);
    EXPECT_EQ(contract::remove_directory(L"C:\\link"), success);
    EXPECT_EQ(contract::remove_directory(L"C:\\dir\\moved"), success);
    EXPECT_EQ(machine.entries(u"C:\\dir"), (std::vector<std::u16string>{u"file", u"sub"}))
        << "targets stay";
    EXPECT_EQ(machine.entries(u"C:\\"), (std::vector<std::u16string>{u"dir", u"file"}));
}

TEST_F(Following, ALinkMovesToAnotherVolumeAsALink)
{
    machine.add_symbolic_link(u"C:\\link", u"file");
    std::string const data = machine.reparse_data(u"C:\\link");
    ASSERT_TRUE(::MoveFileExW(L"C:\\link", L"D:\\link", MOVEFILE_COPY_ALLOWED));
    EXPECT_EQ(machine.reparse_tag(u"D:\\link"), DWORD{IO_REPARSE_TAG_SYMLINK});
    EXPECT_EQ(machine.reparse_data(u"D:\\link"), data);
    EXPECT_FALSE(machine.exists(u"C:\\link"));
}

TEST_F(Following, LooksSeeLinksInTheMiddleOnly)
{
    machine.add_symbolic_link(u"C:\\link", u"dir", to_directory);
    EXPECT_EQ(machine.content(u"C:\\link\\file"), "inner");
    EXPECT_EQ(machine.entries(u"C:\\link"), std::vector<std::u16string>()) << "the link itself";
    EXPECT_FALSE(machine.is_same(u"C:\\link", u"C:\\dir"));
    EXPECT_TRUE(machine.is_same(u"C:\\link\\sub", u"C:\\dir\\sub"));
}

} // namespace

} // namespace fl::simulation
