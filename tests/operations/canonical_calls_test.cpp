// Which calls `canonical` makes, and what it makes of calls that fail: only the simulated
// machine can show that.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

#include <set>

namespace fl::filesystem::tests {
namespace {

using test_support::failure;

TEST_ON_MACHINE(CanonicalCalls, ExpandOnceAndAskAboutEveryElement)
{
    machine.add_file(uR"(C:\d\f)");
    canonical(uR"(C:\d\f)");
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(C:\d\f))", R"(GetFileAttributesExW(\\?\C:\d))",
                     R"(GetFileAttributesExW(\\?\C:\d\f))", R"(GetFileAttributesExW(\\?\C:\d\f))"}))
        << "the last one to find links, and once more to see that it is there";
    machine.clear_journal();
    canonical(u"C:\\");
    EXPECT_EQ(calls(machine),
              (lines{R"(GetFullPathNameW(C:\))", R"(GetFileAttributesExW(\\?\C:\))"}));
}

TEST_ON_MACHINE(CanonicalCalls, NoneForTheEmptyPath)
{
    canonical(u"", u"C:\\");
    canonical(upath(), upath(u"relative"));
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(CanonicalCalls, NoneForABaseThatIsRefused)
{
    EXPECT_FAILURE(canonical(u"f", u"d"), invalid_argument("Invalid path type for base path"));
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(CanonicalCalls, ExpandWhatIsJoined)
{
    machine.add_file(uR"(C:\d\f)");
    canonical(u"f", u"C:\\d");
    EXPECT_EQ(calls(machine).front(), R"(GetFullPathNameW(C:\d\f))");
}

TEST_ON_MACHINE(CanonicalCalls, AFailedExpansionNamesWhatIsJoined)
{
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_FAILURE(canonical(u"f", u"C:\\d"), denied(uR"(C:\d\f)"));
    EXPECT_FAILURE(canonical(u"f"), denied(u"f"));
}

TEST_ON_MACHINE(CanonicalCalls, AMissingNameOfTheExpansionIsntNamedEither)
{
    for (DWORD const code : {2U, 3U}) {
        sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", code);
        EXPECT_FAILURE(canonical(u"f"), not_found(u"")) << code;
    }
}

auto failure_of_code(DWORD code, std::u16string const &path)
{
    bool const is_missing = code == 2 || code == 3 || code == 53 || code == 123 || code == 161;
    return is_missing ? not_found(u"") : translated(code, path);
}

TEST_ON_MACHINE(CanonicalCalls, EveryCodeOfTheLastQuestion)
{
    machine.add_file(u"C:\\f").keep_journal(false);
    for (DWORD code = 0; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_call("GetFileAttributesExW", 2, code);
        EXPECT_FAILURE(canonical(u"C:\\f"), failure_of_code(code, uR"(\\?\C:\f)"));
    }
}

// The walk asks about the same name, and has its own view of some codes.
TEST_ON_MACHINE(CanonicalCalls, CodesOfTheWalkOnTheLastName)
{
    machine.add_file(u"C:\\f");
    for (DWORD const code : {2U, 3U, 5U, 53U, 123U, 161U, 206U, 1117U}) {
        sure_fault const fault = machine.fail_call("GetFileAttributesExW", 1, code);
        EXPECT_FAILURE(canonical(u"C:\\f"),
                       translated(code, code == 2 || code == 3 ? u"" : uR"(\\?\C:\f)"))
            << code;
    }
}

TEST_ON_MACHINE(CanonicalCalls, CodesOnANameOnTheWayDontMatter)
{
    machine.add_file(uR"(C:\d\f)");
    for (DWORD const code : {2U, 3U, 5U, 53U, 123U, 1117U, 1920U}) {
        sure_fault const fault = machine.fail_every_call_on_name(uR"(C:\d)", code);
        EXPECT_EQ(canonical(uR"(C:\d\f)"), uR"(C:\d\f)") << code;
    }
}

/// The pathname of a link to a file beside it. The link's text holds a NUL, where it ends for
/// the system, and so much behind it that it is resolved into `size` units.
std::u16string path_resolved_to(simulated_machine &machine, std::size_t size)
{
    std::u16string const parent = chain_of_size(u"C:", 26000);
    std::u16string text(size - parent.size() - 5, u'j'); // with the prefix and a separator
    text[0] = u'f';
    text[1] = u'\0';
    machine.add_file(parent + uR"(\f)").add_symbolic_link(parent + uR"(\l)", u"f", text, 1);
    return parent + uR"(\l)";
}

// The walk has found the name, so only another's deletion in between leads here.
TEST_ON_MACHINE(CanonicalCalls, Code3OnAPathnameBeyondTheLongestIsItsLength)
{
    for (std::size_t const size : {32766U, 32767U, 32768U}) {
        simulated_machine fresh;
        std::u16string const path = path_resolved_to(fresh, size);
        EXPECT_EQ(canonical(path), path.substr(0, path.size() - 1) + u'f');
        sure_fault const fault =
            fresh.fail_call("GetFileAttributesExW", fresh.calls_of("GetFileAttributesExW"), 3);
        auto const expected = size == 32768 ? too_large(u"") : not_found(u"");
        EXPECT_TRUE(failure_of([&] { canonical(path); }) == expected) << size;
    }
}

TEST_ON_MACHINE(CanonicalCalls, TheLongestPathnameOfTheSystem)
{
    std::u16string const path = chain_of_size(u"C:", 32763);
    machine.add_file(path).keep_journal(false);
    EXPECT_EQ(canonical(path), path) << "with a prefix, 32,767 units";
}

TEST_ON_MACHINE(CanonicalCalls, EveryFailingCallReleasesWhatItHolds)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(uR"(C:\d\f)").add_shortcut(uR"(C:\d.lnk)", u"C:\\d");
        fresh.add_symbolic_link(u"C:\\l", u"d.lnk", flavour::directory);
    };
    std::set<std::u16string> answers;
    sweep(build, [&](failing_run const &run) {
        failure_of([&] { answers.insert(canonical(uR"(C:\l\f)")); });
        EXPECT_TRUE(run.machine.exists(uR"(C:\d\f)"));
    });
    EXPECT_EQ(answers, std::set<std::u16string>{uR"(C:\d\f)"});
}

} // namespace
} // namespace fl::filesystem::tests
