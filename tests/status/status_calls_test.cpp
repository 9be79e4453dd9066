// Queries by the calls that they make, and what becomes of each call that fails.

#include <fl/filesystem.hpp>

#include <fl/filesystem/windows.hpp>

#include "status/outcomes.hpp"
#include "support/calls.hpp"
#include "support/translation.hpp"

#include <functional>

namespace fl::filesystem::tests {
namespace {

using detail::windows::target_status_bridge;
using test_support::outcome;

bool says_missing(DWORD code)
{
    return code == 2 || code == 3 || code == 123 || code == 161 || code == 4390;
}

/// What all zeros say: a file from the start of 1601.
record zeros()
{
    return {0x8000, 0666, 0, 0, 0, 0};
}

TEST_ON_MACHINE(StatusCodes, OfAFailedQuery)
{
    machine.add_file(u"C:\\f", "1").keep_journal(false);
    for (DWORD code = 0; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", code);
        outcome const expected = says_missing(code) ? missing() : fails(translated(code, u"C:\\f"));
        ASSERT_EQ(outcome_of([] { return status(u"C:\\f"); }), expected) << code;
        ASSERT_EQ(outcome_of([] { return symlink_status(u"C:\\f"); }), expected) << code;
    }
}

TEST_ON_MACHINE(StatusCodes, OfAFailedExpressQuery)
{
    machine.add_file(u"C:\\f", "1").keep_journal(false);
    for (DWORD code = 1; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", code);
        outcome const expected =
            says_missing(code) ? missing_light() : fails(translated(code, u"C:\\f"));
        ASSERT_EQ(outcome_of([] { return status_express_light(u"C:\\f"); }), expected) << code;
    }
}

TEST_ON_MACHINE(StatusCodes, OfAFailedQueryOfATarget)
{
    machine.add_file(u"C:\\t", "1").add_symbolic_link(u"C:\\l", u"t").keep_journal(false);
    std::u16string const target = uR"(\\?\C:\t)";
    for (DWORD code = 1; code <= last_code; ++code) {
        sure_fault const fault =
            machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\t", code);
        bool const is_missing = says_missing(code);
        outcome const expected = is_missing ? missing() : fails(translated(code, target));
        ASSERT_EQ(outcome_of([] { return status(u"C:\\l"); }), expected) << code;
        ASSERT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), expected) << code;
        ASSERT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
                  is_missing ? missing_light() : expected)
            << code;
    }
}

// The codes that mean a missing name, and those next to them.
constexpr DWORD decisive_codes[] = {1,   2,   3,   4,   5,    53,   122,  123, 124,
                                    160, 161, 162, 267, 1920, 4389, 4390, 4391};

// The second link of three is where it fails: every further hop is the same.
TEST_ON_MACHINE(StatusCodes, OfAFailedQueryFurtherOn)
{
    machine.add_symbolic_link(u"C:\\l", u"m").add_symbolic_link(u"C:\\m", u"n").keep_journal(false);
    machine.add_symbolic_link(u"C:\\n", u"t").add_file(u"C:\\t", "1");
    for (DWORD const code : decisive_codes) {
        sure_fault const fault =
            machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\n", code);
        outcome const expected =
            says_missing(code) ? missing() : fails(translated(code, uR"(\\?\C:\n)"));
        ASSERT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), expected) << code;
        ASSERT_EQ(outcome_of([] { return status(u"C:\\l"); }), expected) << code;
    }
}

// On a mapped drive a broken link answers for itself.
TEST_ON_MACHINE(StatusCodes, OfAFailedQueryOfATargetOnAMappedDrive)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_file(u"\\\\s\\h\\t", "1");
    machine.add_symbolic_link(u"\\\\s\\h\\l", u"t").keep_journal(false);
    outcome own = outcome_of([] { return symlink_status(u"X:\\l"); });
    own.answer->type = file_status::regular_file;
    for (DWORD code = 1; code <= last_code; ++code) {
        sure_fault const fault =
            machine.fail_every_call_on_name("GetFileAttributesExW", u"X:\\t", code);
        ASSERT_EQ(outcome_of([] { return target_status_bridge(L"X:\\l"); }),
                  says_missing(code) ? own : fails(translated(code, uR"(\\?\X:\t)")))
            << code;
    }
}

TEST_ON_MACHINE(StatusCodes, OfAFailedQueryOfTheLinkOnAMappedDrive)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    machine.add_symbolic_link(u"\\\\s\\h\\l", u"t");
    for (DWORD const code : {0U, 2U, 3U, 5U, 123U, 32U}) {
        sure_fault const fault =
            machine.fail_every_call_on_name("GetFileAttributesExW", u"X:\\l", code);
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"X:\\l"); }),
                  fails(translated(code, u"X:\\l")))
            << code;
    }
}

TEST_ON_MACHINE(StatusCodes, OfALinkThatCannotBeRead)
{
    machine.add_file(u"C:\\t", "1").add_symbolic_link(u"C:\\l", u"t").keep_journal(false);
    outcome own = outcome_of([] { return symlink_status(u"C:\\l"); });
    own.answer->type = file_status::regular_file;
    for (char const *const function : {"CreateFileW", "DeviceIoControl"}) {
        for (DWORD code = 1; code <= last_code; ++code) {
            sure_fault const fault = machine.fail_every_call_on(function, code);
            ASSERT_EQ(outcome_of([] { return status(u"C:\\l"); }), own) << code;
            ASSERT_EQ(outcome_of([] { return symlink_status(u"C:\\l"); }), own) << code;
            ASSERT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
                      answers(shortened(*own.answer)))
                << code;
            ASSERT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }),
                      fails(translated(code, u"C:\\l")))
                << code;
        }
    }
}

// A failed query of a share isn't looked into: whatever it says is told.
TEST_ON_MACHINE(StatusCodes, OfAFailedQueryOfALinkOnAShare)
{
    machine.add_share(u"s", u"h").add_symbolic_link(u"\\\\s\\h\\l", u"t").keep_journal(false);
    for (DWORD code = 0; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", code);
        ASSERT_EQ(outcome_of([] { return target_status_bridge(LR"(\\s\h\l)"); }),
                  fails(translated(code, uR"(\\s\h\l)")))
            << code;
    }
}

TEST_ON_MACHINE(StatusCodes, AFailureWithoutACode)
{
    machine.add_file(u"C:\\t", "1").add_symbolic_link(u"C:\\l", u"t");
    auto fault = machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\t", 0);
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\t"); }),
              answers(shortened(zeros())));
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
              answers(shortened(zeros())));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), answers(zeros()));
    EXPECT_EQ(outcome_of([] { return status(u"C:\\t"); }), fails(system_error(0, u"C:\\t")));
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), fails(system_error(0, uR"(\\?\C:\t)")));
    // further on the target's bridge goes on, too
    machine.add_symbolic_link(u"C:\\first", u"l");
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\first"); }), answers(zeros()));
    EXPECT_TRUE(fault.fired());
}

TEST_ON_MACHINE(StatusCodes, AnEmptyAnswerRunsByItsName)
{
    machine.add_file(u"C:\\t.exe", "1").add_symbolic_link(u"C:\\l", u"t.exe");
    sure_fault const fault =
        machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\t.exe", 0);
    EXPECT_EQ(target_status_bridge(L"C:\\l").get_perms(), 0777U);
}

// Also of a form that nothing could be put ahead of.
TEST_ON_MACHINE(StatusCalls, ALongTextWithAPrefixGoesToTheSystemAsItIs)
{
    std::u16string const text =
        of_size(uR"(\\?\Volume{01234567-89ab-cdef-0123-456789abcdef}\)", 300);
    EXPECT_EQ(outcome_of([&] { return status_express_light(text); }), missing_light());
    EXPECT_EQ(texts_of(machine, "GetFileAttributesExW"), lines{printable(text)});
}

// Code 3 says nothing but the length beyond 32,767 units.
TEST_ON_MACHINE(StatusCodes, OverlongPathnames)
{
    machine.keep_journal(false);
    sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", 3);
    std::u16string const fits = of_size(uR"(\\?\C:\)", 32767), longer = fits + u"a";
    EXPECT_EQ(outcome_of([&] { return status_express_light(fits); }), missing_light());
    EXPECT_EQ(outcome_of([&] { return status_express_light(longer); }), fails(too_large(longer)));
    // four units more with the prefix
    std::u16string const plain = of_size(u"C:\\", 32763);
    EXPECT_EQ(outcome_of([&] { return status_express_light(plain); }), missing_light());
    EXPECT_EQ(outcome_of([&] { return status_express_light(plain + u"a"); }),
              fails(too_large(uR"(\\?\)" + plain + u"a")));
    sure_fault const opening = machine.fail_every_call_on("CreateFileW", 3);
    EXPECT_EQ(outcome_of([&] { return target_status_bridge(wide(fits)); }), fails(not_found(fits)));
    EXPECT_EQ(outcome_of([&] { return target_status_bridge(wide(longer)); }),
              fails(too_large(longer)));
}

// Links deep down, whose targets pass the limit by their text alone.
TEST_ON_MACHINE(StatusCodes, OverlongTargets)
{
    machine.keep_journal(false);
    std::u16string const folder = chain_of_size(u"C:", 32500);
    std::u16string const link = folder + u"\\l";
    // the prefix, the folder and a backslash stand ahead of the text
    std::size_t const fitting = 32767 - (4 + folder.size() + 1);
    for (std::size_t const size : {fitting, fitting + 1}) {
        machine.add_symbolic_link(link, std::u16string(size, u'x'));
        std::u16string const target = uR"(\\?\)" + folder + u"\\" + std::u16string(size, u'x');
        sure_fault const fault = machine.fail_call("GetFileAttributesExW", 2, 3);
        outcome const expected = size == fitting ? missing() : fails(too_large(target));
        EXPECT_TRUE(outcome_of([&] { return status(link); }) == expected) << size;
        sure_fault const second = machine.fail_call("GetFileAttributesExW", 1, 3);
        EXPECT_TRUE(outcome_of([&] { return target_status_bridge(LR"(\\?\)" + wide(link)); }) ==
                    expected)
            << size;
        machine.remove(link);
    }
}

struct journal_case
{
    char const *query;
    std::function<void()> run;
    lines expected;
};

void expect_journal(simulated_machine &machine, journal_case const &row)
{
    machine.clear_journal();
    row.run();
    EXPECT_EQ(calls_with_arguments(machine), row.expected) << row.query;
}

TEST_ON_MACHINE(StatusJournal, OfAPlainName)
{
    machine.add_file(u"C:\\d\\f", "1").set_current_directory(u"C:\\d");
    std::string const expand = "GetFullPathNameW(f)", ask = R"(GetFileAttributesExW(C:\d\f))";
    std::string const open = R"(CreateFileW(C:\d\f) access 8 share 7 disposition 3 flags 2200000)";
    std::string const read = R"(DeviceIoControl(C:\d\f) flags 900A8)";
    journal_case const cases[] = {
        {"status", [] { status(u"f"); }, {expand, ask}},
        {"symlink_status", [] { symlink_status(u"f"); }, {expand, ask}},
        {"express", [] { status_express_light(u"f"); }, {"GetFileAttributesExW(f)"}},
        {"exists", [] { exists(u"f"); }, {expand, ask}},
        {"target",
         [] { failure_of([] { target_status_bridge(LR"(C:\d\f)"); }); },
         {open, read, R"(CloseHandle(C:\d\f))"}},
    };
    for (journal_case const &row : cases)
        expect_journal(machine, row);
}

TEST_ON_MACHINE(StatusJournal, OfTheEmptyText)
{
    EXPECT_EQ(outcome_of([] { return status(u""); }), missing());
    EXPECT_EQ(outcome_of([] { return status(upath()); }), missing());
    EXPECT_EQ(outcome_of([] { return symlink_status(u""); }), missing());
    EXPECT_EQ(outcome_of([] { return symlink_status(upath()); }), missing());
    EXPECT_EQ(outcome_of([] { return status_express_light(u""); }), missing_light());
    EXPECT_EQ(calls_with_arguments(machine), lines{});
    EXPECT_FALSE(exists(u""));
    EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 1) << "here the system answers";
}

TEST_ON_MACHINE(StatusJournal, OfOneHop)
{
    machine.add_file(u"C:\\t", "1").add_symbolic_link(u"C:\\l", u"t");
    lines ask = {R"(GetFileAttributesExW(C:\l))"};
    add_reading(ask, "C:\\l");
    lines follow = ask;
    follow.push_back(R"(WNetGetUniversalNameW(C:\l) flags 1)");
    follow.push_back(R"(GetFileAttributesExW(\\?\C:\t))");
    auto const expanded = [](lines all) {
        all.insert(all.begin(), R"(GetFullPathNameW(C:\l))");
        return all;
    };
    lines target;
    add_reading(target, "C:\\l");
    target.push_back(R"(GetFileAttributesExW(\\?\C:\t))");
    journal_case const cases[] = {
        {"status", [] { status(u"C:\\l"); }, expanded(follow)},
        {"symlink_status", [] { symlink_status(u"C:\\l"); }, expanded(ask)},
        {"express", [] { status_express_light(u"C:\\l"); }, follow},
        {"target", [] { target_status_bridge(L"C:\\l"); }, target},
    };
    for (journal_case const &row : cases)
        expect_journal(machine, row);
}

TEST_ON_MACHINE(StatusJournal, OfTwoHopsOfATarget)
{
    machine.add_file(u"C:\\t", "1").add_symbolic_link(u"C:\\l", u"m");
    machine.add_symbolic_link(u"C:\\m", u"t");
    target_status_bridge(L"C:\\l");
    std::string const middle = R"(\\?\C:\m)", ask = "GetFileAttributesExW(" + middle + ")";
    lines expected;
    add_reading(expected, "C:\\l");
    expected.push_back(ask);
    add_reading(expected, middle);
    expected.push_back(ask); // the walk begins there
    add_reading(expected, middle);
    expected.push_back(R"(GetFileAttributesExW(\\?\C:\t))");
    EXPECT_EQ(calls_with_arguments(machine), expected);
}

TEST_ON_MACHINE(StatusJournal, OfLinksOnANetwork)
{
    machine.add_share(u"s", u"h").add_symbolic_link(u"\\\\s\\h\\l", u"t");
    lines read = {R"(GetFileAttributesExW(\\s\h\l))"};
    lines const asked = read;
    add_reading(read, R"(\\s\h\l)");
    // the type of the pathname tells enough: no provider is asked
    expect_journal(machine, {"express", [] { status_express_light(uR"(\\s\h\l)"); }, read});
    expect_journal(machine, {"target", [] { target_status_bridge(LR"(\\s\h\l)"); }, asked});
}

TEST_ON_MACHINE(StatusJournal, TheProviderIsOnlyAskedAboutLinks)
{
    machine.handle_tag(0x8000000A).add_reparse_point(u"C:\\dfs", 0x8000000A, "0123456789abcdef");
    machine.add_symbolic_link(u"C:\\sparse", u"t").set_attributes(u"C:\\sparse", 0x200);
    machine.clear_journal();
    for (char16_t const *path : {u"C:\\dfs", u"C:\\sparse", u"C:\\no"}) {
        status(path);
        status_express_light(path);
    }
    EXPECT_EQ(machine.calls_of("WNetGetUniversalNameW"), 0);
    EXPECT_EQ(machine.calls_of("CreateFileW"), 2) << "what is sparse isn't read";
}

struct length_case
{
    std::size_t size;
    bool has_prefix;
};

TEST_ON_MACHINE(StatusJournal, APrefixBeyondTheLimit)
{
    for (length_case const row : {length_case{259, false}, {260, true}, {300, true}}) {
        simulated_machine fresh;
        std::u16string const folder = of_size(u"C:\\", 200);
        std::u16string const path = of_size((folder + u"\\").c_str(), row.size);
        std::u16string const form = (row.has_prefix ? uR"(\\?\)" : u"") + path;
        fresh.add_file(path, "12");
        EXPECT_EQ(status(path).get_size(), 2U) << row.size;
        EXPECT_EQ(fresh.journal().back().text, form) << row.size;
        EXPECT_EQ(symlink_status(path).get_size(), 2U) << row.size;
        EXPECT_EQ(fresh.journal().back().text, form) << row.size;
        EXPECT_EQ(status_express_light(path).get_size(), 2U) << row.size;
        EXPECT_EQ(fresh.journal().back().text, form) << row.size;
        EXPECT_EQ(status_express_light(uR"(\\?\)" + path).get_size(), 2U) << row.size;
        EXPECT_EQ(fresh.journal().back().text, uR"(\\?\)" + path) << "never a second prefix";
        fresh.remove(path);
        auto const fault = fresh.fail_every_call_on("GetFileAttributesExW", 5);
        EXPECT_EQ(outcome_of([&] { return status(path); }), fails(denied(form))) << row.size;
        EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), fails(denied(form)));
    }
}

TEST_ON_MACHINE(StatusJournal, APrefixBeyondTheLimitOnAShare)
{
    machine.add_share(u"s", u"h");
    for (std::size_t const size : {259U, 260U}) {
        std::u16string const path = of_size(uR"(\\s\h\)", size);
        std::u16string const form = size == 259 ? path : uR"(\\?\UNC)" + path.substr(1);
        EXPECT_FALSE(file_status::exists(status(path)));
        EXPECT_EQ(machine.journal().back().text, form) << size;
        EXPECT_FALSE(file_status_light::exists(status_express_light(path)));
        EXPECT_EQ(machine.journal().back().text, form) << size;
    }
}

TEST_ON_MACHINE(StatusJournal, ExpressTakesTheTextAsItStands)
{
    machine.add_file(u"C:\\d\\f", "12").set_current_directory(u"C:\\d");
    for (std::u16string const path : {u"f", u"C:/d/f", u"C:\\d\\.\\f", u"C:\\d\\\\f", u"..\\d\\f",
                                      u"C:f", u"\\d\\f", uR"(\\?\C:\d\f)", uR"(\\.\C:\d\f)"}) {
        machine.clear_journal();
        EXPECT_EQ(status_express_light(path).get_size(), 2U) << printable(path);
        EXPECT_EQ(calls_with_arguments(machine),
                  lines{"GetFileAttributesExW(" + printable(path) + ")"});
    }
}

TEST_ON_MACHINE(StatusCalls, ExpressRefusesLongTextsWithoutARoot)
{
    auto const expected = invalid_argument("Long UNC path without root not permitted");
    for (char16_t const *head : {u"f", u"\\f", u"C:f", u"\\\\.\\f", u"\\\\s"}) {
        std::u16string const text = of_size(head, 260);
        EXPECT_EQ(outcome_of([&] { return status_express_light(text); }), fails(expected))
            << printable(head);
    }
    EXPECT_EQ(calls_with_arguments(machine), lines{});
    EXPECT_EQ(outcome_of([] { return status_express_light(of_size(u"f", 255)); }), missing_light());
}

TEST_ON_MACHINE(StatusCalls, PathnamesThatCannotBe)
{
    for (std::u16string const path : {u"\\\\server", u"\\\\.\\COM1", u"\\\\.\\C:\\x"}) {
        EXPECT_EQ(outcome_of([&] { return status(path); }), missing());
        EXPECT_EQ(outcome_of([&] { return symlink_status(path); }), missing());
    }
    EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 0) << "nobody is asked";
}

// Whatever the expansion tells, it is told by these two as by a failed query.
TEST_ON_MACHINE(StatusCalls, AnExpansionThatFails)
{
    machine.add_file(u"C:\\f").keep_journal(false);
    for (DWORD code = 1; code <= last_code; ++code) {
        auto const fault = machine.fail_every_call_on("GetFullPathNameW", code);
        outcome const expected = says_missing(code) ? missing() : fails(translated(code, u"C:\\f"));
        ASSERT_EQ(outcome_of([] { return status(u"C:\\f"); }), expected) << code;
        ASSERT_EQ(outcome_of([] { return symlink_status(u"C:\\f"); }), expected) << code;
        ASSERT_TRUE(fault.fired());
    }
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_TRUE(file_status_light::exists(status_express_light(u"C:\\f")));
    EXPECT_FALSE(fault.fired());
}

struct query_case
{
    char const *name;
    std::function<outcome()> run;
    /// What failing each call in turn comes to: a code's report with this text, or an
    /// answer.
    std::vector<outcome> expected;
};

/// A link `C:\l` to the file `C:\t`.
void add_link_and_file(simulation::building &machine)
{
    machine.add_file(u"C:\\t", "12").add_symbolic_link(u"C:\\l", u"t");
    machine.set_times(u"C:\\t", {10, 20, 30}).set_attributes(u"C:\\t", 0x20);
    machine.set_times(u"C:\\l", {40, 50, 60}).set_attributes(u"C:\\l", 2);
}

TEST_ON_MACHINE(StatusCalls, EachCallThatFails)
{
    record const end{0x8000, 0x1000 | 0666, 2, 3, 1, 2};
    record const link{0x8000, 0x4000 | 0666, 5, 6, 4, 0};
    record self = link;
    self.type = file_status::symlink_file;
    outcome const told_link = fails(system_error(1117, u"C:\\l"));
    outcome const told_end = fails(system_error(1117, uR"(\\?\C:\t)"));
    outcome const own = answers(link), found = answers(end);
    outcome const own_light = answers(shortened(link)), found_light = answers(shortened(end));
    // expansion, question, opening, reading, closing, provider, question
    query_case const cases[] = {
        {"status",
         [] { return outcome_of([] { return status(u"C:\\l"); }); },
         {told_link, told_link, own, own, found, found, told_end}},
        {"symlink_status",
         [] { return outcome_of([] { return symlink_status(u"C:\\l"); }); },
         {told_link, told_link, own, own, answers(self)}},
        {"express",
         [] { return outcome_of([] { return status_express_light(u"C:\\l"); }); },
         {told_link, own_light, own_light, found_light, found_light, told_end}},
        {"target",
         [] { return outcome_of([] { return target_status_bridge(L"C:\\l"); }); },
         {told_link, told_link, found, told_end}},
    };
    for (query_case const &row : cases)
        EXPECT_EQ(outcomes_of_each_call(add_link_and_file, row.run), row.expected) << row.name;
}

TEST_ON_MACHINE(StatusCalls, ALinkThatVanishes)
{
    for (char const *const function : {"CreateFileW", "DeviceIoControl"}) {
        outcome own, seen;
        bool const is_read = std::string(function) == "DeviceIoControl";
        {
            simulated_machine fresh;
            add_link_and_file(fresh);
            own = outcome_of([] { return symlink_status(u"C:\\l"); });
            own.answer->type = file_status::regular_file;
            sure_fault const gone = fresh.before_call(function, 1, [&] { fresh.remove(u"C:\\l"); });
            seen = outcome_of([] { return status(u"C:\\l"); });
            expect_nothing_open(fresh, function);
        }
        if (is_read) // an open handle goes on reading what was there
            EXPECT_EQ(seen.answer->size, 2U);
        else
            EXPECT_EQ(seen, own);
    }
}

TEST_ON_MACHINE(StatusCalls, ALinkThatVanishesForTheOtherQueries)
{
    add_link_and_file(machine);
    outcome own = outcome_of([] { return symlink_status(u"C:\\l"); });
    own.answer->type = file_status::regular_file;
    auto const vanish = [&] {
        return machine.before_call("CreateFileW", 1, [&] { machine.remove(u"C:\\l"); });
    };
    {
        auto const gone = vanish();
        EXPECT_EQ(outcome_of([] { return symlink_status(u"C:\\l"); }), own);
    }
    add_link_and_file(machine.remove(u"C:\\t"));
    {
        auto const gone = vanish();
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
                  answers(shortened(*own.answer)));
    }
    add_link_and_file(machine.remove(u"C:\\t"));
    {
        auto const gone = vanish();
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }),
                  fails(not_found(u"C:\\l")));
    }
}

TEST_ON_MACHINE(StatusCalls, ALinkThatBecomesAFile)
{
    add_link_and_file(machine);
    outcome own = outcome_of([] { return symlink_status(u"C:\\l"); });
    own.answer->type = file_status::regular_file;
    sure_fault const replaced = machine.before_call("CreateFileW", 1, [&] {
        machine.remove(u"C:\\l");
        machine.add_file(u"C:\\l", "12345");
    });
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), own) << "of what it was";
}

TEST_ON_MACHINE(StatusCalls, ATargetThatVanishes)
{
    machine.add_file(u"C:\\t", "1").add_symbolic_link(u"C:\\m", u"t");
    machine.add_symbolic_link(u"C:\\l", u"m");
    // the walk asks again about the link in the middle
    sure_fault const gone =
        machine.before_call("GetFileAttributesExW", 2, [&] { machine.remove(u"C:\\m"); });
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), missing());
}

bool says_no(DWORD code)
{
    return code == 2 || code == 3 || code == 53 || code == 64 || code == 123 || code == 267 ||
           code == 161 || code == 4390 || code == 1920;
}

TEST_ON_MACHINE(ExistsCodes, OfAFailedQuery)
{
    machine.add_file(u"C:\\d\\f").set_current_directory(u"C:\\d").keep_journal(false);
    for (DWORD code = 1; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", code);
        auto const search = machine.fail_every_call_on("FindFirstFileW", 5); // asked for code 32
        auto const expected = says_no(code) ? std::nullopt : std::optional(translated(code, u"f"));
        bool found = false, found_object = false;
        ASSERT_EQ(failure_of([&] { found = exists(u"f"); }), expected) << code;
        ASSERT_EQ(failure_of([&] { found_object = exists(upath(u"f")); }), expected) << code;
        ASSERT_FALSE(found || found_object) << code;
    }
    EXPECT_TRUE(exists(u"f"));
}

TEST_ON_MACHINE(ExistsCodes, BehindALink)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t").keep_journal(false);
    for (char const *const function : {"CreateFileW", "GetFileInformationByHandleEx"}) {
        for (DWORD code = 1; code <= last_code; ++code) {
            sure_fault const fault = machine.fail_every_call_on(function, code);
            auto const expected =
                says_no(code) ? std::nullopt : std::optional(translated(code, u"C:\\l"));
            bool found = false;
            ASSERT_EQ(failure_of([&] { found = exists(u"C:\\l"); }), expected) << code;
            ASSERT_FALSE(found) << code;
        }
    }
}

TEST_ON_MACHINE(ExistsCodes, AFailureWithoutACodeIsOneAllTheSame)
{
    machine.add_file(u"C:\\f");
    sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", 0);
    EXPECT_FAILURE(exists(u"C:\\f"), translated(ERROR_GEN_FAILURE, u"C:\\f"));
}

// The paging file refuses even those who want to look at its attributes.
TEST_ON_MACHINE(ExistsCodes, AFileThatRefusesEveryOpeningIsThere)
{
    machine.add_file(uR"(C:\d\pagefile.sys)");
    auto const attributes = machine.fail_every_call_on("GetFileAttributesExW", 32);
    auto const opening = machine.fail_every_call_on("CreateFileW", 32);
    EXPECT_TRUE(exists(uR"(C:\d\pagefile.sys)"));
    EXPECT_FAILURE(exists(uR"(C:\d\missing)"), translated(32, uR"(C:\d\missing)"))
        << "its directory knows no such file";
    EXPECT_EQ(outcome_of([] { return status(uR"(C:\d\pagefile.sys)"); }),
              fails(translated(32, uR"(C:\d\pagefile.sys)")))
        << "the record has times that nobody tells";
}

TEST_ON_MACHINE(ExistsCodes, NameThePathnameInNativeForm)
{
    auto const fault = machine.fail_every_call_on("GetFileAttributesExW", 5);
    EXPECT_EQ(failure_of([] { exists(u"d//f"); }), denied(u"d\\f"));
    std::u16string const longer = of_size(u"C:\\", 248);
    EXPECT_FAILURE(exists(longer), denied(longer)) << "without the prefix";
    EXPECT_EQ(machine.journal().back().text, uR"(\\?\)" + longer);
    std::u16string const shorter = of_size(u"C:\\", 247);
    EXPECT_FAILURE(exists(shorter), denied(shorter));
    EXPECT_EQ(machine.journal().back().text, shorter);
}

} // namespace
} // namespace fl::filesystem::tests
