// What is denied to the caller, call by call.

#include "platform/finding.hpp"
#include "platform/links.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace fl::simulation {

namespace {

using contract::code_of_open;
using contract::outcome_of;
using contract::success;

/// A call on a file `C:\dir\file`, a directory `C:\dir` or a link, by its outcome.
struct checked_call
{
    char const *name;
    DWORD (*run)();
};

DWORD open_with(wchar_t const *name, DWORD access)
{
    return code_of_open(name, {.access = access, .flags = FILE_FLAG_BACKUP_SEMANTICS});
}

DWORD find(wchar_t const *pattern)
{
    return contract::search(pattern).code;
}

DWORD move(wchar_t const *from, wchar_t const *to)
{
    return outcome_of([&] { return ::MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING) != FALSE; });
}

DWORD copy(wchar_t const *from, wchar_t const *to)
{
    return outcome_of([&] { return ::CopyFileW(from, to, FALSE) != FALSE; });
}

DWORD data_of(wchar_t const *name)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    return outcome_of(
        [&] { return ::GetFileAttributesExW(name, GetFileExInfoStandard, &data) != FALSE; });
}

DWORD link_file(wchar_t const *name, wchar_t const *existing)
{
    return outcome_of([&] { return ::CreateHardLinkW(name, existing, nullptr) != FALSE; });
}

DWORD space_of(wchar_t const *name)
{
    return outcome_of([&] { return ::GetDiskFreeSpaceExW(name, nullptr, nullptr, nullptr) != 0; });
}

constexpr checked_call calls_on_file[] = {
    {"GetFileAttributesW", [] { return contract::get_file_attributes(L"C:\\dir\\file"); }},
    {"GetFileAttributesExW", [] { return data_of(L"C:\\dir\\file"); }},
    {"SetFileAttributesW", [] { return contract::set_attributes(L"C:\\dir\\file", 0); }},
    {"open nothing", [] { return open_with(L"C:\\dir\\file", 0); }},
    {"open data", [] { return open_with(L"C:\\dir\\file", FILE_READ_DATA); }},
    {"open GENERIC_READ", [] { return open_with(L"C:\\dir\\file", GENERIC_READ); }},
    {"open extended", [] { return open_with(L"C:\\dir\\file", FILE_READ_EA); }},
    {"open to write", [] { return open_with(L"C:\\dir\\file", FILE_WRITE_DATA); }},
    {"open to append", [] { return open_with(L"C:\\dir\\file", FILE_APPEND_DATA); }},
    {"open attributes", [] { return open_with(L"C:\\dir\\file", FILE_WRITE_ATTRIBUTES); }},
    {"open to execute", [] { return open_with(L"C:\\dir\\file", FILE_EXECUTE); }},
    {"open to delete", [] { return open_with(L"C:\\dir\\file", DELETE); }},
    {"find", [] { return find(L"C:\\dir\\file"); }},
    {"copy from", [] { return copy(L"C:\\dir\\file", L"C:\\copy"); }},
    {"copy to", [] { return copy(L"C:\\other", L"C:\\dir\\file"); }},
    {"CreateHardLinkW", [] { return link_file(L"C:\\hard", L"C:\\dir\\file"); }},
    {"move onto", [] { return move(L"C:\\other", L"C:\\dir\\file"); }},
    {"move", [] { return move(L"C:\\dir\\file", L"C:\\moved"); }},
    {"DeleteFileW", [] { return contract::delete_file(L"C:\\dir\\file"); }},
};

constexpr checked_call calls_on_directory[] = {
    {"GetFileAttributesW", [] { return contract::get_file_attributes(L"C:\\dir"); }},
    {"GetFileAttributesExW", [] { return data_of(L"C:\\dir"); }},
    {"SetFileAttributesW", [] { return contract::set_attributes(L"C:\\dir", 0); }},
    {"open nothing", [] { return open_with(L"C:\\dir", 0); }},
    {"open list", [] { return open_with(L"C:\\dir", FILE_LIST_DIRECTORY); }},
    {"open extended", [] { return open_with(L"C:\\dir", FILE_READ_EA); }},
    {"open attributes", [] { return open_with(L"C:\\dir", FILE_WRITE_ATTRIBUTES); }},
    {"open to traverse", [] { return open_with(L"C:\\dir", FILE_TRAVERSE); }},
    {"open to delete", [] { return open_with(L"C:\\dir", DELETE); }},
    {"find all", [] { return find(L"C:\\dir\\*"); }},
    {"find one", [] { return find(L"C:\\dir\\file"); }},
    {"find itself", [] { return find(L"C:\\dir"); }},
    {"file within", [] { return contract::get_file_attributes(L"C:\\dir\\file"); }},
    {"read within", [] { return open_with(L"C:\\dir\\file", GENERIC_READ); }},
    {"SetCurrentDirectoryW", [] { return contract::set_current_directory(L"C:\\dir"); }},
    {"GetDiskFreeSpaceExW", [] { return space_of(L"C:\\dir"); }},
    {"CreateDirectoryW", [] { return contract::create_directory(L"C:\\dir\\new"); }},
    {"CreateFileW", [] { return code_of_open(L"C:\\dir\\f", {.disposition = CREATE_NEW}); }},
    {"CreateSymbolicLinkW", [] { return contract::make_symlink(L"C:\\dir\\l", L"a", 0); }},
    {"CreateHardLinkW", [] { return link_file(L"C:\\dir\\h", L"C:\\other"); }},
    {"copy into", [] { return copy(L"C:\\other", L"C:\\dir\\copy"); }},
    {"move into", [] { return move(L"C:\\other", L"C:\\dir\\moved"); }},
    {"delete within", [] { return contract::delete_file(L"C:\\dir\\file"); }},
    {"move itself", [] { return move(L"C:\\dir", L"C:\\moved"); }},
    {"RemoveDirectoryW", [] { return contract::remove_directory(L"C:\\dir"); }},
};

struct right_case
{
    right denied;
    std::vector<std::string> stopped; ///< these and no others, all with code 5
    char const *why;
};

/// Each call meets a fresh machine, with the right denied or not.
template <std::size_t Count>
void check_calls(checked_call const (&calls)[Count], char16_t const *path, right_case const &row)
{
    for (checked_call const &call : calls) {
        simulated_machine machine;
        machine.add_file(u"C:\\other", "other").add_file(u"C:\\dir\\file", "text");
        if (std::string_view(call.name) == "RemoveDirectoryW")
            machine.remove(u"C:\\dir\\file");
        machine.deny(path, row.denied);
        bool const is_stopped = std::count(row.stopped.begin(), row.stopped.end(), call.name) != 0;
        EXPECT_EQ(call.run(), is_stopped ? DWORD{ERROR_ACCESS_DENIED} : success)
            << row.why << ": " << call.name;
        EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0) << call.name;
        if (!is_stopped)
            continue;
        machine.allow(path, row.denied);
        EXPECT_EQ(call.run(), success) << row.why << ", given back: " << call.name;
    }
}

right_case const file_cases[] = {
    {right::read_attributes,
     {"GetFileAttributesW", "GetFileAttributesExW", "open nothing", "open data",
      "open GENERIC_READ", "open extended", "open to write", "open to append", "open attributes",
      "open to execute", "open to delete", "copy from", "copy to", "move", "DeleteFileW"},
     "read_attributes"},
    {right::read_extended_attributes,
     {"open GENERIC_READ", "open extended", "copy from"},
     "read_extended_attributes"},
    {right::read, {"open data", "open GENERIC_READ", "copy from"}, "read"},
    {right::write,
     {"SetFileAttributesW", "open to write", "open to append", "open attributes", "copy to",
      "CreateHardLinkW"},
     "write"},
    {right::remove, {"open to delete", "move", "move onto", "DeleteFileW"}, "remove"},
    {right::list, {}, "list: a directory's"},
    {right::traverse, {"open to execute"}, "traverse"},
    {right::create_entries, {}, "create_entries: a directory's"},
};

TEST(Rights, OfFiles)
{
    for (right_case const &row : file_cases)
        check_calls(calls_on_file, u"C:\\dir\\file", row);
}

right_case const directory_cases[] = {
    {right::read_attributes,
     {"GetFileAttributesW", "GetFileAttributesExW", "open nothing", "open list", "open extended",
      "open attributes", "open to traverse", "open to delete", "SetCurrentDirectoryW",
      "move itself", "RemoveDirectoryW"},
     "read_attributes"},
    {right::read_extended_attributes, {"open extended"}, "read_extended_attributes"},
    {right::read, {}, "read: a file's"},
    {right::write, {"SetFileAttributesW", "open attributes"}, "write"},
    {right::remove, {"open to delete", "move itself", "RemoveDirectoryW"}, "remove"},
    {right::list, {"open list", "find all", "find one"}, "list"},
    {right::traverse,
     {"open to traverse", "file within", "read within", "SetCurrentDirectoryW", "CreateDirectoryW",
      "CreateFileW", "CreateSymbolicLinkW", "CreateHardLinkW", "copy into", "move into",
      "delete within"},
     "traverse"},
    {right::create_entries,
     {"CreateDirectoryW", "CreateFileW", "CreateSymbolicLinkW", "CreateHardLinkW", "copy into",
      "move into"},
     "create_entries"},
};

TEST(Rights, OfDirectories)
{
    for (right_case const &row : directory_cases)
        check_calls(calls_on_directory, u"C:\\dir", row);
}

// Rights count when something is opened, and not any more when the handle is used.
TEST(Rights, OfHandlesStay)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file", "text");
    contract::opened const file(L"C:\\file", GENERIC_READ | GENERIC_WRITE | DELETE);
    for (right const each : {right::read, right::write, right::remove, right::read_attributes})
        machine.deny(u"C:\\file", each);
    char bytes[4];
    DWORD count = 0;
    EXPECT_TRUE(::ReadFile(file.get(), bytes, 4, &count, nullptr));
    EXPECT_TRUE(::WriteFile(file.get(), "more", 4, &count, nullptr));
    FILE_BASIC_INFO basic = {};
    basic.FileAttributes = FILE_ATTRIBUTE_HIDDEN;
    EXPECT_TRUE(::SetFileInformationByHandle(file.get(), FileBasicInfo, &basic, sizeof basic));
    FILE_DISPOSITION_INFO gone = {TRUE};
    EXPECT_TRUE(::SetFileInformationByHandle(file.get(), FileDispositionInfo, &gone, sizeof gone));
    EXPECT_EQ(machine.content(u"C:\\file"), "textmore");
}

TEST(Rights, OfReparseDataAreExtendedAttributes)
{
    simulated_machine machine;
    machine.add_junction(u"C:\\j", u"C:\\").deny(u"C:\\j", right::read_extended_attributes);
    EXPECT_EQ(contract::reparse_point(L"C:\\j", FILE_READ_EA).code, DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(contract::get_file_attributes(L"C:\\j"), success);
    EXPECT_EQ(contract::opened(L"C:\\j", GENERIC_READ).code, success) << "that is the target";
    machine.allow(u"C:\\j", right::read_extended_attributes);
    EXPECT_EQ(contract::reparse_point(L"C:\\j", FILE_READ_EA).code, success);
}

TEST(Rights, TraversingIsNeededOnTheWholeWay)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a\\b\\file").add_junction(u"C:\\j", u"C:\\a\\b");
    machine.deny(u"C:\\a", right::traverse);
    EXPECT_EQ(contract::get_file_attributes(L"C:\\a"), success);
    EXPECT_EQ(contract::get_file_attributes(L"C:\\a\\none"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(contract::get_file_attributes(L"C:\\j\\file"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(contract::get_file_attributes(L"C:\\j"), success);
}

TEST(Rights, NobodyMakesSymbolicLinks)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir").deny_symbolic_links();
    EXPECT_EQ(contract::make_symlink(L"C:\\link", L"dir", SYMBOLIC_LINK_FLAG_DIRECTORY),
              DWORD{ERROR_PRIVILEGE_NOT_HELD});
    EXPECT_EQ(contract::make_symlink(L"C:\\dir", L"a", 0), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_FALSE(machine.exists(u"C:\\link"));
    std::string const body = symbolic_link_data(u"a", u"a", 1);
    contract::bytes const data =
        contract::with_header(contract::symlink_tag, contract::bytes(body.begin(), body.end()));
    EXPECT_EQ(contract::set_reparse_data(L"C:\\dir", data), DWORD{ERROR_PRIVILEGE_NOT_HELD});
    EXPECT_EQ(machine.reparse_tag(u"C:\\dir"), 0U);
    EXPECT_EQ(contract::set_reparse_data(L"C:\\dir", contract::junction_data(L"C:\\")), success)
        << "junctions are for everybody";
    machine.add_symbolic_link(u"C:\\link", u"a");
    EXPECT_TRUE(machine.exists(u"C:\\link")) << "tests make them all the same";
}

} // namespace

} // namespace fl::simulation
