// Links on the simulated machine: which calls read them, and what becomes of each
// call that fails.

#include "links/reparse_data.hpp"

#include <fl/filesystem/exceptions.hpp>

#include "links/reparse_bytes.hpp"
#include "support/calls.hpp"

#include <windows.h>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using simulation::mount_point_data;
using simulation::symbolic_link_data;

constexpr unsigned int untouched = 77;

TEST_ON_MACHINE(ReadReparseData, OpensReadsAndCloses)
{
    machine.add_symbolic_link(u"C:\\link", u"..\\x");
    windows::reparse_data_context data;
    EXPECT_EQ(read_reparse_data(data, L"C:\\link"), 0U);
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{R"(CreateFileW(C:\link) access 8 share 7 disposition 3 flags 2200000)",
                     R"(DeviceIoControl(C:\link) flags 900A8)", R"(CloseHandle(C:\link))"}));
    EXPECT_EQ(reparse_tag(data), symlink_tag);
}

TEST_ON_MACHINE(ReadReparseData, ReadsWhatCantBeRead)
{
    machine.add_symbolic_link(u"C:\\link", u"x").deny(u"C:\\link", right::read);
    windows::reparse_data_context data;
    EXPECT_EQ(read_reparse_data(data, L"C:\\link"), 0U);
    machine.deny(u"C:\\link", right::read_extended_attributes);
    EXPECT_EQ(read_reparse_data(data, L"C:\\link"), 5U);
}

// More than 16,384 bytes are on no disk; the call is told of all the room all the same.
TEST_ON_MACHINE(ReadReparseData, GivesTheSystemTheWholeBuffer)
{
    constexpr std::size_t most = 16384;
    machine.add_reparse_point(u"C:\\a", dedup_tag, std::string(most - 8, 'x'));
    windows::reparse_data_context data;
    EXPECT_EQ(read_reparse_data(data, L"C:\\a"), 0U);
    EXPECT_EQ(data.buffer[most - 1], 'x');
    EXPECT_EQ(data.buffer[most], 0);
    EXPECT_EQ(machine.journal().at(1).function, "DeviceIoControl");
    EXPECT_EQ(machine.journal().at(1).room, 16392U);
}

// The code of a failed call may be 0, too. Nothing is then read from a file that isn't open.
TEST_ON_MACHINE(ReadReparseData, AnOpeningThatFailsWithoutACode)
{
    machine.add_symbolic_link(u"C:\\link", u"x");
    sure_fault const fault = machine.fail_every_call_on("CreateFileW", 0);
    windows::reparse_data_context data;
    EXPECT_EQ(read_reparse_data(data, L"C:\\link"), 0U);
    EXPECT_EQ(reparse_tag(data), 0U);
    EXPECT_EQ(machine.journal().size(), 1U);
}

void add_junction(simulated_machine &machine)
{
    machine.add_junction(u"C:\\link", u"C:\\x");
}

TEST_ON_MACHINE(ReadReparseData, EachCallThatFails)
{
    EXPECT_EQ(outcomes_of_each_call(add_junction,
                                    [] {
                                        windows::reparse_data_context data;
                                        return read_reparse_data(data, L"C:\\link");
                                    }),
              (std::vector<unsigned int>{1117, 1117, 0}))
        << "opening, reading, closing";
}

/// A name on a disk, and what reading it as a link gives.
struct name_case
{
    char16_t const *name;
    wchar_t const *text;
    windows::attrib_link_type link_type; ///< `link_type_none`: it was left alone
    char const *why;
};

constexpr name_case name_cases[] = {
    {u"C:\\relative", L"..\\x", windows::link_type_symlink_relative, "a relative link"},
    {u"C:\\absolute", L"C:\\x", windows::link_type_symlink_absolute, "an absolute link"},
    {u"C:\\dirlink", L"..\\x", windows::link_type_symlink_relative, "a link to a directory"},
    {u"C:\\junction", L"C:\\x", windows::link_type_mount_point, "a junction"},
    {u"C:\\unnamed", L"C:\\x", windows::link_type_mount_point, "without a print name"},
    {u"C:\\volume", L"", windows::link_type_volume_mount, "a volume"},
    {u"C:\\file", L"", windows::link_type_none, "a file"},
    {u"C:\\dir", L"", windows::link_type_none, "a directory"},
    {u"C:\\a.lnk", L"", windows::link_type_none, "a shortcut"},
    {u"C:\\dedup", L"", windows::link_type_none, "a deduplicated file"},
    {u"C:\\dfs", L"", windows::link_type_none, "a DFS directory"},
    {u"C:\\strange", L"", windows::link_type_none, "an unknown tag"},
    {u"C:\\sparse", L"", windows::link_type_none, "a link that is also sparse"},
    {u"C:\\closed", L"", windows::link_type_none, "a link that can't be read"},
};

void make_names(simulated_machine &machine)
{
    machine.add_drive(u'D').add_symbolic_link(u"C:\\relative", u"..\\x");
    machine.add_symbolic_link(u"C:\\absolute", u"C:\\x");
    machine.add_symbolic_link(u"C:\\dirlink", u"../x", flavour::directory);
    machine.add_junction(u"C:\\junction", u"C:\\x");
    machine.add_junction(u"C:\\unnamed", uR"(\??\C:\x\)", u"");
    machine.add_mount_point(u"C:\\volume", u'D').add_file(u"C:\\file").add_directory(u"C:\\dir");
    machine.add_shortcut(u"C:\\a.lnk", u"C:\\x").add_deduplicated_file(u"C:\\dedup");
    machine.add_reparse_point(u"C:\\dfs", dfs_tag, "x", flavour::directory);
    machine.add_reparse_point(u"C:\\strange", 0x80000123, "x");
    machine.add_symbolic_link(u"C:\\sparse", u"x");
    machine.set_attributes(u"C:\\sparse", FILE_ATTRIBUTE_SPARSE_FILE);
    machine.add_symbolic_link(u"C:\\closed", u"x");
    machine.deny(u"C:\\closed", right::read_extended_attributes);
}

TEST_ON_MACHINE(ReadLinkTarget, Table)
{
    make_names(machine);
    for (name_case const &row : name_cases) {
        auto link_type = windows::link_type_none;
        EXPECT_EQ(read_link_target(wide(row.name), link_type), row.text) << row.why;
        EXPECT_EQ(link_type, row.link_type) << row.why;
    }
}

TEST_ON_MACHINE(ReadLinkText, Table)
{
    make_names(machine);
    for (name_case const &row : name_cases) {
        unsigned int error = untouched;
        auto link_type = windows::link_type_none;
        EXPECT_EQ(read_link_text(wide(row.name), link_type, error), row.text) << row.why;
        EXPECT_EQ(link_type, row.link_type) << row.why;
        EXPECT_EQ(error, untouched) << row.why << ": only a missing name is an error";
    }
}

TEST_ON_MACHINE(ReadLinkText, AsksForAttributesFirst)
{
    lines const reading{R"(GetFileAttributesExW(C:\junction))",
                        R"(CreateFileW(C:\junction) access 8 share 7 disposition 3 flags 2200000)",
                        R"(DeviceIoControl(C:\junction) flags 900A8)",
                        R"(CloseHandle(C:\junction))"};
    make_names(machine);
    unsigned int error = 0;
    auto link_type = windows::link_type_none;
    read_link_text(L"C:\\junction", link_type, error);
    EXPECT_EQ(calls_with_arguments(machine), reading);
    machine.clear_journal();
    read_link_target(L"C:\\junction", link_type);
    EXPECT_EQ(calls_with_arguments(machine), reading);
}

TEST_ON_MACHINE(ReadLinkText, OpensNothingThatIsNoReparsePoint)
{
    for (char16_t const *const name : {u"C:\\file", u"C:\\dir", u"C:\\sparse", u"C:\\no"}) {
        simulated_machine fresh;
        make_names(fresh);
        unsigned int error = 0;
        auto link_type = windows::link_type_none;
        read_link_text(wide(name), link_type, error);
        EXPECT_EQ(fresh.calls_of("GetFileAttributesExW"), 1) << printable(name);
        EXPECT_EQ(fresh.journal().size(), 1U) << printable(name);
    }
}

TEST_ON_MACHINE(ReadLinkText, EachCallThatFails)
{
    using read = std::pair<unsigned int, std::wstring>; // the code and the text
    EXPECT_EQ(
        outcomes_of_each_call(add_junction,
                              [] {
                                  unsigned int error = untouched;
                                  auto link_type = windows::link_type_none;
                                  auto text = read_link_text(L"C:\\link", link_type, error);
                                  return read(error, text);
                              }),
        (std::vector<read>{{1117, L""}, {untouched, L""}, {untouched, L""}, {untouched, L"C:\\x"}}))
        << "attributes, opening, reading, closing";
}

TEST_ON_MACHINE(ReadLinkTarget, EachCallThatFails)
{
    int const failed = sweep(add_junction, [](failing_run const &run) {
        auto link_type = windows::link_type_none;
        std::wstring text;
        auto const thrown = failure_of([&] { text = read_link_target(L"C:\\link", link_type); });
        EXPECT_EQ(thrown,
                  run.nth == 1 ? std::optional(system_error(1117, u"C:\\link")) : std::nullopt);
        bool const is_read = run.nth >= 4; // the fourth is the closing
        EXPECT_EQ(text, is_read ? L"C:\\x" : L"");
        EXPECT_EQ(link_type, is_read ? windows::link_type_mount_point : windows::link_type_none);
    });
    EXPECT_EQ(failed, 4);
}

TEST_ON_MACHINE(ReadLinkTarget, OfAMissingNameNamesTheStringOfTheCall)
{
    auto link_type = windows::link_type_none;
    EXPECT_FAILURE(read_link_target(LR"(\\?\C:\no)", link_type), not_found(uR"(\\?\C:\no)"));
}

TEST_ON_MACHINE(ReadLinkTarget, ANameBeyondAsciiLeavesNoHandleOpen)
{
    machine.add_junction(u"C:\\link", u"\\??\\C:\\x", u"\u00E9:\\directory");
    auto link_type = windows::link_type_none;
    EXPECT_THROW(read_link_target(L"C:\\link", link_type),
                 foundation::ustring::CtypeInvalidCharacter);
}

} // namespace
} // namespace fl::filesystem::detail
