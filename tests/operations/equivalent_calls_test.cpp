// Links, volumes, rights and failing calls under `equivalent`, which only the simulated
// machine can show.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_ON_MACHINE(EquivalentCalls, OpenBothAndCompareTheirIdentifiers)
{
    machine.add_file(u"C:\\a").add_file(u"C:\\b");
    EXPECT_FALSE(equivalent(u"C:\\a", u"C:\\b"));
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(C:\a))", R"(GetFullPathNameW(C:\b))",
                     R"(CreateFileW(C:\a))", R"(GetFileInformationByHandleEx(C:\a))",
                     R"(CloseHandle(C:\a))", R"(CreateFileW(C:\b))",
                     R"(GetFileInformationByHandleEx(C:\b))", R"(CloseHandle(C:\b))"}));
}

TEST_ON_MACHINE(EquivalentCalls, AfterAFailureAskAboutTheFirstAndThenTheSecond)
{
    machine.add_file(u"C:\\b");
    EXPECT_FALSE(equivalent(u"C:\\a", u"C:\\b"));
    EXPECT_EQ(texts_of(machine, "GetFileAttributesExW"), (lines{"C:\\a", "C:\\b"}));
}

TEST_ON_MACHINE(EquivalentLinks, AreFollowed)
{
    constexpr row_of_texts<char16_t, bool> cases[] = {
        {uR"(C:\l)", uR"(C:\f)", true, "a link and its target"},
        {uR"(C:\l)", uR"(C:\m)", true, "two links to one file"},
        {uR"(C:\l)", uR"(C:\l)", true, "one link"},
        {uR"(C:\hard)", uR"(C:\f)", true, "two names of one file"},
        {uR"(C:\hard)", uR"(C:\l)", true, "by a link and by another name"},
        {uR"(C:\way)", uR"(D:\d)", true, "a junction"},
        {uR"(C:\way\f)", uR"(D:\d\f)", true, "behind a junction"},
        {uR"(C:\volume)", uR"(D:\)", true, "a volume in a directory"},
        {uR"(C:\volume)", uR"(C:\)", false, "which isn't the one around it"},
        {uR"(C:\f)", uR"(D:\f)", false, "files on two volumes"},
        {uR"(C:\)", uR"(D:\)", false, "roots of two volumes"},
        {uR"(X:\f)", uR"(\\s\h\f)", true, "a mapped drive and its share"},
        {uR"(C:\f.lnk)", uR"(C:\f)", false, "a shortcut is a file of its own"},
        {uR"(C:\dead)", uR"(C:\f)", false, "a link to nothing isn't there"},
        {uR"(C:\strange)", uR"(C:\f)", false, "nor what nobody can look behind"},
        {uR"(Q:\f)", uR"(C:\f)", false, "nor a drive that isn't there"},
        {uR"(\\gone\h\f)", uR"(C:\f)", false, "nor a server"},
    };
    machine.add_drive(u'D').add_file(uR"(D:\d\f)").add_file(uR"(D:\f)").add_file(uR"(C:\f)");
    machine.add_share(u"s", u"h").add_file(uR"(\\s\h\f)").map_drive(u'X', u"s", u"h");
    machine.add_symbolic_link(uR"(C:\l)", u"f").add_symbolic_link(uR"(C:\m)", u"l");
    machine.add_hard_link(uR"(C:\hard)", uR"(C:\f)").add_junction(uR"(C:\way)", uR"(D:\d)");
    machine.add_mount_point(uR"(C:\volume)", u'D').add_shortcut(uR"(C:\f.lnk)", uR"(C:\f)");
    machine.add_symbolic_link(uR"(C:\dead)", u"gone").add_dead_server(u"gone");
    machine.add_reparse_point(uR"(C:\strange)", 0x80000ABC, "x");
    expect_rows(cases, [](auto one, auto other) { return equivalent(one, other); });
    expect_rows(cases, [](auto one, auto other) { return equivalent(other, one); });
    expect_rows(cases, [](auto one, auto other) { return equivalent(upath(one), upath(other)); });
}

// What may not be looked at is as good as missing.
TEST_ON_MACHINE(EquivalentRights, PresentMissingAndDenied)
{
    machine.add_file(uR"(C:\d\present)").add_file(uR"(C:\d\denied)").add_file(uR"(C:\d\other)");
    machine.deny(uR"(C:\d)", right::list).deny(uR"(C:\d\denied)", right::read_attributes);
    machine.set_current_directory(uR"(C:\d)");
    struct
    {
        char16_t const *p1, *p2;
        bool is_failure;
    } constexpr cases[] = {
        {u"present", u"missing", false}, {u"missing", u"present", false},
        {u"present", u"denied", false},  {u"denied", u"present", false},
        {u"missing", u"missing", true},  {u"missing", u"denied", true},
        {u"denied", u"missing", true},   {u"denied", u"denied", true},
        {u"present", u"other", false},
    };
    for (auto const &row : cases) {
        bool answer = true;
        auto const told = failure_of([&] { answer = equivalent(row.p1, row.p2); });
        EXPECT_EQ(told, row.is_failure ? std::optional(not_found(row.p1)) : std::nullopt);
        EXPECT_EQ(answer, row.is_failure);
    }
    EXPECT_TRUE(equivalent(u"present", u"PRESENT"));
}

// Both are there, but one can't be opened.
TEST_ON_MACHINE(EquivalentCalls, CodesOfOpening)
{
    failing_row<DWORD> const cases[] = {
        {2, not_found(u"b"), "the first is there, so it is the second"},
        {3, not_found(u"b"), "the first is there, so it is the second"},
        {5, denied(u"b"), "the first can be read, so it is the second"},
        {80, file_exists(u"b"), "a code about the second"},
        {145, not_empty(u"b"), "too"},
        {183, file_exists(u"b"), "a code about the second"},
        {206, too_large(u""), "a code about the second"},
        {267, not_directory(u"b"), "too"},
        {1920, denied(u"a"), "one that is about either"},
        {32, system_error(32, u"a", u"b"), "a code that says nothing"},
        {53, system_error(53, u"a", u"b"), "a code that says nothing"},
        {1117, system_error(1117, u"a", u"b"), "a code that says nothing"},
    };
    machine.add_file(u"C:\\a").add_file(u"C:\\b");
    for (int const nth : {1, 2})
        for (auto const &row : cases) {
            sure_fault const fault = machine.fail_call("CreateFileW", nth, row.given);
            EXPECT_FAILURE(equivalent(u"a", u"b"), row.expected)
                << row.given << ", " << row.why << ", opening " << nth;
        }
}

TEST_ON_MACHINE(EquivalentCalls, Code5OnALinkOrAnUnreadableFirstIsTheFirsts)
{
    machine.add_file(u"C:\\a").add_file(u"C:\\b").add_symbolic_link(u"C:\\l", u"a");
    {
        // the link's status takes the second opening
        sure_fault const fault = machine.fail_call("CreateFileW", 1, 5);
        EXPECT_FAILURE(equivalent(u"C:\\l", u"C:\\b"), denied(u"C:\\l"));
    }
    machine.deny(u"C:\\a", right::read);
    sure_fault const fault = machine.fail_call("CreateFileW", 2, 5);
    EXPECT_FAILURE(equivalent(u"C:\\a", u"C:\\b"), denied(u"C:\\a"));
}

// FAT and some network file systems have no identifiers of 128 bits.
TEST_ON_MACHINE(EquivalentCalls, FallBackOnShortIdentifiers)
{
    machine.add_drive(u'D').add_file(u"C:\\a").add_file(u"C:\\b").add_file(u"D:\\a");
    machine.add_hard_link(u"C:\\c", u"C:\\a");
    for (DWORD const code : {1U, 50U, 87U, 1117U}) {
        sure_fault const fault = machine.fail_every_call_on("GetFileInformationByHandleEx", code);
        EXPECT_TRUE(equivalent(u"C:\\a", u"C:\\a")) << code;
        EXPECT_TRUE(equivalent(u"C:\\a", u"C:\\c")) << code;
        EXPECT_FALSE(equivalent(u"C:\\a", u"C:\\b")) << code;
        EXPECT_FALSE(equivalent(u"C:\\a", u"D:\\a")) << code;
    }
}

// Whoever has none says so.
TEST_ON_MACHINE(EquivalentCalls, AFailureWithoutACodeIsNoLackOfIdentifiers)
{
    machine.add_file(u"C:\\a").add_file(u"C:\\b");
    for (int const nth : {1, 2}) {
        sure_fault const fault = machine.fail_call("GetFileInformationByHandleEx", nth, 0);
        EXPECT_FAILURE(equivalent(u"C:\\a", u"C:\\b"), system_error(31, u"C:\\a", u"C:\\b"));
    }
}

TEST_ON_MACHINE(EquivalentCalls, WithoutAnyIdentifierTheCodeIsTheSecondCalls)
{
    machine.add_file(u"C:\\a").add_file(u"C:\\b");
    auto const by_class = machine.fail_every_call_on("GetFileInformationByHandleEx", 87);
    sure_fault const fault = machine.fail_every_call_on("GetFileInformationByHandle", 1117);
    EXPECT_FAILURE(equivalent(u"C:\\a", u"C:\\b"), system_error(1117, u"C:\\a", u"C:\\b"));
}

TEST_ON_MACHINE(EquivalentCalls, AFailedExpansionNamesItsOwnPath)
{
    machine.add_file(u"C:\\a").add_file(u"C:\\b");
    for (int const nth : {1, 2}) {
        sure_fault const fault = machine.fail_call("GetFullPathNameW", nth, 5);
        EXPECT_FAILURE(equivalent(u"a", u"b"), denied(nth == 1 ? u"a" : u"b"));
    }
}

TEST_ON_MACHINE(EquivalentCalls, LinksThatLoop)
{
    machine.add_symbolic_link(u"C:\\loop", u"loop").add_file(u"C:\\f");
    EXPECT_FALSE(equivalent(u"C:\\loop", u"C:\\f")) << "nothing is there";
    EXPECT_FAILURE(equivalent(u"C:\\loop", u"C:\\loop"), not_found(u"C:\\loop"));
}

TEST_ON_MACHINE(EquivalentCalls, EveryFailingCallReleasesWhatItHolds)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(u"C:\\f").add_symbolic_link(u"C:\\l", u"f");
    };
    sweep(build, [](failing_run const &run) {
        bool answer = false;
        auto const told = failure_of([&] { answer = equivalent(u"C:\\l", u"C:\\f"); });
        EXPECT_TRUE(answer || run.is_broken());
        EXPECT_TRUE(!told || (run.is_broken() && told->error_code == 1117)) << told;
    });
}

// Identities are those of one volume, and repeat on others; on some servers the lower half
// repeats on one volume.
TEST_ON_MACHINE(EquivalentCalls, NeedsTheWholeIdentityAndTheVolume)
{
    for (bool const has_long_identities : {true, false}) {
        simulated_machine fresh;
        std::optional<simulation::fault> fault;
        if (!has_long_identities)
            fault = fresh.fail_every_call_on("GetFileInformationByHandleEx", 87);
        fresh.add_drive(u'D').add_file(uR"(C:\f)").add_file(uR"(D:\f)");
        EXPECT_FALSE(equivalent(uR"(C:\f)", uR"(D:\f)"));
        EXPECT_FALSE(equivalent(uR"(C:\)", uR"(D:\)"));
        EXPECT_TRUE(equivalent(uR"(D:\f)", uR"(D:\F)"));
        fresh.add_share(u"s", u"h");
        for (char16_t const *name : {u"a", u"b", u"c"})
            fresh.add_file(uR"(\\s\h\)" + std::u16string(name));
        EXPECT_FALSE(equivalent(uR"(\\s\h\a)", uR"(\\s\h\b)"));
        EXPECT_FALSE(equivalent(uR"(\\s\h\b)", uR"(\\s\h\c)"));
        EXPECT_TRUE(equivalent(uR"(\\s\h\b)", uR"(\\s\h\B)"));
    }
}

} // namespace
} // namespace fl::filesystem::tests
