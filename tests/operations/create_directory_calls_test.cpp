// Which calls the operations make, with which texts, and what they make of calls
// that fail: only the simulated machine can show that.

#include <fl/filesystem.hpp>

#include "support/calls.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
using test_support::exists;
using test_support::failure;

TEST(CreateDirectoryCalls, OneExpansionAndOneCreation)
{
    simulated_machine machine;
    create_directory(uR"(C:\a)");
    EXPECT_EQ(calls(machine), (lines{R"(GetFullPathNameW(C:\a))", R"(CreateDirectoryW(C:\a))"}));
}

TEST(CreateDirectoryCalls, LooksAtWhatIsThereOnlyIfSomethingIs)
{
    simulated_machine machine;
    machine.add_file(u"C:\\f");
    EXPECT_EQ(failure_of([] { create_directory(uR"(C:\f)"); }), exists(uR"(C:\f)"));
    EXPECT_EQ(calls(machine), (lines{R"(GetFullPathNameW(C:\f))", R"(CreateDirectoryW(C:\f))",
                                     R"(GetFileAttributesW(C:\f))"}));
}

TEST(CreateDirectoriesCalls, OneCreationALevelAndNoQueryAhead)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\a");
    create_directories(uR"(C:\a\b\c)");
    EXPECT_EQ(calls(machine), (lines{R"(GetFullPathNameW(C:\a\b\c))", R"(CreateDirectoryW(C:\a))",
                                     R"(GetFileAttributesW(C:\a))", R"(CreateDirectoryW(C:\a\b))",
                                     R"(CreateDirectoryW(C:\a\b\c))"}));
}

TEST(CreateDirectoriesCalls, BeginBehindTheDriveOfALongPathname)
{
    simulated_machine machine;
    std::u16string const name(250, u'n');
    create_directories(uR"(C:\a\)" + name);
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(C:\a\)" + std::string(250, 'n') + ")",
                     R"(CreateDirectoryW(\\?\C:\a))",
                     R"(CreateDirectoryW(\\?\C:\a\)" + std::string(250, 'n') + ")"}));
}

TEST(CreateDirectoriesCalls, BeginAtTheShareOfAServer)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share");
    create_directories(uR"(\\server\share\a)");
    std::vector<std::string> creations;
    for (auto const &line : calls(machine))
        if (line.rfind("CreateDirectoryW", 0) == 0)
            creations.push_back(line);
    EXPECT_EQ(creations, (lines{R"(CreateDirectoryW(\\server\share))",
                                R"(CreateDirectoryW(\\server\share\a))"}));
}

TEST(CreateDirectoriesCalls, NoneOfTheEmptyPath)
{
    simulated_machine machine;
    EXPECT_EQ(failure_of([] { create_directories(u""); }),
              invalid_argument("Empty Path not permitted"));
    EXPECT_EQ(calls(machine), lines{});
}

TEST(CreateDirectoryCalls, AnEmptyPathOutranksEveryCode)
{
    simulated_machine machine;
    auto const fault = machine.fail_every_call_on("CreateDirectoryW", 5);
    EXPECT_EQ(failure_of([] { create_directory(u""); }),
              invalid_argument("Empty Path not permitted"));
    EXPECT_TRUE(fault.fired());
}

TEST(CreateDirectoryCalls, AnyCodeNamesTheCallersPath)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    struct
    {
        DWORD code;
        failure expected;
    } const cases[] = {
        {2, not_found(u"a")},         {3, not_found(u"a")},         {5, denied(u"a")},
        {32, system_error(32, u"a")}, {53, system_error(53, u"a")}, {112, system_error(112, u"a")},
    };
    for (auto const &row : cases) {
        auto const fault = machine.fail_every_call_on("CreateDirectoryW", row.code);
        EXPECT_EQ(failure_of([] { create_directory(u"a"); }), row.expected) << row.code;
        EXPECT_TRUE(fault.fired());
        EXPECT_EQ(failure_of([] { create_directories(u"a"); }), row.expected) << row.code;
    }
}

// What creating three levels reports, by the code with which each of them fails.
TEST(CreateDirectoriesCalls, TheLastTellingCodeWins)
{
    struct
    {
        DWORD first, second, third;
        failure expected;
        char const *why;
    } const cases[] = {
        {5, 3, 3, denied(u"C:\\a\\b\\c"), "levels missing below don't hide it"},
        {5, 2, 53, denied(u"C:\\a\\b\\c"), "of whichever kind of missing"},
        {5, 64, 123, denied(u"C:\\a\\b\\c"), "of whichever kind of missing"},
        {5, 3, 267, denied(u"C:\\a\\b\\c"), "of whichever kind of missing"},
        {5, 32, 3, system_error(32, u"C:\\a\\b\\c"), "a later one replaces an earlier one"},
        {3, 5, 32, system_error(32, u"C:\\a\\b\\c"), "that of the last level, too"},
        {3, 2, 3, not_found(u"C:\\a\\b\\c"), "nothing but missing levels"},
        {67, 3, 3, system_error(67, u"C:\\a\\b\\c"), "a missing share is no missing level"},
    };
    for (auto const &row : cases) {
        simulated_machine machine;
        auto const first = machine.fail_call("CreateDirectoryW", 1, row.first);
        auto const second = machine.fail_call("CreateDirectoryW", 2, row.second);
        auto const third = machine.fail_call("CreateDirectoryW", 3, row.third);
        EXPECT_EQ(failure_of([] { create_directories(uR"(C:\a\b\c)"); }), row.expected) << row.why;
        EXPECT_TRUE(first.fired() && second.fired() && third.fired());
    }
}

TEST(CreateDirectoriesCalls, ALastLevelThatWasCreatedForgetsWhatFailedAbove)
{
    simulated_machine machine;
    machine.add_directory(uR"(C:\a\b)");
    auto const first = machine.fail_call("CreateDirectoryW", 1, 5);
    create_directories(uR"(C:\a\b\c)");
    EXPECT_TRUE(first.fired());
    EXPECT_TRUE(machine.is_directory(uR"(C:\a\b\c)"));
}

TEST(CreateDirectoriesCalls, ALastLevelThatExistsForgetsWhatFailedAbove)
{
    simulated_machine machine;
    machine.add_directory(uR"(C:\a\b)");
    auto const first = machine.fail_call("CreateDirectoryW", 1, 5);
    EXPECT_EQ(failure_of([] { create_directories(uR"(C:\a\b)"); }), exists(uR"(C:\a\b)"))
        << "there is no error, and nothing was created";
    EXPECT_TRUE(first.fired());
}

TEST(CreateDirectoriesCalls, ReachTheLongestPathnameOfTheSystem)
{
    // far beyond what the host of a real disk may take
    std::u16string wanted = u"C:";
    while (wanted.size() < 32700)
        wanted += u'\\' + std::u16string(99, u'd');
    simulated_machine machine;
    create_directories(wanted);
    EXPECT_TRUE(machine.is_directory(wanted));
    EXPECT_EQ(failure_of([&] { create_directories(wanted); }), exists(wanted));
}

TEST(CreateDirectoriesCalls, LevelsThatWereCreatedStay)
{
    simulated_machine machine;
    auto const third = machine.fail_call("CreateDirectoryW", 3, 5);
    EXPECT_EQ(failure_of([] { create_directories(uR"(C:\a\b\c)"); }), denied(uR"(C:\a\b\c)"));
    EXPECT_TRUE(machine.is_directory(uR"(C:\a\b)"));
    EXPECT_FALSE(machine.exists(uR"(C:\a\b\c)"));
}

TEST(CreateDirectoryCalls, EachCallThatFailsIsReportedUnlessALaterLevelSucceeds)
{
    // the calls: expansion, `a` (which is there), its attributes, `b`, `c`
    std::optional<failure> const reported = system_error(1117, uR"(C:\a\b\c)");
    std::optional<failure> const expected[] = {reported, std::nullopt, std::nullopt, reported,
                                               reported};
    int nth = 1;
    for (auto const &outcome : expected) {
        simulated_machine machine;
        machine.add_directory(u"C:\\a");
        auto const fault = machine.fail_call(nth, 1117);
        auto const thrown = failure_of([] { create_directories(uR"(C:\a\b\c)"); });
        EXPECT_TRUE(fault.fired()) << "failing call " << nth;
        // without `b` there is no `c`: the code of `b` is noted, as it tells more
        EXPECT_EQ(thrown, outcome) << "failing call " << nth;
        ++nth;
    }
    simulated_machine machine;
    machine.add_directory(u"C:\\a");
    auto const fault = machine.fail_call(nth, 1117);
    create_directories(uR"(C:\a\b\c)");
    EXPECT_FALSE(fault.fired()) << "there is no further call";
}

TEST(CreateDirectoryCalls, WhatCantBeLookedAtIsNoDirectory)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\a");
    auto const fault = machine.fail_every_call_on("GetFileAttributesW", 5);
    EXPECT_EQ(failure_of([] { create_directory(u"C:\\a"); }), exists(u"C:\\a"));
    EXPECT_EQ(failure_of([] { create_directories(uR"(C:\a\no|\c)"); }), exists(uR"(C:\a\no|\c)"))
        << "183 is noted for it, and levels that can't be named don't hide that";
    EXPECT_TRUE(fault.fired());
}

TEST(CreateDirectoriesCalls, OnAShareBeyondTheLimitBeginBehindThePrefix)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share");
    std::u16string const name(250, u'n');
    create_directories(uR"(\\server\share\)" + name);
    EXPECT_TRUE(machine.is_directory(uR"(\\server\share\)" + name));
    std::vector<std::string> creations;
    for (auto const &line : calls(machine))
        if (line.rfind("CreateDirectoryW", 0) == 0)
            creations.push_back(line);
    EXPECT_EQ(creations,
              (lines{R"(CreateDirectoryW(\\?\UNC))", R"(CreateDirectoryW(\\?\UNC\server))",
                     R"(CreateDirectoryW(\\?\UNC\server\share))",
                     R"(CreateDirectoryW(\\?\UNC\server\share\)" + std::string(250, 'n') + ")"}));
}

TEST(AbsoluteCalls, OneCallForAShortResultAndMoreForALongOne)
{
    for (std::size_t const size : {4U, 258U, 259U, 260U, 261U}) {
        simulated_machine machine;
        std::u16string const text = uR"(C:\)" + std::u16string(size - 3, u'a');
        EXPECT_EQ(absolute(text), text);
        EXPECT_EQ(machine.calls_of("GetFullPathNameW"), size < 260 ? 1 : 2) << size;
    }
}

TEST(AbsoluteCalls, RepeatUntilTheResultFits)
{
    simulated_machine machine;
    std::vector<DWORD> rooms;
    auto const hook = machine.on_full_path_name([&](DWORD room, wchar_t *) -> std::optional<DWORD> {
        rooms.push_back(room);
        if (rooms.size() < 4)
            return room + 10; // another thread changes the directory to a longer one
        return std::nullopt;
    });
    EXPECT_EQ(absolute(u"x"), uR"(C:\x)");
    EXPECT_EQ(rooms, (std::vector<DWORD>{260, 270, 280, 290}));
}

TEST(AbsoluteCalls, AFailureNamesThePathAndNotTheJoinedText)
{
    simulated_machine machine;
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_EQ(failure_of([] { absolute(u"x", uR"(C:\base)"); }), denied(u"x"));
    EXPECT_EQ(failure_of([] { absolute(u"", uR"(C:\base)"); }), denied(u""));
    EXPECT_EQ(failure_of([] { create_directory(u"x"); }), denied(u"x"));
}

TEST(AbsoluteCalls, ExamplesOfTheHeader)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    EXPECT_EQ(absolute(u"foo"), uR"(C:\work\foo)");
    EXPECT_EQ(absolute(uR"(\foo)", uR"(C:\dir)"), uR"(C:\foo)");
}

TEST(AbsoluteCalls, NoneForNothing)
{
    simulated_machine machine;
    EXPECT_EQ(absolute(u""), u"");
    EXPECT_EQ(absolute(upath(), upath()).native(), u"");
    EXPECT_EQ(calls(machine), lines{});
}

TEST(AbsoluteCalls, ATextOfBlanksIsANameThatTheSystemRefuses)
{
    simulated_machine machine;
    EXPECT_EQ(
        failure_of([] { absolute(u"   "); }),
        invalid_argument("The filename, directory name, or volume label syntax is incorrect."));
}

TEST(MakeExpandedPathCalls, NoneForWhatDependsOnNothing)
{
    simulated_machine machine;
    for (char16_t const *text : {u"", u"foo", uR"(C:\foo)", uR"(\\server\share)", uR"(\\?\C:foo)"})
        detail::make_expanded_path(text, true);
    EXPECT_EQ(calls(machine), lines{});
}

TEST(MakeExpandedPathCalls, OneForTheDriveOrTheWholeRootedText)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    EXPECT_EQ(detail::make_expanded_path(u"C:", true), uR"(C:\work)");
    EXPECT_EQ(detail::make_expanded_path(u"C:foo", true), uR"(C:\work\foo)");
    EXPECT_EQ(detail::make_expanded_path(uR"(\foo)", true), uR"(C:\foo)");
    EXPECT_EQ(calls(machine),
              (lines{"GetFullPathNameW(C:)", "GetFullPathNameW(C:)", R"(GetFullPathNameW(\foo))"}));
}

TEST(MakeExpandedPathCalls, OneForUpTo1023UnitsAndTwoForMore)
{
    for (std::size_t const size : {1022U, 1023U, 1024U, 1025U}) {
        simulated_machine machine;
        std::u16string const text = u'\\' + std::u16string(size - 3, u'a'); // C: comes ahead
        EXPECT_EQ(detail::make_expanded_path(text, true), u"C:" + text);
        EXPECT_EQ(machine.calls_of("GetFullPathNameW"), size < 1024 ? 1 : 2) << size;
    }
}

TEST(MakeExpandedPathCalls, AnAnswerAsLongAsTheBufferIsATextOfThatLength)
{
    simulated_machine machine;
    auto const hook = machine.on_full_path_name([](DWORD room, wchar_t *buffer) {
        for (DWORD at = 0; at < room; ++at)
            buffer[at] = L'x';
        return std::optional<DWORD>(room);
    });
    EXPECT_EQ(detail::make_expanded_path(u"C:", true), std::u16string(1024, u'x'));
    EXPECT_EQ(machine.calls_of("GetFullPathNameW"), 1);
}

TEST(MakeExpandedPathCalls, FailuresNameWhatTheCallWasGiven)
{
    simulated_machine machine;
    {
        auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
        EXPECT_EQ(failure_of([] { detail::make_expanded_path(u"C:foo", true); }), denied(u"C:"));
        EXPECT_EQ(failure_of([] { detail::make_expanded_path(uR"(\foo)", true); }),
                  denied(uR"(\foo)"));
    }
    auto const growing = machine.on_full_path_name(
        [](DWORD room, wchar_t *) { return std::optional<DWORD>(room + 1); });
    EXPECT_EQ(failure_of([] { detail::make_expanded_path(u"C:", true); }),
              system_error(simulation::stale_last_error, u"C:"))
        << "asked for more room twice: whatever code that leaves";
}

TEST(MakeExpandedPathCalls, TakeTheCurrentDirectoryOfAnotherDrive)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_directory(u"D:\\data");
    EXPECT_EQ(detail::make_expanded_path(u"D:foo", true), uR"(D:\foo)") << "its root by default";
    ::SetEnvironmentVariableW(L"=D:", L"D:\\data");
    EXPECT_EQ(detail::make_expanded_path(u"D:", true), uR"(D:\data)");
    EXPECT_EQ(detail::make_expanded_path(u"D:foo", true), uR"(D:\data\foo)");
    EXPECT_EQ(absolute(u"D:foo"), uR"(D:\data\foo)");
    EXPECT_EQ(absolute(uR"(\foo)"), uR"(C:\foo)") << "rooted is on the current drive";
}

} // namespace
} // namespace fl::filesystem
