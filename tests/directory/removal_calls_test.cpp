// What becomes of removals where a call fails, and where others change the tree meanwhile.

#include <fl/filesystem/removal.hpp>

#include "support/calls.hpp"
#include "support/small_stack.hpp"

#include <algorithm>

namespace fl::filesystem::tests {
namespace {

void build_small_tree(simulated_machine &machine)
{
    machine.add_file(uR"(C:\away\kept)").add_file(uR"(C:\away\deep\kept)");
    machine.add_directory(uR"(C:\t\a)").add_file(uR"(C:\t\b)", "content");
    machine.add_file(uR"(C:\t\c\x)").add_symbolic_link(uR"(C:\t\d)", uR"(C:\away\kept)");
    machine.add_symbolic_link(uR"(C:\t\e)", uR"(C:\away)", flavour::directory);
    machine.add_junction(uR"(C:\t\f)", uR"(C:\away)");
}

bool is_away_untouched(simulated_machine const &machine)
{
    return machine.exists(uR"(C:\away\kept)") && machine.exists(uR"(C:\away\deep\kept)");
}

TEST_ON_MACHINE(RemovalCalls, EachNameIsOpenedAndMarked)
{
    machine.add_file(uR"(C:\t\x)");
    EXPECT_EQ(remove_all(uR"(C:\t)", removal_options()).removed(), 2U);
    std::string const t = R"((\\?\C:\t))";
    std::string const x = R"((\\?\C:\t\x))";
    std::string const pattern = R"((\\?\C:\t\*))";
    EXPECT_EQ(
        calls_on_disk(machine),
        (lines{"GetFileAttributesExW" + t,
               "CreateFileW" + t + " access 10080 share 3 disposition 3 flags 2200000",
               "GetFinalPathNameByHandleW" + t, "GetFileInformationByHandleEx" + t + " flags 9",
               "FindFirstFileExW" + pattern + " flags 2", "FindNextFileW" + pattern,
               "FindNextFileW" + pattern,
               "CreateFileW" + x + " access 10080 share 7 disposition 3 flags 2200000",
               "GetFinalPathNameByHandleW" + x, "SetFileInformationByHandle" + x + " flags 15",
               "CloseHandle" + x, "FindNextFileW" + pattern, "FindClose" + pattern,
               "SetFileInformationByHandle" + t + " flags 15", "CloseHandle" + t}));
}

TEST_ON_MACHINE(RemovalCalls, EveryFailingCallReleasesItsHandlesAndLosesNothingOutside)
{
    for (bool const keeps_going : {false, true})
        sweep(build_small_tree, [&](failing_run const &run) {
            bool is_complete = false;
            auto const thrown = failure_of([&] {
                is_complete =
                    remove_all(uR"(C:\t)", removal_options().keep_going(keeps_going)).is_complete();
            });
            EXPECT_TRUE(is_away_untouched(run.machine));
            EXPECT_EQ(run.machine.exists(uR"(C:\t)"), !is_complete);
            if (thrown) {
                EXPECT_EQ(thrown->error_code, run.code);
            }
        });
}

/// A directory of the tree is swapped for a link to another ahead of each call in turn: by a
/// machine that doesn't even mind who has it open.
TEST_ON_MACHINE(RemovalCalls, NothingOutsideIsLostWhateverBecomesALinkMeanwhile)
{
    struct
    {
        char16_t const *name;
        bool is_junction;
    } const swaps[] = {{uR"(C:\t\c)", true},  {uR"(C:\t\c)", false}, {uR"(C:\t\c\x)", true},
                       {uR"(C:\t\b)", false}, {uR"(C:\t\a)", true},  {uR"(C:\t)", true}};
    for (auto const &row : swaps) {
        for (char const *function :
             {"CreateFileW", "GetFinalPathNameByHandleW", "GetFileInformationByHandleEx",
              "FindFirstFileExW", "FindNextFileW", "SetFileInformationByHandle", "CloseHandle",
              "FindClose", "GetFileAttributesExW"}) {
            for_each_nth([&](int nth) {
                simulated_machine fresh;
                build_small_tree(fresh);
                fresh.add_file(uR"(C:\away\x)").add_file(uR"(C:\away\c\x)");
                auto const swap = fresh.before_call(function, nth, [&] {
                    if (!fresh.exists(row.name))
                        return;
                    fresh.remove(row.name);
                    if (row.is_junction)
                        fresh.add_junction(row.name, uR"(C:\away)");
                    else
                        fresh.add_symbolic_link(row.name, uR"(C:\away)", flavour::directory);
                });
                static_cast<void>(
                    failure_of([] { remove_all(uR"(C:\t)", removal_options().keep_going()); }));
                EXPECT_TRUE(is_away_untouched(fresh)) << function;
                EXPECT_TRUE(fresh.exists(uR"(C:\away\x)")) << function;
                EXPECT_TRUE(fresh.exists(uR"(C:\away\c\x)")) << function;
                expect_nothing_open(fresh);
                return swap.fired();
            });
        }
    }
}

TEST_ON_MACHINE(RemovalCalls, WhatGoesByItselfIsNoFailure)
{
    machine.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\t\b)");
    auto const gone = machine.before_call("CreateFileW", 2, [&] {
        machine.remove(uR"(C:\t\a)");
        machine.remove(uR"(C:\t\b)");
    });
    removal_report const report = remove_all(uR"(C:\t)", removal_options());
    EXPECT_TRUE(report.is_complete());
    EXPECT_EQ(report.removed(), 1U);
    EXPECT_FALSE(machine.exists(uR"(C:\t)"));
}

TEST_ON_MACHINE(RemovalCalls, TheEmptyRootOfADriveStays)
{
    machine.add_drive(u'E');
    EXPECT_FAILURE(remove_all(uR"(E:\)", removal_options()), denied(uR"(E:\)"));
}

TEST_ON_MACHINE(RemovalCalls, WhatIsDeniedOrInUseIsNamedAsItWasGiven)
{
    machine.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\t\b)").add_file(uR"(C:\t\c)");
    machine.deny(uR"(C:\t\a)", right::list).deny(uR"(C:\t\b)", right::remove);
    HANDLE const used = ::CreateFileW(LR"(C:\t\c)", GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    machine.set_current_directory(u"C:\\");
    removal_report const report = remove_all(u"t", removal_options().keep_going());
    ::CloseHandle(used);
    ASSERT_EQ(report.failures().size(), 3U);
    auto const told = [&](std::size_t at) {
        failure const &one = report.failures()[at];
        return test_support::failure{one.id(), one.identifier(), one.path_name(),
                                     one.additional_path_names(), one.error_code()};
    };
    EXPECT_EQ(told(0), denied(uR"(t\a)"));
    EXPECT_EQ(told(1), denied(uR"(t\b)"));
    EXPECT_EQ(told(2), system_error(ERROR_SHARING_VIOLATION, uR"(t\c)"));
    EXPECT_EQ(report.removed(), 0U);
    EXPECT_TRUE(machine.exists(uR"(C:\t\a\x)"));
}

// FAT and many shares know no deletion with flags.
TEST_ON_MACHINE(RemovalCalls, OldFileSystemsRemoveToo)
{
    for (bool const clears : {false, true}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\x)");
        fresh.set_attributes(uR"(C:\t\x)", FILE_ATTRIBUTE_READONLY);
        sure_fault const fault =
            fresh.fail_call("SetFileInformationByHandle", 1, ERROR_INVALID_PARAMETER);
        auto const thrown =
            failure_of([&] { remove_all(uR"(C:\t)", removal_options().clear_read_only(clears)); });
        EXPECT_EQ(thrown.has_value(), !clears);
        EXPECT_EQ(fresh.exists(uR"(C:\t\x)"), !clears);
    }
}

TEST_ON_MACHINE(RemovalCalls, ADirectoryWithAnotherTagIsNotEmptied)
{
    constexpr DWORD tag = 0x42;
    machine.add_reparse_point(uR"(C:\t\g)", tag, std::string(16, 'g'), flavour::directory);
    machine.handle_tag(tag);
    EXPECT_EQ(remove_all(uR"(C:\t)", removal_options()).removed(), 2U);
    EXPECT_EQ(machine.entries(u"C:\\"), names{});
}

TEST_ON_MACHINE(RemovalCalls, AReportNamesWhatIsLeftAlsoWhereAnExceptionWouldNameNobody)
{
    for (DWORD const code : {123U, 161U, 206U, 4390U}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\x)");
        sure_fault const fault = fresh.fail_call_on_name("CreateFileW", uR"(C:\t\x)", 1, code);
        auto const report = remove_all(uR"(C:\t)", removal_options().keep_going());
        ASSERT_EQ(report.failures().size(), 1U) << code;
        EXPECT_EQ(report.failures().front().path_name(), uR"(C:\t\x)") << code;
        sure_fault const again = fresh.fail_call_on_name("CreateFileW", uR"(C:\t\x)", 1, code);
        auto const thrown = failure_of([] { remove_all(uR"(C:\t)", removal_options()); }).value();
        EXPECT_EQ(thrown.what, report.failures().front().identifier()) << code;
    }
}

// Its search finds nothing at all, as it has no dots either.
TEST_ON_MACHINE(RemovalCalls, AnEmptyRootStays)
{
    machine.add_drive(u'E');
    EXPECT_FAILURE(remove_all(u"E:\\", removal_options()), denied(u"E:\\"));
    EXPECT_TRUE(machine.is_directory(u"E:\\"));
}

TEST_ON_MACHINE(RemovalCalls, WhatDoesntTellWhereItIsStaysAndIsNamed)
{
    machine.add_file(uR"(C:\t\x)");
    {
        sure_fault const fault = machine.fail_call("GetFinalPathNameByHandleW", 2, ERROR_IO_DEVICE);
        EXPECT_FAILURE(remove_all(uR"(C:\t)", removal_options()),
                       system_error(ERROR_IO_DEVICE, uR"(C:\t\x)"));
    }
    sure_fault const fault = machine.fail_call("GetFinalPathNameByHandleW", 2, ERROR_IO_DEVICE);
    auto const report = remove_all(uR"(C:\t)", removal_options().keep_going());
    ASSERT_EQ(report.failures().size(), 1U);
    EXPECT_EQ(report.failures().front().path_name(), uR"(C:\t\x)");
    EXPECT_EQ(report.failures().front().error_code(), DWORD{ERROR_IO_DEVICE});
    EXPECT_EQ(report.removed(), 0U);
    EXPECT_EQ(machine.entries(uR"(C:\t)"), names{u"x"});
}

TEST_ON_MACHINE(RemovalCalls, ATreeAsDeepAsAnyOnASmallStack)
{
    run_on_stack_of(256 * 1024, [] {
        simulated_machine fresh;
        fresh.keep_journal(false);
        std::u16string path = uR"(\\?\C:)";
        for (int level = 0; level < 1500; ++level)
            path += u"\\d";
        fresh.add_file(path + u"\\f");
        EXPECT_EQ(remove_all(uR"(C:\d)", removal_options()).removed(), 1501U);
        EXPECT_TRUE(fresh.entries(u"C:\\").empty());
    });
}

} // namespace
} // namespace fl::filesystem::tests
