// Removal by the standard facility: the two ways of marking, and what a read-only file
// goes through where the system knows only the old one.

#include "standard/filesystem.hpp"

#include "standard/error_codes.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr DWORD unknown_codes[] = {1, 50, 87};

/// Whether `C:\f` was removed, and the code.
struct answer
{
    bool removed;
    std::error_code code;

    friend bool operator==(answer const &, answer const &) = default;
};

answer removal(wchar_t const *name = L"C:\\f")
{
    std::error_code ec = stale;
    bool const removed = standard::remove(name, ec);
    return {removed, ec};
}

answer const done{true, {}};

answer fails(DWORD code)
{
    return {false, system_code(code)};
}

void add_read_only(simulated_machine &machine, DWORD more = 0)
{
    machine.add_file(u"C:\\f").set_attributes(u"C:\\f", FILE_ATTRIBUTE_READONLY | more);
}

TEST_ON_MACHINE(StandardRemove, Answers)
{
    struct
    {
        wchar_t const *name;
        answer expected;
        char const *why;
    } const cases[] = {
        {L"C:\\f", done, "a file"},
        {L"C:\\ro", done, "a read-only one"},
        {L"C:\\empty", done, "an empty directory"},
        {L"C:\\full", fails(145), "a full one"},
        {L"C:\\link", done, "a link and not its target"},
        {L"C:\\no", {false, {}}, "missing"},
        {L"C:\\no\\x", {false, {}}, "its directory, too"},
        {L"C:\\f\\x", {false, {}}, "below a file"},
        {L"C:\\f\\", {false, {}}, "a file is no directory"},
        {L"C:\\a|b", {false, {}}, "no name"},
        {L"\\\\server\\share\\x", {false, {}}, "no such server"},
        {L"", {false, {}}, "no text"},
        {L"C:\\kept", fails(5), "denied"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_file(u"C:\\f").add_file(u"C:\\ro").add_file(u"C:\\kept");
        fresh.set_attributes(u"C:\\ro", FILE_ATTRIBUTE_READONLY);
        fresh.add_directory(u"C:\\empty").add_file(u"C:\\full\\x");
        fresh.add_junction(u"C:\\link", u"C:\\full").deny(u"C:\\kept", right::remove);
        EXPECT_EQ(removal(row.name), row.expected) << row.why;
        EXPECT_EQ(fresh.entries(u"C:\\").size(), row.expected.removed ? 5U : 6U) << row.why;
        EXPECT_EQ(fresh.open_handles(), 0) << row.why;
    }
}

/// The classes of information that were set, in order.
std::vector<DWORD> classes_set(simulated_machine const &machine)
{
    std::vector<DWORD> classes;
    for (auto const &entry : machine.journal())
        if (entry.function == "SetFileInformationByHandle")
            classes.push_back(entry.flags);
    return classes;
}

using classes = std::vector<DWORD>;
constexpr DWORD basic = 0, disposition = 4, disposition_with_flags = 21;

TEST_ON_MACHINE(StandardRemove, MarksPlainlyWhereFlagsAreUnknown)
{
    for (DWORD const code : unknown_codes) {
        simulated_machine fresh;
        fresh.add_file(u"C:\\f");
        auto const fault = fresh.fail_call("SetFileInformationByHandle", 1, code);
        EXPECT_EQ(removal(), done) << code;
        EXPECT_FALSE(fresh.exists(u"C:\\f")) << code;
        EXPECT_EQ(classes_set(fresh), (classes{disposition_with_flags, disposition})) << code;
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

TEST_ON_MACHINE(StandardRemove, TakesEveryOtherCodeForTheAnswer)
{
    for (DWORD const code : {2U, 6U, 32U, 145U, 1117U}) {
        simulated_machine fresh;
        add_read_only(fresh);
        auto const fault = fresh.fail_call("SetFileInformationByHandle", 1, code);
        EXPECT_EQ(removal(), fails(code)) << code;
        EXPECT_EQ(classes_set(fresh), classes{disposition_with_flags}) << code;
        EXPECT_EQ(fresh.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

TEST_ON_MACHINE(StandardRemove, TakesReadOnlyAwayWhereFlagsAreUnknown)
{
    for (DWORD const more : {DWORD{0}, DWORD{FILE_ATTRIBUTE_HIDDEN}}) {
        simulated_machine fresh;
        add_read_only(fresh, more);
        auto const fault = fresh.fail_call("SetFileInformationByHandle", 1, 87);
        EXPECT_EQ(removal(), done);
        EXPECT_FALSE(fresh.exists(u"C:\\f"));
        EXPECT_EQ(classes_set(fresh),
                  (classes{disposition_with_flags, disposition, basic, disposition}));
        EXPECT_EQ(entries_of(fresh, "ReOpenFile").at(0).share,
                  DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE})
            << "whoever has it open is in nobody's way";
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

// As file systems do that know the flags, and not the one about read-only files.
TEST_ON_MACHINE(StandardRemove, TakesReadOnlyAwayWhereTheFlagsAreRefused)
{
    add_read_only(machine);
    auto const fault = machine.fail_call("SetFileInformationByHandle", 1, 5);
    EXPECT_EQ(removal(), done);
    EXPECT_FALSE(machine.exists(u"C:\\f"));
    EXPECT_EQ(classes_set(machine), (classes{disposition_with_flags, basic, disposition}));
}

TEST_ON_MACHINE(StandardRemove, ARefusalOfTheFlagsStaysOneIfTheFileIsWritable)
{
    machine.add_file(u"C:\\f");
    auto const fault = machine.fail_call("SetFileInformationByHandle", 1, 5);
    EXPECT_EQ(removal(), fails(5));
    EXPECT_EQ(classes_set(machine), classes{disposition_with_flags});
    EXPECT_TRUE(machine.exists(u"C:\\f"));
}

// Attributes are the file's, whatever the name by which it is removed.
TEST_ON_MACHINE(StandardRemove, OtherNamesOfAReadOnlyFileStayReadOnly)
{
    for (DWORD const code : {0U, 5U, 87U}) { // with flags, and without
        for (DWORD const more : {DWORD{0}, DWORD{FILE_ATTRIBUTE_HIDDEN}}) {
            simulated_machine fresh;
            add_read_only(fresh, more);
            fresh.add_hard_link(u"C:\\other", u"C:\\f");
            simulation::times const times{100, 200, 300};
            fresh.set_times(u"C:\\f", times);
            auto const fault = code == 0 ? fresh.fail_call("DeleteFileW", 1, 5)
                                         : fresh.fail_call("SetFileInformationByHandle", 1, code);
            EXPECT_EQ(removal(), done) << code;
            EXPECT_FALSE(fresh.exists(u"C:\\f")) << code;
            EXPECT_EQ(fresh.attributes(u"C:\\other"), FILE_ATTRIBUTE_READONLY | more) << code;
            EXPECT_EQ(fresh.times_of(u"C:\\other"), times) << code;
            EXPECT_EQ(fresh.link_count(u"C:\\other"), 1U) << code;
            EXPECT_EQ(fresh.open_handles(), 0) << code;
        }
    }
}

// Between the two openings another may put a file of his own in its place.
TEST_ON_MACHINE(StandardRemove, ChangesNoOtherFileThatHasTakenTheName)
{
    add_read_only(machine);
    machine.add_file(u"C:\\new").set_attributes(u"C:\\new", FILE_ATTRIBUTE_READONLY);
    auto const unknown = machine.fail_call("SetFileInformationByHandle", 1, 87);
    sure_fault const swapped = machine.before_call("SetFileInformationByHandle", 2, [] {
        ::MoveFileExW(L"C:\\f", L"C:\\old", 0);
        ::MoveFileExW(L"C:\\new", L"C:\\f", 0);
    });
    EXPECT_EQ(removal(), done);
    EXPECT_FALSE(machine.exists(u"C:\\old")) << "it is the file that was opened";
    EXPECT_EQ(machine.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
}

TEST_ON_MACHINE(StandardRemove, TakesReadOnlyAwayFromLinksAndNotFromTheirTargets)
{
    add_read_only(machine);
    machine.add_symbolic_link(u"C:\\l", u"C:\\f");
    machine.set_attributes(u"C:\\l", FILE_ATTRIBUTE_READONLY);
    auto const fault = machine.fail_call("SetFileInformationByHandle", 1, 87);
    EXPECT_EQ(removal(L"C:\\l"), done);
    EXPECT_FALSE(machine.exists(u"C:\\l"));
    EXPECT_EQ(machine.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
    for (auto const &entry : machine.journal()) {
        if (entry.function == "ReOpenFile") {
            EXPECT_EQ(entry.access, DWORD{FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES});
            EXPECT_EQ(entry.flags,
                      DWORD{FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT});
        }
    }
    EXPECT_EQ(machine.calls_of("ReOpenFile"), 1);
}

TEST_ON_MACHINE(StandardRemove, PutsReadOnlyBackIfItWasntInTheWay)
{
    constexpr DWORD attributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM;
    add_read_only(machine, FILE_ATTRIBUTE_SYSTEM);
    simulation::times const times{100, 200, 300};
    machine.set_times(u"C:\\f", times);
    sure_fault const first = machine.fail_call("SetFileInformationByHandle", 1, 50);
    sure_fault const last = machine.fail_call("SetFileInformationByHandle", 4, ERROR_IO_DEVICE);
    EXPECT_EQ(removal(), fails(ERROR_IO_DEVICE));
    EXPECT_EQ(machine.attributes(u"C:\\f"), attributes);
    EXPECT_EQ(machine.times_of(u"C:\\f"), times);
    EXPECT_EQ(classes_set(machine),
              (classes{disposition_with_flags, disposition, basic, disposition, basic}));
}

TEST_ON_MACHINE(StandardRemove, ADirectoryThatIsReadOnlyAndFullStaysBoth)
{
    machine.add_file(u"C:\\f\\x").set_attributes(u"C:\\f", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(removal(), fails(145));
    auto const fault = machine.fail_call("SetFileInformationByHandle", 1, 87);
    EXPECT_EQ(removal(), fails(145));
    EXPECT_EQ(machine.attributes(u"C:\\f"),
              DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY});
}

TEST_ON_MACHINE(StandardRemove, ADenialStaysOneIfTheFileIsWritable)
{
    machine.add_file(u"C:\\f");
    auto const unknown = machine.fail_call("SetFileInformationByHandle", 1, 1);
    auto const refused = machine.fail_call("SetFileInformationByHandle", 2, 5);
    EXPECT_EQ(removal(), fails(5));
    EXPECT_EQ(classes_set(machine), (classes{disposition_with_flags, disposition}));
    EXPECT_TRUE(machine.exists(u"C:\\f"));
}

TEST_ON_MACHINE(StandardRemove, ADenialStaysOneIfTheFileCantBeLookedAtAgain)
{
    for (int const nth : {1, 2}) {
        for (char const *function : {"ReOpenFile", "GetFileInformationByHandleEx"}) {
            simulated_machine fresh;
            add_read_only(fresh);
            auto const unknown = fresh.fail_call("SetFileInformationByHandle", 1, 87);
            auto const fault = fresh.fail_call(function, nth, ERROR_IO_DEVICE);
            bool const is_hindered = nth == 1 || function != std::string("ReOpenFile");
            EXPECT_EQ(removal(), is_hindered ? fails(5) : done) << function << nth;
            EXPECT_EQ(fault.fired(), is_hindered) << function << nth;
            if (is_hindered) {
                EXPECT_EQ(fresh.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
            }
            EXPECT_EQ(fresh.open_handles(), 0) << function << nth;
        }
    }
}

TEST_ON_MACHINE(StandardRemove, ADenialStaysOneIfTheAttributeCantBeTakenAway)
{
    add_read_only(machine);
    sure_fault const unknown = machine.fail_call("SetFileInformationByHandle", 1, 87);
    sure_fault const fault = machine.fail_call("SetFileInformationByHandle", 3, ERROR_IO_DEVICE);
    EXPECT_EQ(removal(), fails(5));
    EXPECT_EQ(classes_set(machine), (classes{disposition_with_flags, disposition, basic}));
    EXPECT_EQ(machine.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
}

TEST_ON_MACHINE(StandardRemove, ADenialStaysOneWithoutTheRightToChangeAttributes)
{
    add_read_only(machine);
    machine.deny(u"C:\\f", right::write);
    auto const unknown = machine.fail_call("SetFileInformationByHandle", 1, 87);
    EXPECT_EQ(removal(), fails(5));
    EXPECT_EQ(machine.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
}

TEST_ON_MACHINE(StandardRemove, EveryFailingCallReleasesItsHandlesAndLeavesTheAttributes)
{
    for_each_nth([](int nth) {
        simulated_machine fresh;
        add_read_only(fresh);
        auto const unknown = fresh.fail_call("SetFileInformationByHandle", 1, 87);
        auto const fault = fresh.fail_call(nth, ERROR_IO_DEVICE);
        answer const seen = removal();
        EXPECT_EQ(fresh.exists(u"C:\\f"), !seen.removed);
        if (!seen.removed) {
            EXPECT_EQ(fresh.attributes(u"C:\\f"), DWORD{FILE_ATTRIBUTE_READONLY});
        }
        EXPECT_EQ(seen.removed, seen.code == std::error_code());
        expect_nothing_open(fresh);
        return fault.fired();
    });
}

} // namespace
} // namespace fl::filesystem::detail
