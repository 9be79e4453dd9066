// Which calls the removal of a tree makes, with which texts and flags, and whom it
// names where one of them fails.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

#include <algorithm>

namespace fl::filesystem::tests {
namespace {

std::string open_line(std::string const &name, char const *access)
{
    return "CreateFileW(" + name + ") access " + access + " share 7 disposition 3 flags 2200000";
}

/// How an enumeration begins: it stands behind the dots.
lines entering(std::string const &name)
{
    std::string const next = "FindNextFileW(" + name + "\\*)";
    return {"FindFirstFileExW(" + name + "\\*)", open_line(name, "1"),
            "GetFileInformationByHandle(" + name + ")", next, next};
}

lines leaving(std::string const &name)
{
    return {"FindClose(" + name + "\\*)", "CloseHandle(" + name + ")",
            "RemoveDirectoryW(" + name + ")"};
}

lines removing_link(std::string const &name)
{
    return {open_line(name, "8"), "DeviceIoControl(" + name + ") flags 900A8",
            "CloseHandle(" + name + ")", "RemoveDirectoryW(" + name + ")"};
}

void build_small_tree(simulated_machine &machine)
{
    machine.add_file(uR"(C:\away\kept)");
    machine.add_directory(uR"(C:\t\a)").add_file(uR"(C:\t\b)", "content");
    machine.add_file(uR"(C:\t\c\x)").add_symbolic_link(uR"(C:\t\d)", uR"(C:\away\kept)");
    machine.add_symbolic_link(uR"(C:\t\e)", uR"(C:\away)", flavour::directory);
    machine.add_junction(uR"(C:\t\f)", uR"(C:\away)");
}

TEST_ON_MACHINE(RemoveAllCalls, OneEnumerationADirectoryAndOneDeletionAnEntry)
{
    build_small_tree(machine);
    remove_all(uR"(C:\t)");
    std::string const next = R"(FindNextFileW(C:\t\*))";
    EXPECT_EQ(calls_on_disk(machine),
              joined({{R"(GetFileAttributesExW(C:\t))"},
                      entering(R"(C:\t)"),
                      entering(R"(C:\t\a)"),
                      leaving(R"(C:\t\a)"),
                      {next, R"(DeleteFileW(C:\t\b))", next},
                      entering(R"(C:\t\c)"),
                      {R"(DeleteFileW(C:\t\c\x))", R"(FindNextFileW(C:\t\c\*))"},
                      leaving(R"(C:\t\c)"),
                      {next, R"(DeleteFileW(C:\t\d))", next},
                      removing_link(R"(C:\t\e)"),
                      {next},
                      removing_link(R"(C:\t\f)"),
                      {next},
                      leaving(R"(C:\t)")}));
    EXPECT_EQ(machine.entries(u"C:\\"), names{u"away"});
    EXPECT_EQ(machine.entries(uR"(C:\away)"), names{u"kept"});
}

TEST_ON_MACHINE(RemoveAllCalls, OfAFile)
{
    machine.add_file(uR"(C:\f)");
    remove_all(uR"(C:\f)");
    EXPECT_EQ(calls_on_disk(machine),
              (lines{R"(GetFileAttributesExW(C:\f))", R"(DeleteFileW(C:\f))"}));
}

TEST_ON_MACHINE(RemoveAllCalls, OfALinkToADirectory)
{
    machine.add_junction(uR"(C:\j)", uR"(C:\away)");
    remove_all(uR"(C:\j)");
    EXPECT_EQ(calls_on_disk(machine),
              joined({{R"(GetFileAttributesExW(C:\j))"}, removing_link(R"(C:\j)")}));
}

TEST_ON_MACHINE(RemoveAllCalls, OfNothing)
{
    remove_all(u"");
    remove_all(upath());
    EXPECT_EQ(calls_with_arguments(machine), lines{});
    EXPECT_FAILURE(remove_all(uR"(C:\no)"), not_found(uR"(C:\no)"));
    EXPECT_EQ(calls_on_disk(machine), lines{R"(GetFileAttributesExW(C:\no))"});
}

TEST_ON_MACHINE(RemoveAllCalls, ASparseReparsePointIsAskedForNoTag)
{
    machine.add_reparse_point(uR"(C:\t\s)", IO_REPARSE_TAG_MOUNT_POINT,
                              simulation::mount_point_data(uR"(\??\C:\away)", u""),
                              flavour::directory);
    machine.set_attributes(uR"(C:\t\s)", FILE_ATTRIBUTE_SPARSE_FILE).add_file(uR"(C:\away\kept)");
    remove_all(uR"(C:\t)");
    EXPECT_EQ(machine.calls_of("DeviceIoControl"), 0);
    EXPECT_EQ(machine.entries(u"C:\\"), names{u"away"});
    EXPECT_EQ(machine.entries(uR"(C:\away)"), names{u"kept"}) << "the handle shows what it is";
}

/// One call of the removal of `C:\t`, which holds `a\x` and the junction `j`: whom its
/// failure names and what is left of `a\x` and `j`.
struct blame_case
{
    char const *function;
    int nth;
    char16_t const *named;
    names left; ///< in `C:\t`
    char const *why;
};

blame_case const blame_cases[] = {
    {"GetFileAttributesExW", 1, uR"(C:\t)", {u"a", u"j"}, "what was given"},
    {"FindFirstFileExW", 1, uR"(C:\t\*)", {u"a", u"j"}, "the pattern"},
    {"FindFirstFileExW", 2, uR"(C:\t\a\*)", {u"a", u"j"}, "the pattern below"},
    {"CreateFileW", 1, uR"(C:\t\*)", {u"a", u"j"}, "the pattern, though it isn't opened"},
    {"CreateFileW", 2, uR"(C:\t\a\*)", {u"a", u"j"}, "the pattern below"},
    {"GetFileInformationByHandle", 1, uR"(C:\t)", {u"a", u"j"}, "the directory"},
    {"GetFileInformationByHandle", 2, uR"(C:\t\a)", {u"a", u"j"}, "the directory below"},
    {"FindNextFileW", 1, uR"(C:\t)", {u"a", u"j"}, "the directory"},
    {"FindNextFileW", 3, uR"(C:\t\a)", {u"a", u"j"}, "the directory below, behind its dots"},
    {"FindNextFileW", 5, uR"(C:\t\a)", {u"a", u"j"}, "where the end was to be told"},
    {"FindNextFileW", 6, uR"(C:\t)", {u"j"}, "behind a directory that was removed"},
    {"FindNextFileW", 7, uR"(C:\t)", {}, "where the end was to be told"},
    {"DeleteFileW", 1, uR"(C:\t\a\x)", {u"a", u"j"}, "the file"},
    {"FindClose", 1, u"", {u"a", u"j"}, "nobody"},
    {"FindClose", 2, u"", {}, "nobody"},
    {"RemoveDirectoryW", 1, uR"(C:\t\a)", {u"a", u"j"}, "the directory below"},
    {"RemoveDirectoryW", 2, uR"(C:\t\j)", {u"j"}, "the link"},
    {"RemoveDirectoryW", 3, uR"(C:\t)", {}, "the directory"},
};

TEST_ON_MACHINE(RemoveAllCalls, AFailureNamesWhatItsCallWasAbout)
{
    for (auto const &row : blame_cases) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\a\x)").add_junction(uR"(C:\t\j)", uR"(C:\away)");
        sure_fault const fault = fresh.fail_call(row.function, row.nth, ERROR_IO_DEVICE);
        EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(ERROR_IO_DEVICE, row.named))
            << row.function << " " << row.nth << ": " << row.why;
        EXPECT_EQ(fresh.entries(uR"(C:\t)"), row.left) << row.function << " " << row.nth;
        EXPECT_EQ(fresh.open_handles() + fresh.find_handles(), 0) << row.function << row.nth;
    }
}

TEST_ON_MACHINE(RemoveAllCalls, AnEndOtherThanTheUsualOneIsReportedAlsoIfItIsNoCode)
{
    machine.add_file(uR"(C:\t\x)");
    auto const fault = machine.fail_call("FindNextFileW", 3, ERROR_SUCCESS);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(0, uR"(C:\t)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), names{});
}

TEST_ON_MACHINE(RemoveAllCalls, AnOpeningThatFailsWithoutACodeNamesThePatternToo)
{
    machine.add_file(uR"(C:\t\x)");
    auto const fault = machine.fail_call("CreateFileW", 1, ERROR_SUCCESS);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(0, uR"(C:\t\*)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), names{u"x"});
}

TEST_ON_MACHINE(RemoveAllCalls, AFailingCloseOutranksTheEndOfTheEnumeration)
{
    machine.add_directory(uR"(C:\t)");
    sure_fault const end = machine.fail_call("FindNextFileW", 2, ERROR_IO_DEVICE);
    sure_fault const close = machine.fail_call("FindClose", 1, ERROR_ACCESS_DENIED);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), denied(u""));
}

TEST_ON_MACHINE(RemoveAllCalls, HandlesThatDontCloseFailNothing)
{
    build_small_tree(machine);
    sure_fault const fault = machine.fail_every_call_on("CloseHandle", ERROR_IO_DEVICE);
    remove_all(uR"(C:\t)");
    EXPECT_FALSE(machine.exists(uR"(C:\t)"));
}

TEST_ON_MACHINE(RemoveAllCalls, EveryFailingCallReleasesItsHandles)
{
    sweep(build_small_tree, [](failing_run const &run) {
        auto const thrown = failure_of([] { remove_all(uR"(C:\t)"); });
        EXPECT_TRUE(run.machine.exists(uR"(C:\away\kept)"));
        EXPECT_EQ(run.machine.exists(uR"(C:\t)"), thrown.has_value());
    });
}

TEST_ON_MACHINE(RemoveAllCalls, ADirectoryWithAnotherTagIsRemovedWhileItIsOpen)
{
    constexpr DWORD tag = 0x42;
    machine.add_reparse_point(uR"(C:\t)", tag, std::string(16, 'g'), flavour::directory);
    machine.handle_tag(tag);
    remove_all(uR"(C:\t)");
    EXPECT_EQ(calls_on_disk(machine),
              (lines{R"(GetFileAttributesExW(C:\t))", open_line(R"(C:\t)", "8"),
                     R"(DeviceIoControl(C:\t) flags 900A8)", R"(CloseHandle(C:\t))",
                     R"(FindFirstFileExW(C:\t\*))", open_line(R"(C:\t)", "1"),
                     R"(GetFileInformationByHandle(C:\t))", R"(RemoveDirectoryW(C:\t))",
                     R"(CloseHandle(C:\t))", R"(FindClose(C:\t\*))"}));
    EXPECT_FALSE(machine.exists(uR"(C:\t)"));
}

TEST_ON_MACHINE(RemoveAllCalls, AfterADirectoryWithAnotherTagAFailingCloseNamesNobody)
{
    constexpr DWORD tag = 0x42;
    machine.add_reparse_point(uR"(C:\t)", tag, std::string(16, 'g'), flavour::directory);
    machine.handle_tag(tag);
    auto const fault = machine.fail_call("FindClose", 1, ERROR_IO_DEVICE);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(ERROR_IO_DEVICE, u""));
    EXPECT_FALSE(machine.exists(uR"(C:\t)"));
}

} // namespace
} // namespace fl::filesystem::tests
