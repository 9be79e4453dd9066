// Which calls making directories takes, with which texts, and what becomes of those that
// fail: only the simulated machine can show that.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

using test_support::failure;

TEST_ON_MACHINE(CreateDirectoryCalls, OneExpansionAndOneCreation)
{
    create_directory(uR"(C:\a)");
    EXPECT_EQ(calls(machine), (lines{R"(GetFullPathNameW(C:\a))", R"(CreateDirectoryW(C:\a))"}));
}

TEST_ON_MACHINE(CreateDirectoryCalls, LooksAtWhatIsThereOnlyIfSomethingIs)
{
    machine.add_file(u"C:\\f");
    EXPECT_FAILURE(create_directory(uR"(C:\f)"), file_exists(uR"(C:\f)"));
    EXPECT_EQ(calls(machine), (lines{R"(GetFullPathNameW(C:\f))", R"(CreateDirectoryW(C:\f))",
                                     R"(GetFileAttributesW(C:\f))"}));
}

TEST_ON_MACHINE(CreateDirectoriesCalls, OneCreationALevelAndNoQueryAhead)
{
    machine.add_directory(u"C:\\a");
    create_directories(uR"(C:\a\b\c)");
    EXPECT_EQ(calls(machine), (lines{R"(GetFullPathNameW(C:\a\b\c))", R"(CreateDirectoryW(C:\a))",
                                     R"(GetFileAttributesW(C:\a))", R"(CreateDirectoryW(C:\a\b))",
                                     R"(CreateDirectoryW(C:\a\b\c))"}));
}

TEST_ON_MACHINE(CreateDirectoriesCalls, BeginBehindTheDriveOfALongPathname)
{
    std::u16string const name(250, u'n');
    create_directories(uR"(C:\a\)" + name);
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(C:\a\)" + std::string(250, 'n') + ")",
                     R"(CreateDirectoryW(\\?\C:\a))",
                     R"(CreateDirectoryW(\\?\C:\a\)" + std::string(250, 'n') + ")"}));
}

TEST_ON_MACHINE(CreateDirectoriesCalls, BeginAtTheShareOfAServer)
{
    machine.add_share(u"server", u"share");
    create_directories(uR"(\\server\share\a)");
    EXPECT_EQ(texts_of(machine, "CreateDirectoryW"),
              (lines{R"(\\server\share)", R"(\\server\share\a)"}));
}

// The root is then as long as a long prefix, and none.
TEST_ON_MACHINE(CreateDirectoriesCalls, BeginAtTheShareOfAServerOfOneLetter)
{
    machine.add_share(u"s", u"t");
    create_directories(uR"(\\s\t\a)");
    EXPECT_EQ(texts_of(machine, "CreateDirectoryW"), (lines{R"(\\s\t)", R"(\\s\t\a)"}));
}

TEST_ON_MACHINE(CreateDirectoriesCalls, NoneOfTheEmptyPath)
{
    EXPECT_FAILURE(create_directories(u""), empty_path());
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(CreateDirectoryCalls, AnEmptyPathOutranksEveryCode)
{
    sure_fault const fault = machine.fail_every_call_on("CreateDirectoryW", 5);
    EXPECT_FAILURE(create_directory(u""), empty_path());
}

TEST_ON_MACHINE(CreateDirectoryCalls, AnyCodeNamesTheCallersPath)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    for (DWORD const code : {2U, 3U, 5U, 32U, 53U, 112U}) {
        sure_fault const fault = machine.fail_every_call_on("CreateDirectoryW", code);
        EXPECT_FAILURE(create_directory(u"a"), translated(code, u"a")) << code;
        EXPECT_FAILURE(create_directories(u"a"), translated(code, u"a")) << code;
    }
}

// What creating three levels reports, by the code with which each of them fails.
TEST_ON_MACHINE(CreateDirectoriesCalls, TheLastTellingCodeWins)
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
        sure_fault const first = machine.fail_call("CreateDirectoryW", 1, row.first);
        sure_fault const second = machine.fail_call("CreateDirectoryW", 2, row.second);
        sure_fault const third = machine.fail_call("CreateDirectoryW", 3, row.third);
        EXPECT_FAILURE(create_directories(uR"(C:\a\b\c)"), row.expected) << row.why;
    }
}

TEST_ON_MACHINE(CreateDirectoriesCalls, ALastLevelThatWasCreatedForgetsWhatFailedAbove)
{
    machine.add_directory(uR"(C:\a\b)");
    sure_fault const first = machine.fail_call("CreateDirectoryW", 1, 5);
    create_directories(uR"(C:\a\b\c)");
    EXPECT_TRUE(machine.is_directory(uR"(C:\a\b\c)"));
}

TEST_ON_MACHINE(CreateDirectoriesCalls, ALastLevelThatExistsForgetsWhatFailedAbove)
{
    machine.add_directory(uR"(C:\a\b)");
    sure_fault const first = machine.fail_call("CreateDirectoryW", 1, 5);
    EXPECT_FAILURE(create_directories(uR"(C:\a\b)"), file_exists(uR"(C:\a\b)"))
        << "there is no error, and nothing was created";
}

TEST_ON_MACHINE(CreateDirectoriesCalls, ReachTheLongestPathnameOfTheSystem)
{
    // far beyond what the host of a real disk may take
    std::u16string const wanted = chain_of_size(u"C:", 32700);
    create_directories(wanted);
    EXPECT_TRUE(machine.is_directory(wanted));
    EXPECT_FAILURE(create_directories(wanted), file_exists(wanted));
}

TEST_ON_MACHINE(CreateDirectoriesCalls, LevelsThatWereCreatedStay)
{
    auto const third = machine.fail_call("CreateDirectoryW", 3, 5);
    EXPECT_FAILURE(create_directories(uR"(C:\a\b\c)"), denied(uR"(C:\a\b\c)"));
    EXPECT_TRUE(machine.is_directory(uR"(C:\a\b)"));
    EXPECT_FALSE(machine.exists(uR"(C:\a\b\c)"));
}

TEST_ON_MACHINE(CreateDirectoryCalls, EachCallThatFailsIsReportedUnlessALaterLevelSucceeds)
{
    // the calls: expansion, `a` (which is there), its attributes, `b`, `c`
    maybe_failure const reported = system_error(1117, uR"(C:\a\b\c)");
    auto const build = [](simulated_machine &fresh) { fresh.add_directory(u"C:\\a"); };
    EXPECT_EQ(failures_of_each_call(build, [] { create_directories(uR"(C:\a\b\c)"); }),
              (failures{reported, {}, {}, reported, reported}))
        << "without `b` there is no `c`: the code of `b` is noted, as it tells more";
}

TEST_ON_MACHINE(CreateDirectoryCalls, WhatCantBeLookedAtIsNoDirectory)
{
    machine.add_directory(u"C:\\a");
    sure_fault const fault = machine.fail_every_call_on("GetFileAttributesW", 5);
    EXPECT_FAILURE(create_directory(u"C:\\a"), file_exists(u"C:\\a"));
    EXPECT_FAILURE(create_directories(uR"(C:\a\no|\c)"), file_exists(uR"(C:\a\no|\c)"))
        << "183 is noted for it, and levels that can't be named don't hide that";
}

TEST_ON_MACHINE(CreateDirectoriesCalls, OnAShareBeyondTheLimitBeginBehindThePrefix)
{
    machine.add_share(u"server", u"share");
    std::u16string const name(250, u'n');
    create_directories(uR"(\\server\share\)" + name);
    EXPECT_TRUE(machine.is_directory(uR"(\\server\share\)" + name));
    EXPECT_EQ(texts_of(machine, "CreateDirectoryW"),
              (lines{R"(\\?\UNC)", R"(\\?\UNC\server)", R"(\\?\UNC\server\share)",
                     R"(\\?\UNC\server\share\)" + std::string(250, 'n')}));
}

} // namespace
} // namespace fl::filesystem::tests
