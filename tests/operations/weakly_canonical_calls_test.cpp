// How far `weakly_canonical` walks, through links, refusals and failing calls: only the
// simulated machine can show that.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

#include <map>

namespace fl::filesystem::tests {
namespace {

TEST_ON_MACHINE(WeaklyCanonicalCalls, NoneForTheEmptyPath)
{
    weakly_canonical(u"");
    weakly_canonical(upath());
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(WeaklyCanonicalCalls, WhatIsThereIsntWalked)
{
    machine.add_file(uR"(C:\d\f)");
    canonical(uR"(C:\d\f)");
    lines expected = calls(machine);
    expected.insert(expected.begin(),
                    {R"(GetFullPathNameW(C:\d\f))", R"(GetFileAttributesExW(C:\d\f))"});
    machine.clear_journal();
    weakly_canonical(uR"(C:\d\f)");
    EXPECT_EQ(calls(machine), expected) << "one question, and then it is canonical";
}

TEST_ON_MACHINE(WeaklyCanonicalCalls, WhatAppearsMeanwhileIsWalkedToItsEnd)
{
    machine.add_file(uR"(C:\d\f)");
    sure_fault const missing = machine.fail_call("GetFileAttributesExW", 1, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(weakly_canonical(uR"(C:\d\f)"), uR"(C:\d\f)");
}

TEST_ON_MACHINE(WeaklyCanonicalCalls, AskAboutEachElementUpToTheFirstThatIsMissing)
{
    machine.add_directory(uR"(C:\d)");
    weakly_canonical(uR"(C:\d\no\..\x)");
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(C:\d\no\..\x))", R"(GetFileAttributesExW(C:\d\x))",
                     R"(GetFullPathNameW(C:))", R"(GetFileAttributesExW(C:\))",
                     R"(GetFullPathNameW(C:\))", R"(GetFileAttributesExW(C:\))",
                     R"(GetFullPathNameW(C:\d))", R"(GetFileAttributesExW(C:\d))",
                     R"(GetFullPathNameW(C:\d\no))", R"(GetFileAttributesExW(C:\d\no))",
                     R"(GetFullPathNameW(C:\d))", R"(GetFileAttributesExW(\\?\C:\d))",
                     R"(GetFileAttributesExW(\\?\C:\d))"}));
}

TEST_ON_MACHINE(WeaklyCanonicalLinks, AreFollowedInWhatIsThere)
{
    constexpr text_row<char16_t> cases[] = {
        {uR"(C:\d.link\no)", uR"(D:\real\no)", "a link to a directory"},
        {uR"(C:\d.link\no\..\x)", uR"(D:\real\x)", "with dots behind it"},
        {uR"(C:\d.link\no\..\..\x)", uR"(D:\x)", "that go up from the target"},
        {uR"(C:\way\no)", uR"(D:\real\no)", "a junction"},
        {uR"(C:\volume\no)", uR"(C:\volume\no)", "a volume"},
        {uR"(C:\d.lnk\no)", uR"(D:\real\no)", "a shortcut is there as a file, and then followed"},
        {uR"(C:\f.link\no)", uR"(C:\f\no)", "a link to a file"},
        {uR"(C:\d.link\t)", uR"(D:\real\t)", "all of it is there"},
        {uR"(C:\dead)", uR"(C:\dead)", "a link to nothing isn't there"},
        {uR"(C:\dead\x)", uR"(C:\dead\x)", "nor is what would be below it"},
        {uR"(C:\dead\..\x)", uR"(C:\x)", "and text goes up from it"},
        {uR"(C:\strange)", uR"(C:\strange)", "nobody can look behind it"},
    };
    machine.add_drive(u'D').add_file(uR"(D:\real\t)").add_file(uR"(C:\f)");
    machine.add_symbolic_link(uR"(C:\d.link)", uR"(D:\real)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\f.link)", u"f").add_symbolic_link(uR"(C:\dead)", u"gone");
    machine.add_junction(uR"(C:\way)", uR"(D:\real)").add_mount_point(uR"(C:\volume)", u'D');
    machine.add_shortcut(uR"(C:\d.lnk)", uR"(D:\real)");
    machine.add_reparse_point(uR"(C:\strange)", 0x80000ABC, "x");
    expect_rows(cases, [](auto text) { return weakly_canonical(text); });
    expect_rows(cases, [](auto text) { return weakly_canonical(upath(text)).native(); });
}

TEST_ON_MACHINE(WeaklyCanonicalLinks, TheFinalResolutionMayFail)
{
    machine.add_file(u"C:\\t").add_shortcut(uR"(C:\dead.lnk)", uR"(C:\gone)");
    EXPECT_FAILURE(weakly_canonical(uR"(C:\dead.lnk)"), not_found(u""))
        << "to the system it is a file, but it leads nowhere";
    EXPECT_FAILURE(weakly_canonical(uR"(C:\dead.lnk\x)"), not_found(u""));
    machine.add_symbolic_link(u"C:\\loop", u"loop");
    EXPECT_FAILURE(weakly_canonical(u"C:\\loop"), system_error(1921, u"C:\\loop"))
        << "the system's own limit";
}

// The first question is whether the whole is there.
TEST_ON_MACHINE(WeaklyCanonicalCalls, ARefusedFirstQuestionNamesThePath)
{
    machine.add_file(uR"(C:\d\f)").set_current_directory(u"C:\\d").deny(uR"(C:\d)", right::list);
    machine.deny(uR"(C:\d\f)", right::read_attributes);
    EXPECT_FAILURE(weakly_canonical(uR"(C:\d\f)"), denied(uR"(C:\d\f)"));
    EXPECT_FAILURE(weakly_canonical(u"f"), denied(u"f"));
    sure_fault const fault = machine.fail_call("GetFileAttributesExW", 1, 1117);
    EXPECT_FAILURE(weakly_canonical(u"no"), system_error(1117, u"no"));
}

TEST_ON_MACHINE(WeaklyCanonicalCalls, WhatCantBeLookedAtEndsTheWalk)
{
    machine.add_directory(uR"(C:\d\e)")
        .add_symbolic_link(uR"(C:\l)", uR"(d\e)", flavour::directory);
    for (DWORD const code : {2U, 3U, 5U, 32U, 53U, 64U, 123U, 267U, 1117U, 1920U}) {
        sure_fault const fault = machine.fail_every_call_on_name(uR"(C:\l)", code);
        EXPECT_EQ(weakly_canonical(uR"(C:\l\no)"), uR"(C:\l\no)") << code;
    }
    EXPECT_EQ(weakly_canonical(uR"(C:\l\no)"), uR"(C:\d\e\no)");
}

// What fails in the walk ends it with what was reached: the first call of each row is the
// question about the whole, and each element takes two.
TEST_ON_MACHINE(WeaklyCanonicalCalls, ExceptionsInTheWalkEndIt)
{
    row_of<int, char16_t const *> const cases[] = {
        {2, uR"(C:\l\no)", "the drive: nothing was reached"},
        {4, uR"(C:\l\no)", "the link: its root was reached"},
        {5, uR"(C:\d\no)", "what is missing anyway"},
    };
    machine.add_directory(u"C:\\d").add_symbolic_link(u"C:\\l", u"d", flavour::directory);
    expect_rows(cases, [&](int nth) {
        sure_fault const fault = machine.fail_call("GetFullPathNameW", nth, 1117);
        return weakly_canonical(uR"(C:\l\no)");
    });
}

TEST_ON_MACHINE(WeaklyCanonicalCalls, AWalkThatEndsAtTheDriveTakesItsCurrentDirectory)
{
    machine.add_directory(uR"(C:\work)").set_current_directory(uR"(C:\work)");
    sure_fault const fault = machine.fail_call("GetFullPathNameW", 3, 1117);
    EXPECT_FAILURE(weakly_canonical(uR"(C:\no)"),
                   invalid_argument(R"(Path name can not start with \)"))
        << "to which no root can be joined";
}

// The walk joins name by name, so `C:a` is in the root there.
TEST_ON_MACHINE(WeaklyCanonicalWalk, ADriveWithoutABackslash)
{
    machine.add_directory(uR"(C:\work\a)").set_current_directory(uR"(C:\work)");
    EXPECT_EQ(weakly_canonical(uR"(C:a\b)"), uR"(C:\work\a\b)");
    machine.add_directory(uR"(C:\a)");
    EXPECT_EQ(weakly_canonical(uR"(C:a\b)"), uR"(C:\a\b)");
    machine.add_directory(uR"(C:\work\a\b)");
    EXPECT_EQ(weakly_canonical(uR"(C:a\b)"), uR"(C:\work\a\b)") << "all of it is there";
}

TEST_ON_MACHINE(WeaklyCanonicalWalk, ADriveThatIsntThereIsKept)
{
    EXPECT_EQ(weakly_canonical(uR"(Q:\a\b)"), uR"(Q:\a\b)");
    EXPECT_EQ(weakly_canonical(uR"(Q:\)"), uR"(Q:\)");
    EXPECT_EQ(weakly_canonical(uR"(Q:\a\..\b)"), uR"(Q:\b)");
    EXPECT_EQ(weakly_canonical(u"Q:"), u"Q:");
}

TEST_ON_MACHINE(WeaklyCanonicalWalk, RootedTexts)
{
    machine.add_drive(u'D')
        .add_directory(uR"(D:\d\e)")
        .add_symbolic_link(uR"(D:\l)", uR"(d\e)", flavour::directory);
    machine.set_current_directory(uR"(D:\d)");
    constexpr text_row<char16_t> cases[] = {
        {uR"(\no)", uR"(D:\no)", "the root of the current drive is there"},
        {uR"(\d\no)", uR"(D:\d\no)", "and names in it"},
        {uR"(\l\no)", uR"(D:\d\e\no)", "and links"},
        {uR"(\no\..\x)", uR"(D:\x)", "with dots"},
        {uR"(\..\no)", uR"(D:\no)", "up from the root"},
        {uR"(..\no)", uR"(D:\no)", "up from the current directory"},
        {uR"(..\l\no)", uR"(D:\d\e\no)", "and down again"},
        {uR"(\\.\no)", uR"(D:\no)", "walked, a device's prefix is a root and names"},
    };
    expect_rows(cases, [](auto text) { return weakly_canonical(text); });
}

// A server by itself can't be asked about, so nothing behind it is reached.
TEST_ON_MACHINE(WeaklyCanonicalWalk, EndsAtTheServer)
{
    machine.add_share(u"s", u"h").add_directory(uR"(\\s\h\d)").follow_remote_links();
    machine.add_symbolic_link(uR"(\\s\h\l)", u"d", flavour::directory);
    constexpr text_row<char16_t> cases[] = {
        {uR"(\\s\h\l\no)", uR"(\\s\h\l\no)", "the link stays"},
        {uR"(\\s\h\d\no\..\x)", uR"(\\s\h\d\x)", "made normal as a whole"},
        {uR"(\\s\h\.\no)", uR"(\\s\h\no)", "dots in what is there are in the rest, too"},
        {uR"(\\s\h\l\..\no)", uR"(\\s\h\no)", "and are taken away by text"},
        {uR"(\\t\no\x)", uR"(\\t\no\x)", "a missing server"},
        {uR"(\\?\UNC\s\h\l\no)", uR"(\\s\h\l\no)", "without the prefix"},
        {uR"(\\s\h\l)", uR"(\\s\h\d)", "what is there as a whole isn't walked"},
        {uR"(\\s)", uR"(\\s)", "a server alone"},
    };
    expect_rows(cases, [](auto text) { return weakly_canonical(text); });
    EXPECT_FAILURE(weakly_canonical(uR"(\\s\no)"), system_error(67, uR"(\\s\no)"))
        << "a missing share is no missing name";
    machine.clear_journal();
    weakly_canonical(uR"(\\s\h\l\no)");
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(\\s\h\l\no))", R"(GetFileAttributesExW(\\s\h\l\no))",
                     R"(GetFullPathNameW(\\s))", R"(GetFileAttributesExW(\\s))"}));
}

TEST_ON_MACHINE(WeaklyCanonicalWalk, OnAMappedDriveGoesOn)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_directory(uR"(\\s\h\d)");
    machine.follow_remote_links().add_symbolic_link(uR"(\\s\h\l)", u"d", flavour::directory);
    EXPECT_EQ(weakly_canonical(uR"(X:\l\no)"), uR"(X:\d\no)");
    EXPECT_EQ(weakly_canonical(uR"(X:\no)"), uR"(X:\no)");
}

TEST_ON_MACHINE(WeaklyCanonicalCalls, EveryFailingCallReleasesWhatItHolds)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_directory(uR"(C:\d)").add_shortcut(uR"(C:\d.lnk)", u"C:\\d");
        fresh.add_symbolic_link(u"C:\\l", u"d", flavour::directory);
    };
    std::map<std::u16string, int> answers;
    sweep(build, [&](failing_run const &) {
        failure_of([&] {
            ++answers[weakly_canonical(uR"(C:\l\no\..\x)")];
            ++answers[weakly_canonical(uR"(C:\d.lnk\no)")];
        });
    });
    for (auto const &[answer, count] : answers)
        EXPECT_TRUE(answer == uR"(C:\d\x)" || answer == uR"(C:\d\no)" || answer == uR"(C:\l\x)" ||
                    answer == uR"(C:\x)" || answer == uR"(C:\d.lnk\no)")
            << printable(answer);
    EXPECT_GT(answers[uR"(C:\d\x)"], 1);
    EXPECT_GT(answers[uR"(C:\d\no)"], 1);
}

} // namespace
} // namespace fl::filesystem::tests
