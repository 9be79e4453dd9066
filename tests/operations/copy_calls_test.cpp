// Which calls copying makes, what it does when they fail, and what it takes over.

#include <fl/filesystem/copy_progress.hpp>
#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

// In calls with literals and options the namespace is told: those of the standard library
// would fit as well, found by its type of the options.

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

/// The names in a `\`-separated chain of `depth` directories below `head`.
std::u16string chain(std::u16string text, int depth)
{
    for (int level = 0; level < depth; ++level)
        text += u"\\d";
    return text;
}

TEST_ON_MACHINE(CopyCalls, OfAFile)
{
    machine.add_file(uR"(C:\a)");
    copy(u"a", u"b");
    EXPECT_EQ(calls(machine),
              (lines{"GetFullPathNameW(b)", "GetFullPathNameW(a)", R"(GetFileAttributesExW(C:\a))",
                     R"(GetFileAttributesExW(C:\b))", R"(CopyFileW(C:\a))"}))
        << "`to` is formed first";
}

TEST_ON_MACHINE(CopyFileCalls, OneExpansionEachAndTheCopy)
{
    machine.add_file(uR"(C:\a)");
    copy_file(u"a", u"b");
    EXPECT_EQ(calls(machine),
              (lines{"GetFullPathNameW(b)", "GetFullPathNameW(a)", R"(CopyFileW(C:\a))"}));
    EXPECT_EQ(machine.journal().back().second_text, uR"(C:\b)");
    EXPECT_EQ(machine.journal().back().flags, 1U) << "fails if there is something";
}

TEST_ON_MACHINE(CopyCalls, NoneForOptionsThatExcludeEachOther)
{
    constexpr auto options = copy_options::skip_existing | copy_options::update_existing;
    EXPECT_TRUE(failure_of([] { fl::filesystem::copy(u"a", u"b", options); }));
    EXPECT_TRUE(failure_of([] { fl::filesystem::copy_file(u"a", u"b", options); }));
    EXPECT_TRUE(failure_of([] { copy_directory(u"a", u""); }));
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(CopyCalls, OfWhatIsMissingDontLookAtTheTarget)
{
    machine.add_file(uR"(C:\b)");
    EXPECT_FAILURE(copy(u"no", u"b"), not_found(u"no"));
    lines const made = calls(machine);
    EXPECT_FALSE(made.empty());
    for (std::string const &call : made)
        EXPECT_EQ(call.find(R"(C:\b)"), std::string::npos) << call;
}

TEST_ON_MACHINE(CopyCalls, ATargetThatCantBeLookedAtEndsIt)
{
    machine.add_file(uR"(C:\a)", "from").add_file(uR"(C:\b)", "to");
    sure_fault const fault = machine.fail_every_call_on_name(uR"(C:\b)", ERROR_IO_DEVICE);
    EXPECT_FAILURE(copy(u"a", u"b", copy_options::overwrite_existing),
                   system_error(ERROR_IO_DEVICE, u"b"))
        << "what alone can't be looked at is to blame";
    EXPECT_EQ(machine.content(uR"(C:\b)"), "to");
    EXPECT_EQ(machine.calls_of("CopyFileW"), 0);
}

// The pathname of a root ends in the separator that the names below go behind, and a drive alone
// stands for its current directory.
TEST_ON_MACHINE(CopyCalls, NamesBelowARootAreToldAsTheyAreWritten)
{
    row_of<char16_t const *, names> const cases[] = {
        {u"D:\\", {uR"(D:\ > C:\to)", uR"(D:\f > C:\to\f)"}, "a root"},
        {u"D:", {uR"(D: > C:\to)", uR"(D:f > C:\to\f)"}, "a drive that is in its root"},
        {uR"(D:\.)", {uR"(D:\. > C:\to)", uR"(D:\.\f > C:\to\f)"}, "as it was written"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_drive(u'D').add_file(uR"(D:\f)", "text");
        names told;
        auto const note = [&](copy_progress const &progress) {
            told.push_back(progress.from + u" > " + progress.to);
            return true;
        };
        EXPECT_TRUE(fl::filesystem::copy(row.given, uR"(C:\to)", copy_options::recursive, note));
        EXPECT_EQ(told, row.expected) << row.why;
        EXPECT_EQ(fresh.content(uR"(C:\to\f)"), "text") << row.why;
    }
}

TEST_ON_MACHINE(CopyDirectoryCalls, LookAndCreate)
{
    machine.add_directory(uR"(C:\a)").set_attributes(uR"(C:\a)", FILE_ATTRIBUTE_READONLY);
    machine.set_times(uR"(C:\a)", {1, 2, 3});
    copy_directory(u"a", u"b");
    EXPECT_EQ(calls(machine), (lines{"GetFullPathNameW(a)", R"(GetFileAttributesExW(C:\a))",
                                     "GetFullPathNameW(b)", R"(CreateDirectoryW(C:\b))"}));
    EXPECT_EQ(machine.attributes(uR"(C:\b)"), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_NE(machine.times_of(uR"(C:\b)").write, 3U);
}

TEST_ON_MACHINE(CopyDirectoryCalls, WhatCantBeLookedAtIsAboutItAlone)
{
    machine.add_directory(uR"(C:\a)");
    for (DWORD const code : {59U, 1117U}) {
        sure_fault const fault = machine.fail_call("GetFileAttributesExW", 1, code);
        EXPECT_FAILURE(copy_directory(u"a", u"b"), system_error(code, u"a"));
    }
    EXPECT_FALSE(machine.exists(uR"(C:\b)"));
}

TEST_ON_MACHINE(CopyDirectoryCalls, FollowALink)
{
    machine.add_directory(uR"(C:\a)").add_symbolic_link(uR"(C:\l)", u"a", flavour::directory);
    machine.add_symbolic_link(uR"(C:\broken)", u"no", flavour::directory);
    copy_directory(u"l", u"b");
    EXPECT_EQ(machine.reparse_tag(uR"(C:\b)"), 0U);
    EXPECT_FAILURE(copy_directory(u"broken", u"c"), not_found(u"broken"));
    auto const fault = machine.fail_every_call_on("CreateDirectoryW", 112);
    EXPECT_FAILURE(copy_directory(u"l", u"c"), system_error(112, u"l", u"c"));
}

TEST_ON_MACHINE(CopyFileCalls, ContentAttributesAndTimeOfWriting)
{
    machine.add_file(uR"(C:\a)", "content");
    machine.set_attributes(uR"(C:\a)", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    machine.set_times(uR"(C:\a)", {1, 2, 3});
    copy_file(u"a", u"b");
    EXPECT_EQ(machine.content(uR"(C:\b)"), "content");
    EXPECT_EQ(machine.attributes(uR"(C:\b)"),
              DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(machine.times_of(uR"(C:\b)").write, 3U);
}

TEST_ON_MACHINE(CopyFileCalls, OfMoreThanFourGibibytes)
{
    constexpr std::uint64_t size = (std::uint64_t{1} << 32) + 5;
    machine.add_sparse_file(uR"(C:\a)", size, "end");
    copy_file(u"a", u"b");
    EXPECT_EQ(machine.size_of(uR"(C:\b)"), size);
    EXPECT_EQ(machine.content(uR"(C:\b)", size - 3, 3), "end");
}

TEST_ON_MACHINE(CopyFileCalls, UpdatesWhatIsOlderOnly)
{
    row_of_two<std::uint64_t, std::uint64_t, char const *> const cases[] = {
        {200, 199, "from", "older"},
        {200, 200, "to", "of the same age"},
        {200, 201, "to", "newer"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\a)", "from").add_file(uR"(C:\b)", "to");
        fresh.set_times(uR"(C:\a)", {900, 900, row.first});
        fresh.set_times(uR"(C:\b)", {100, 100, row.second});
        fl::filesystem::copy_file(u"a", u"b", copy_options::update_existing);
        EXPECT_EQ(fresh.content(uR"(C:\b)"), row.expected) << row.why;
    }
}

TEST_ON_MACHINE(CopyFileCalls, ATargetThatIsntThereIsOlderThanAnything)
{
    machine.add_file(uR"(C:\a)", "from");
    fl::filesystem::copy_file(u"a", u"b", copy_options::update_existing);
    EXPECT_EQ(machine.content(uR"(C:\b)"), "from");
}

TEST_ON_MACHINE(CopyFileCalls, AnyFailureOnTheWayLeavesTheTargetAsItWas)
{
    constexpr auto newer = copy_options::update_existing;
    for (std::uint64_t const written : {100U, 900U}) { // older, then newer
        auto const build = [&](simulated_machine &fresh) {
            fresh.add_file(uR"(C:\a)", "from").add_file(uR"(C:\b)", "to");
            fresh.set_times(uR"(C:\a)", {500, 500, 500});
            fresh.set_times(uR"(C:\b)", {written, written, written});
        };
        for (DWORD const code : {0U, 2U, 5U, 1117U}) {
            int reported = 0;
            auto const copying = [&](failing_run const &run) {
                auto const told = failure_of([] { fl::filesystem::copy_file(u"a", u"b", newer); });
                // two expansions and the copying that is refused come ahead
                if (run.nth < 4 || !run.is_broken())
                    return;
                // a handle that doesn't close keeps nobody, and FAT has no long identifiers
                auto const broken = run.call();
                bool const matters = broken.function != "CloseHandle" &&
                                     (broken.flags != DWORD{FileIdInfo} || code == 0);
                EXPECT_EQ(told.has_value(), matters);
                EXPECT_EQ(run.machine.content(uR"(C:\b)"), told || written > 500 ? "to" : "from");
                reported += told ? 1 : 0;
            };
            sweep(build, copying, {code});
            // four openings, times and identifiers, and the copying
            int const identifiers = code == 0 ? 2 : 0;
            EXPECT_EQ(reported, 6 + identifiers + (written == 100 ? 1 : 0))
                << written << ' ' << code;
        }
    }
}

TEST_ON_MACHINE(CopyFileCalls, BlameForADenial)
{
    machine.add_file(uR"(C:\a)").add_file(uR"(C:\closed)").add_directory(uR"(C:\d)");
    machine.add_symbolic_link(uR"(C:\l)", u"a").deny(uR"(C:\closed)", right::read);
    machine.deny_creation(uR"(C:\d)");
    EXPECT_FAILURE(copy_file(u"closed", u"b"), denied(u"closed"));
    EXPECT_FAILURE(copy_file(u"a", uR"(d\b)"), denied(uR"(d\b)"));
    EXPECT_FAILURE(copy_file(u"l", uR"(d\b)"), denied(u"l"))
        << "a link is blamed whatever it leads to";
}

TEST_ON_MACHINE(CopyCalls, SymbolicLinkHasTheFullPathname)
{
    machine.add_file(uR"(C:\d\a)").set_current_directory(uR"(C:\d)");
    fl::filesystem::copy(u"a", u"l", copy_options::create_symlinks);
    EXPECT_EQ(machine.reparse_data(uR"(C:\d\l)"),
              simulation::symbolic_link_data(uR"(\??\C:\d\a)", uR"(C:\d\a)", 0));
}

TEST_ON_MACHINE(CopyCalls, SymbolicLinkHasTheStringThatGoesToTheSystem)
{
    machine.add_share(u"s", u"h").add_file(uR"(\\s\h\f)");
    std::u16string const long_file = of_size(u"C:\\", 248);
    machine.add_file(long_file);
    fl::filesystem::copy(uR"(\\s\h\f)", u"l", copy_options::create_symlinks);
    EXPECT_EQ(machine.reparse_data(uR"(C:\l)"),
              simulation::symbolic_link_data(uR"(\??\UNC\s\h\f)", uR"(\\s\h\f)", 0));
    fl::filesystem::copy(long_file, u"m", copy_options::create_symlinks);
    EXPECT_EQ(machine.reparse_data(uR"(C:\m)"),
              simulation::symbolic_link_data(uR"(\??\)" + long_file, uR"(\\?\)" + long_file, 0));
}

// What the enumeration says of a search that fails, and of one that breaks off.
TEST_ON_MACHINE(CopyCalls, AnEnumerationThatFailsEndsIt)
{
    for (DWORD const code : {5U, 32U, 1117U})
        for (bool const has_begun : {false, true}) { // behind the dots and `a`
            simulated_machine fresh;
            fresh.add_file(uR"(C:\t\a)").add_file(uR"(C:\t\b)");
            sure_fault const fault = has_begun ? fresh.fail_call("FindNextFileW", 3, code)
                                               : fresh.fail_call("FindFirstFileExW", 1, code);
            auto const expected = code == 5 ? denied(u"to") : system_error(code, u"t", u"to");
            EXPECT_FAILURE(copy(u"t", u"to"), expected) << code;
            EXPECT_EQ(fresh.entries(uR"(C:\to)"), has_begun ? names{u"a"} : names()) << code;
        }
}

TEST_ON_MACHINE(CopyCalls, DevicesBeyondTheLimitHaveNoForm)
{
    machine.add_file(uR"(C:\f)");
    std::u16string const device = of_size(uR"(\\.\)", 248);
    auto const expected = invalid_argument("Long UNC path without root not permitted");
    for (auto const &names : {std::pair(device, std::u16string(u"f")), {u"f", device}}) {
        EXPECT_FAILURE(copy(names.first, names.second), expected);
        EXPECT_FAILURE(copy_file(names.first, names.second), expected);
    }
    EXPECT_FAILURE(copy_directory(device, u"f"), expected);
    EXPECT_FAILURE(copy_directory(u"C:\\", device), expected);
}

TEST_ON_MACHINE(CopyFileCalls, OptionsAboutOtherThingsDontCount)
{
    for (copy_options const options :
         {copy_options::recursive, copy_options::copy_symlinks, copy_options::skip_symlinks,
          copy_options::directories_only, copy_options::create_symlinks,
          copy_options::create_hard_links}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\f)", "12345").add_symbolic_link(uR"(C:\l)", u"f");
        fl::filesystem::copy_file(u"l", u"copy", options);
        EXPECT_EQ(fresh.reparse_tag(uR"(C:\copy)"), DWORD{0});
        EXPECT_EQ(fresh.content(uR"(C:\copy)"), "12345");
    }
}

constexpr auto as_links = copy_options::copy_symlinks;

TEST_ON_MACHINE(CopyCalls, JunctionByteForByte)
{
    machine.add_directory(uR"(C:\d)").add_mount_point(uR"(C:\m)", u'C');
    machine.add_junction(uR"(C:\j)", uR"(\??\C:\d)", u"for people");
    for (std::u16string const name : {u"C:\\j", u"C:\\m"}) {
        copy(name, name + u"2", as_links);
        EXPECT_EQ(machine.reparse_tag(name + u"2"), DWORD{IO_REPARSE_TAG_MOUNT_POINT});
        EXPECT_EQ(machine.reparse_data(name + u"2"), machine.reparse_data(name));
    }
}

TEST_ON_MACHINE(CopyCalls, JunctionThatCantBeMadeLeavesNothing)
{
    for (char const *function : {"DeviceIoControl", "CreateFileW"}) {
        int const failed = for_each_nth([&](int nth) {
            simulated_machine fresh;
            fresh.add_directory(uR"(C:\d)").add_junction(uR"(C:\j)", uR"(C:\d)");
            auto const fault = fresh.fail_call(function, nth, 1117);
            auto const thrown = failure_of([] { fl::filesystem::copy(u"j", u"b", as_links); });
            if (fault.fired()) {
                EXPECT_EQ(thrown, system_error(1117, u"j", u"b")) << function;
                EXPECT_FALSE(fresh.exists(uR"(C:\b)")) << function;
            }
            expect_nothing_open(fresh, function);
            return fault.fired();
        });
        EXPECT_GE(failed, 2) << function;
    }
    machine.add_directory(uR"(C:\d)").add_junction(uR"(C:\j)", uR"(C:\d)");
    auto const fault = machine.fail_every_call_on("CreateDirectoryW", 5);
    EXPECT_FAILURE(fl::filesystem::copy(u"j", u"b", as_links), denied(u"b"));
    EXPECT_FALSE(machine.exists(uR"(C:\b)"));
}

TEST_ON_MACHINE(CopyCalls, JunctionThatCantBeMadeLeavesNothingAlsoIfNoCodeTellsWhy)
{
    for (char const *function : {"DeviceIoControl", "CreateFileW"}) {
        simulated_machine fresh;
        fresh.add_directory(uR"(C:\d)").add_junction(uR"(C:\j)", uR"(C:\d)");
        sure_fault const fault = fresh.fail_every_call_on_name(function, uR"(C:\b)", 0);
        EXPECT_FAILURE(fl::filesystem::copy(u"j", u"b", as_links),
                       system_error(ERROR_GEN_FAILURE, u"j", u"b"));
        EXPECT_FALSE(fresh.exists(uR"(C:\b)")) << function;
    }
}

TEST_ON_MACHINE(CopyCalls, EveryFailingCallReleasesItsHandles)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(uR"(C:\t\d\f)").add_symbolic_link(uR"(C:\t\l)", u"d\\f");
        fresh.add_file(uR"(C:\t\f)").add_file(uR"(C:\to\f)");
        fresh.add_junction(uR"(C:\t\j)", uR"(C:\t\d)");
    };
    constexpr auto options = copy_options::recursive | copy_options::update_existing;
    for (copy_options const links : {copy_options::none, as_links})
        sweep(build, [&](failing_run const &) {
            failure_of([&] { fl::filesystem::copy(u"t", u"to", options | links); });
        });
}

TEST_ON_MACHINE(CopyCalls, OfATreeDeeperThanAStack)
{
    machine.keep_journal(false);
    constexpr int depth = 2500; // with the data of one search a level, more than 1 MiB
    // so long that they go with a long prefix, and so does all below
    std::u16string const from = of_size(uR"(C:\f)", 248);
    std::u16string const to = of_size(uR"(C:\t)", 248);
    machine.add_file(chain(from, depth) + u"\\f", "content");
    copy(from, to, copy_options::recursive);
    EXPECT_EQ(machine.content(chain(to, depth) + u"\\f"), "content");
}

TEST_ON_MACHINE(CopyCalls, IntoItselfEndsWithAnException)
{
    machine.keep_journal(false).add_directory(uR"(C:\a)");
    EXPECT_FAILURE(fl::filesystem::copy(u"a", uR"(a\b)", copy_options::recursive), too_large(u""));
    EXPECT_TRUE(machine.is_directory(uR"(C:\a\b\b\b)")) << "what was copied stays";
}

TEST_ON_MACHINE(CopyCalls, OfAWideDirectory)
{
    machine.keep_journal(false);
    for (int i = 0; i < 1000; ++i)
        machine.add_file(numbered(uR"(C:\a\)", i));
    copy(u"a", u"b");
    EXPECT_EQ(machine.entries(uR"(C:\b)"), machine.entries(uR"(C:\a)"));
}

TEST_ON_MACHINE(CopyCalls, NoPrefixIsAddedBelow)
{
    for (std::size_t const size : {259U, 260U}) {
        std::u16string const target = of_size(uR"(C:\to\n)", size);
        std::u16string const name = target.substr(6);
        // the native form takes a prefix away that the name doesn't need
        for (std::u16string const prefix : {u"", uR"(\\?\)"}) {
            simulated_machine fresh;
            fresh.add_file(uR"(C:\t\)" + name);
            auto const thrown = failure_of([&] { copy(prefix + uR"(C:\t)", uR"(C:\to)"); });
            EXPECT_EQ(thrown, size == 259 ? std::nullopt : std::optional(not_found(uR"(C:\to)")));
            EXPECT_EQ(fresh.exists(target), size == 259);
        }
    }
}

TEST_ON_MACHINE(CopyCalls, APrefixThatTheNameNeedsServesBelow)
{
    for (std::size_t const size : {247U, 248U}) {
        simulated_machine fresh;
        std::u16string const from = of_size(uR"(C:\f)", size);
        std::u16string const to = of_size(uR"(C:\t)", size);
        std::u16string const name(20, u'n');
        fresh.add_file(from + u'\\' + name);
        auto const thrown = failure_of([&] { copy(from, to); });
        EXPECT_EQ(thrown.has_value(), size == 247) << size;
        EXPECT_EQ(fresh.exists(to + u'\\' + name), size == 248) << size;
    }
}

// Behind a long prefix the system takes two backslashes for a name between them.
TEST_ON_MACHINE(CopyCalls, OfAFileIntoADirectoryBehindALongPrefix)
{
    std::u16string const from = of_size(uR"(C:\f\)", 248);
    std::u16string const to = of_size(uR"(C:\t)", 248);
    machine.add_file(from, "content").add_directory(to);
    copy(from, to);
    EXPECT_EQ(machine.content(to + from.substr(4)), "content");
}

/// The texts of all copying, and those that stand second.
lines copied(simulated_machine const &machine)
{
    lines all;
    for (auto const &entry : entries_of(machine, "CopyFileW"))
        all.push_back(printable(entry.text) + " " + printable(entry.second_text));
    return all;
}

TEST_ON_MACHINE(CopyCalls, NamesThatEndInAStopOrABlankAreTakenLiterally)
{
    for (char16_t const *name : {u"a", u"a.", u"b \\c", u"b \\d.", u"e", u".f", u" g"})
        machine.add_file(std::u16string(uR"(C:\t\)") + name);
    fl::filesystem::copy(u"t", u"to", copy_options::recursive);
    EXPECT_EQ(copied(machine),
              (lines{R"(C:\t\ g C:\to\ g)", R"(C:\t\.f C:\to\.f)", R"(C:\t\a C:\to\a)",
                     R"(\\?\C:\t\a. \\?\C:\to\a.)", R"(\\?\C:\t\b \c \\?\C:\to\b \c)",
                     R"(\\?\C:\t\b \d. \\?\C:\to\b \d.)", R"(C:\t\e C:\to\e)"}))
        << "these, and what is below them";
}

TEST_ON_MACHINE(CopyCalls, OnAShareTheyHaveThePrefixOfServers)
{
    machine.add_share(u"s", u"h").add_file(uR"(\\s\h\t\a.)", "a.").add_file(uR"(\\s\h\t\b)");
    copy(uR"(\\s\h\t)", uR"(C:\to)");
    EXPECT_EQ(copied(machine), (lines{R"(\\?\UNC\s\h\t\a. \\?\C:\to\a.)", R"(\\s\h\t\b C:\to\b)"}));
    copy(uR"(C:\to)", uR"(\\s\h\back)");
    EXPECT_EQ(machine.content(uR"(\\s\h\back\a.)"), "a.");
}

TEST_ON_MACHINE(CopyCalls, APathnameThatHasItsPrefixGetsNoOther)
{
    std::u16string const from = of_size(uR"(C:\f)", 248);
    machine.add_file(from + u"\\a.", "content").add_file(from + u"\\b");
    copy(from, uR"(C:\to)");
    EXPECT_EQ(machine.entries(uR"(C:\to)"), (names{u"a.", u"b"}));
    EXPECT_EQ(machine.content(uR"(C:\to\a.)"), "content");
}

TEST_ON_MACHINE(CopyCalls, BelowADevicesPrefixTheyHaveNoSuchForm)
{
    machine.add_file(uR"(C:\t\a)", "a").add_file(uR"(C:\t\a.)", "a.");
    copy(uR"(\\.\C:\t)", uR"(C:\to)");
    EXPECT_EQ(machine.content(uR"(C:\to\a)"), "a");
    EXPECT_EQ(machine.content(uR"(C:\to\a.)"), "a") << "what the system takes the name for";
}

TEST_ON_MACHINE(CopyCalls, AReservedNameInATreeEndsItWithCode17)
{
    for (char16_t const *held : {uR"(C:\t\nul)", uR"(C:\t\nul\x)"}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\a)").add_file(held, "held").add_file(uR"(C:\t\z)");
        EXPECT_FAILURE(fl::filesystem::copy(uR"(C:\t)", uR"(C:\to)", copy_options::recursive),
                       system_error(17, uR"(C:\t)", uR"(C:\to)"))
            << "the device is in either place";
        EXPECT_EQ(fresh.entries(uR"(C:\to)"), names{u"a"});
    }
}

TEST_ON_MACHINE(CopyCalls, OfAnEmptyRootMakesAnEmptyDirectory)
{
    machine.add_drive(u'D');
    fl::filesystem::copy(u"D:\\", u"to", copy_options::recursive);
    EXPECT_EQ(machine.entries(uR"(C:\to)"), names());
    EXPECT_TRUE(machine.is_directory(uR"(C:\to)"));
}

TEST_ON_MACHINE(CopyCalls, OfOneLevelMakesNoDirectoryOfALinkThatCouldNotBeFollowedAtFirst)
{
    for (DWORD const code : {DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_DISK_FULL}}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\away\f)").add_junction(uR"(C:\t\j)", uR"(C:\away)");
        sure_fault const fault =
            fresh.fail_call_on_name("GetFileAttributesExW", uR"(C:\t\j)", 1, code);
        fl::filesystem::copy(u"t", u"to");
        EXPECT_EQ(fresh.entries(uR"(C:\to)"), names()) << code;
    }
}

TEST_ON_MACHINE(CopyCalls, HardLinksAreNamesOfTheSameFile)
{
    machine.add_drive(u'D').add_file(uR"(C:\t\f)").add_file(uR"(C:\there)");
    constexpr auto links = copy_options::create_hard_links;
    fl::filesystem::copy(u"t", u"b", links);
    EXPECT_TRUE(machine.is_same(uR"(C:\t\f)", uR"(C:\b\f)"));
    EXPECT_FAILURE(fl::filesystem::copy(uR"(t\f)", u"there", links), file_exists(u"there"));
    EXPECT_FAILURE(fl::filesystem::copy(uR"(t\f)", uR"(D:\f)", links),
                   system_error(17, uR"(t\f)", uR"(D:\f)"))
        << "the system's own 17: another volume";
}

TEST_ON_MACHINE(CopyCalls, WhoIsStoppedReadsNoFurtherEntry)
{
    machine.add_file(uR"(C:\a\1)").add_file(uR"(C:\a\2)");
    auto read = machine.calls_of("FindNextFileW");
    auto const one = [&](copy_progress const &progress) {
        read = machine.calls_of("FindNextFileW");
        return progress.names < 2; // behind the first file
    };
    EXPECT_FALSE(copy(upath(uR"(C:\a)"), upath(uR"(C:\b)"), copy_options::none, one));
    EXPECT_EQ(machine.calls_of("FindNextFileW"), read);
    EXPECT_EQ(machine.entries(uR"(C:\b)").size(), 1U);
}

TEST_ON_MACHINE(CopyCalls, WithoutTheTreeAReadOnlyFileIsCopiedToo)
{
    machine.add_file(uR"(C:\d\f)", "text").set_attributes(uR"(C:\d\f)", FILE_ATTRIBUTE_READONLY);
    copy(uR"(C:\d)", uR"(C:\e)");
    EXPECT_EQ(machine.content(uR"(C:\e\f)"), "text");
}

TEST_ON_MACHINE(CopyCalls, WithoutTheTreeNothingIsAskedAboutItsDirectories)
{
    machine.add_directory(uR"(C:\d\below)");
    machine.set_attributes(uR"(C:\d\below)", FILE_ATTRIBUTE_READONLY);
    copy(uR"(C:\d)", uR"(C:\e)");
    EXPECT_EQ(texts_of(machine, "GetFileAttributesExW"), (lines{R"(C:\d)", R"(C:\e)"}))
        << "the search has told what they are";
    EXPECT_FALSE(machine.exists(uR"(C:\e\below)"));
}

} // namespace
} // namespace fl::filesystem::tests
