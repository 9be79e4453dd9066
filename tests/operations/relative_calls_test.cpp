// Links, drives and failing calls under `relative`, which only the simulated machine can
// show.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_ON_MACHINE(RelativeCalls, OpenBothAsTheyStand)
{
    machine.add_directory(uR"(C:\d\e)").set_current_directory(u"C:\\d");
    EXPECT_EQ(relative(u"e", uR"(C:\d)"), u"e");
    EXPECT_EQ(calls(machine),
              (lines{"CreateFileW(e)", "GetFinalPathNameByHandleW(e)", "CloseHandle(e)",
                     R"(CreateFileW(C:\d))", R"(GetFinalPathNameByHandleW(C:\d))",
                     R"(CloseHandle(C:\d))"}));
}

TEST_ON_MACHINE(RelativeCalls, APathnameBeyondTheLimitGetsNoPrefix)
{
    std::u16string const name(200, u'n');
    std::u16string const path = uR"(C:\l\)" + name + u'\\' + name;
    machine.add_directory(uR"(C:\d\)" + name + u'\\' + name);
    machine.add_symbolic_link(u"C:\\l", u"d", flavour::directory);
    EXPECT_EQ(relative(path, u"C:\\d"), name + u'\\' + name)
        << "what the system takes is there, the rest is text";
    for (auto const &entry : machine.journal())
        EXPECT_NE(entry.text.substr(0, 4), uR"(\\?\)");
}

// Where a link leads is told with a prefix and at any length, whatever fits at first.
TEST_ON_MACHINE(RelativeCalls, ALinkToWhatLiesBeyondTheLimit)
{
    for (std::size_t const size : {255U, 256U, 257U, 258U, 259U, 260U, 261U, 262U, 400U}) {
        simulated_machine fresh;
        std::u16string const name(size / 2 - 3, u'n');
        std::u16string const below = name + u'\\' + std::u16string(size - 6 - name.size(), u'm');
        fresh.add_directory(uR"(C:\d\)" + below);
        fresh.add_symbolic_link(u"C:\\l", uR"(C:\d\)" + below, flavour::directory);
        EXPECT_EQ(relative(u"C:\\l", u"C:\\d"), below) << size;
        EXPECT_EQ(relative(u"C:\\d", u"C:\\l"), uR"(..\..)") << size;
        expect_nothing_open(fresh, std::to_string(size));
    }
}

TEST_ON_MACHINE(RelativeCalls, LinksAreFollowedInBoth)
{
    constexpr row_of_texts<char16_t> cases[] = {
        {uR"(C:\l)", uR"(C:\d)", u"e", "a link"},
        {uR"(C:\l\no)", uR"(C:\d)", uR"(e\no)", "what is missing behind one"},
        {uR"(C:\d)", uR"(C:\l)", u"..", "a base that is one"},
        {uR"(C:\l)", uR"(C:\d\e)", u".", "one place"},
        {uR"(C:\way)", uR"(D:\)", u"real", "a junction to another drive"},
        {uR"(C:\way)", uR"(C:\)", u"", "which is then on another"},
        {uR"(C:\dead)", uR"(C:\d)", uR"(..\dead)", "a link to nothing is a text"},
        {uR"(C:\s.lnk)", uR"(C:\d)", uR"(..\s.lnk)", "a shortcut is a file to the system"},
        {uR"(\\s\h\a)", uR"(\\s\h\b)", uR"(..\a)", "a share"},
        {uR"(X:\a)", uR"(\\s\h\b)", uR"(..\a)", "a mapped drive is its share"},
        {uR"(C:\d)", uR"(D:\real)", u"", "drives"},
        {uR"(Q:\d)", uR"(Q:\e)", uR"(..\d)", "a drive that isn't there"},
        {uR"(c:\d\e)", uR"(C:\d)", u"e", "letters of what is there"},
        {uR"(q:\d\e)", uR"(Q:\d)", u"", "drives that aren't are texts, case and all"},
    };
    machine.add_drive(u'D').add_directory(uR"(D:\real)").add_directory(uR"(C:\d\e)");
    machine.add_symbolic_link(uR"(C:\l)", uR"(d\e)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\dead)", u"gone").add_junction(uR"(C:\way)", uR"(D:\real)");
    machine.add_shortcut(uR"(C:\s.lnk)", uR"(C:\d\e)");
    machine.add_share(u"s", u"h").add_directory(uR"(\\s\h\a)").map_drive(u'X', u"s", u"h");
    machine.add_directory(uR"(\\s\h\b)");
    expect_rows(cases, [](auto first, auto second) { return relative(first, second); });
    expect_rows(cases, [](auto first, auto second) {
        return relative(upath(first), upath(second)).native();
    });
}

TEST_ON_MACHINE(RelativeCalls, ACodeOfEitherNamesThePath)
{
    machine.add_directory(uR"(C:\d\e)").set_current_directory(u"C:\\d");
    for (char const *function : {"CreateFileW", "GetFinalPathNameByHandleW"})
        for (int const nth : {1, 2})
            for (DWORD const code : {5U, 32U, 145U, 161U, 206U, 1117U, 1920U, 1921U}) {
                sure_fault const fault = machine.fail_call(function, nth, code);
                EXPECT_FAILURE(relative(u"e", uR"(C:\d)"), translated(code, u"e"))
                    << function << ' ' << nth << ' ' << code;
                EXPECT_EQ(failure_of([] { relative(upath(u"e"), upath(uR"(C:\d)")); }),
                          std::nullopt)
                    << "once it is over";
            }
}

TEST_ON_MACHINE(RelativeCalls, TheBaseIsntOpenedOnceThePathFailed)
{
    machine.add_directory(u"C:\\d").add_directory(u"C:\\e");
    sure_fault const fault = machine.fail_call("CreateFileW", 1, 5);
    EXPECT_FAILURE(relative(u"C:\\d", u"C:\\e"), denied(u"C:\\d"));
    EXPECT_EQ(calls(machine), lines{R"(CreateFileW(C:\d))"});
}

TEST_ON_MACHINE(RelativeCalls, CodesOfWhatIsMissingAreNone)
{
    machine.add_directory(uR"(C:\d\e)");
    for (DWORD const code : {2U, 3U, 53U, 64U, 123U, 267U}) {
        sure_fault const fault = machine.fail_every_call_on_name(uR"(C:\d\e)", code);
        EXPECT_EQ(relative(uR"(C:\d\e)", uR"(C:\d)"), u"e") << code;
        EXPECT_EQ(relative(uR"(C:\d)", uR"(C:\d\e)"), u"..") << code;
    }
}

TEST_ON_MACHINE(RelativeCalls, WhatTheCallerMayNotLookAt)
{
    machine.add_directory(uR"(C:\d\e)").add_directory(uR"(C:\x)").deny(uR"(C:\d)", right::list);
    machine.deny(uR"(C:\d\e)", right::read_attributes);
    EXPECT_FAILURE(relative(uR"(C:\d\e)", uR"(C:\x)"), denied(uR"(C:\d\e)"));
    EXPECT_FAILURE(relative(uR"(C:\x)", uR"(C:\d\e)"), denied(uR"(C:\x)"))
        << "the path, although the base is to blame";
    EXPECT_FAILURE(relative(uR"(C:\d\e\no)", uR"(C:\x)"), denied(uR"(C:\d\e\no)"))
        << "the walk to what is missing meets it";
}

TEST_ON_MACHINE(RelativeCalls, LoopsNameThePath)
{
    machine.add_symbolic_link(u"C:\\loop", u"loop").add_directory(u"C:\\d");
    EXPECT_FAILURE(relative(u"C:\\loop", u"C:\\d"), system_error(1921, u"C:\\loop"));
    EXPECT_FAILURE(relative(u"C:\\d", u"C:\\loop"), system_error(1921, u"C:\\d"));
}

TEST_ON_MACHINE(RelativeCalls, OnAVolumeThatNoLetterStandsFor)
{
    constexpr row_of_texts<char16_t> cases[] = {
        {uR"(C:\m\a\f)", uR"(C:\m\b)", uR"(..\a\f)", "two names on it"},
        {uR"(C:\m\a)", uR"(C:\m)", u"a", "below its root"},
        {uR"(C:\m)", uR"(C:\m)", u".", "its root"},
        {uR"(C:\m\a\no)", uR"(C:\m\a)", u"no", "what is missing on it"},
        {uR"(C:\m\a)", uR"(C:\)", u"", "it isn't the one around it"},
        {uR"(C:\)", uR"(C:\m\a)", u"", "the other way round"},
    };
    machine.add_drive(u'D').add_file(uR"(D:\a\f)").add_directory(uR"(D:\b)");
    machine.add_mount_point(uR"(C:\m)", u'D').take_letter(u'D');
    expect_rows(cases, [](auto first, auto second) { return relative(first, second); });
}

TEST_ON_MACHINE(RelativeCalls, EveryFailingCallReleasesWhatItHolds)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_directory(uR"(C:\d\e)").add_symbolic_link(u"C:\\l", u"d", flavour::directory);
    };
    sweep(build, [](failing_run const &run) {
        auto const told = failure_of([] { relative(uR"(C:\l\no)", uR"(C:\l\e)"); });
        bool const is_reported = run.is_broken() && run.call().function != "CloseHandle";
        EXPECT_EQ(told,
                  is_reported ? std::optional(system_error(1117, uR"(C:\l\no)")) : std::nullopt);
    });
}

} // namespace
} // namespace fl::filesystem::tests
