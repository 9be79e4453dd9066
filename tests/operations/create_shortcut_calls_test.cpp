// Making shortcut files on the simulated machine: every step with COM, and what each
// failing one leaves behind.

#include <fl/filesystem.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

#include <objbase.h>

#include <algorithm>

namespace fl::filesystem::tests {
namespace {

char16_t const *const target = u"C:\\dir";
char16_t const *const file = u"C:\\a.lnk";

maybe_failure making(std::u16string const &to = target, std::u16string const &at = file)
{
    return failure_of([&] { create_shortcut(to, at); });
}

/// The calls from the first one to COM on.
lines com_calls(simulated_machine const &machine)
{
    lines made = calls_with_arguments(machine);
    made.erase(made.begin(), std::find(made.begin(), made.end(), "CoInitialize()"));
    return made;
}

TEST_ON_MACHINE(CreateShortcutCalls, InOrder)
{
    EXPECT_EQ(making(), std::nullopt);
    EXPECT_EQ(com_calls(machine),
              (lines{"CoInitialize()", "CoCreateInstance() flags 1",
                     R"(IShellLinkW::SetPath(C:\dir))", "IUnknown::QueryInterface()",
                     R"(IPersistFile::Save(C:\a.lnk) flags 1)", "CoUninitialize()"}));
    EXPECT_EQ(machine.shortcut_target(file), target);
}

TEST_ON_MACHINE(CreateShortcutCalls, FormTheTargetFirst)
{
    auto const first = machine.fail_call("GetFullPathNameW", 1, 1117);
    EXPECT_EQ(making(u"one", u"two.lnk"), system_error(1117, u"one"));
    machine.clear_journal();
    auto const on_second = machine.fail_every_call_on_name("GetFullPathNameW", u"C:\\two.lnk", 32);
    EXPECT_EQ(making(u"C:\\one", u"C:\\two.lnk"), system_error(32, u"C:\\two.lnk"));
    EXPECT_EQ(machine.journal().front().text, u"C:\\one");
    EXPECT_EQ(machine.calls_of("CoInitialize"), 0);
}

TEST_ON_MACHINE(CreateShortcutCalls, NoneToTheShellForPathnamesThatCannotBe)
{
    auto const expected = bad_path_type(uR"(\\server)");
    EXPECT_FAILURE(create_shortcut(uR"(\\server)", uR"(C:\x.lnk)"), expected);
    EXPECT_FAILURE(create_shortcut(uR"(C:\x)", uR"(\\server)"), expected);
    EXPECT_EQ(machine.calls_of("CoInitialize"), 0);
}

TEST_ON_MACHINE(CreateShortcutCalls, NoneToTheShellForAnotherName)
{
    EXPECT_EQ(making(target, u"C:\\a.LNK"),
              invalid_argument("Shortcut path input must have .lnk file extension"));
    EXPECT_EQ(machine.calls_of("CoInitialize"), 0);
    EXPECT_EQ(machine.entries(u"C:\\").size(), 0U);
}

struct step_case
{
    char const *function;
    char16_t const *stored; ///< null: no file is made
    maybe_failure expected;
    char const *why;
};

// Each step with E_ACCESSDENIED.
TEST_ON_MACHINE(CreateShortcutCalls, EachStepThatFails)
{
    step_case const cases[] = {
        {"CoInitialize", nullptr, system_error(14077, file),
         "ignored; then no object can be made: 0x800401F0"},
        {"CoCreateInstance", nullptr, denied(file), "no object"},
        {"IShellLinkW::SetPath", u"", std::nullopt, "ignored: a shortcut to nothing"},
        {"IUnknown::QueryInterface", nullptr, denied(file), "no other interface"},
        {"IPersistFile::Save", nullptr, denied(file), "no file"},
        {"CoUninitialize", target, std::nullopt, "nobody asks"},
    };
    for (step_case const &row : cases) {
        simulated_machine fresh;
        sure_fault const fault =
            fresh.fail_call(row.function, 1, static_cast<DWORD>(E_ACCESSDENIED));
        EXPECT_EQ(making(), row.expected) << row.why;
        EXPECT_EQ(fresh.calls_of("CoUninitialize"), 1) << row.why;
        EXPECT_EQ(fresh.journal().back().function, "CoUninitialize") << row.why;
        EXPECT_EQ(fresh.exists(file), row.stored != nullptr) << row.why;
        if (row.stored != nullptr) {
            EXPECT_EQ(fresh.shortcut_target(file), row.stored) << row.why;
        }
        expect_nothing_open(fresh, row.why);
    }
}

TEST_ON_MACHINE(CreateShortcutCalls, NoStepFollowsAFailure)
{
    // and how many calls with COM there are, `CoUninitialize` included
    std::pair<char const *, std::size_t> const cases[] = {
        {"CoCreateInstance", 3}, {"IUnknown::QueryInterface", 5}, {"IPersistFile::Save", 6}};
    for (auto const &[function, count] : cases) {
        simulated_machine fresh;
        auto const fault = fresh.fail_every_call_on(function, static_cast<DWORD>(E_FAIL));
        EXPECT_EQ(making(), system_error(14077, file)) << function;
        EXPECT_EQ(com_calls(fresh).size(), count) << function;
    }
}

constexpr row_of<std::uint32_t, unsigned int> hresult_cases[] = {
    {0x80070002, 2, "not found"},
    {0x80070003, 3, "not found"},
    {0x80070005, 5, "denied"},
    {0x80070020, 32, "in use"},
    {0x80070050, 80, "there already"},
    {0x8007007B, 123, "no name, and so no pathname"},
    {0x800700CE, 206, "too long, and so no pathname"},
    {0x8007FFFF, 65535, "all bits of a code"},
    {0x80004005, 14077, "unspecified failure"},
    {0x80040154, 14077, "no such class"},
    {0x80030005, 14077, "the storage's own codes"},
    {0x80080005, 14077, "the facility's number plus one"},
    {0xC0070005, 14077, "another severity"},
};

TEST_ON_MACHINE(CreateShortcutCalls, EveryHresultOfAFailingStep)
{
    for (char const *function :
         {"CoCreateInstance", "IUnknown::QueryInterface", "IPersistFile::Save"}) {
        for (auto const &row : hresult_cases) {
            sure_fault const fault = machine.fail_every_call_on(function, row.given);
            EXPECT_EQ(making(), translated(row.expected, file)) << function << ": " << row.why;
            EXPECT_FALSE(machine.exists(file)) << function << ": " << row.why;
        }
    }
}

TEST_ON_MACHINE(CreateShortcutCalls, AFailureLeavesAFormerFileAlone)
{
    machine.add_shortcut(file, u"C:\\former").set_attributes(file, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(making(), denied(file));
    EXPECT_EQ(machine.shortcut_target(file), u"C:\\former");
}

// A prefix is only on a form that can't do without it: one of more than 259 units.
TEST_ON_MACHINE(CreateShortcutCalls, CarryPrefixesBeyondTheLimit)
{
    for (std::size_t const size : {259U, 260U}) {
        std::u16string const head = u"C:\\" + std::u16string(150, u'd') + u'\\';
        std::u16string const prefix = size < 260 ? u"" : uR"(\\?\)";
        std::u16string const long_target = of_size(head.c_str(), size);
        std::u16string const long_file = of_size(head.c_str(), size - 4) + u".lnk";
        simulated_machine fresh;
        fresh.add_directory(head.substr(0, head.size() - 1));
        EXPECT_EQ(making(long_target, long_file), std::nullopt) << size;
        EXPECT_EQ(fresh.shortcut_target(long_file), prefix + long_target) << size;
        auto const fault = fresh.fail_every_call_on("IPersistFile::Save", 5);
        EXPECT_EQ(making(target, long_file), denied(prefix + long_file)) << size;
        EXPECT_EQ(fresh.journal().at(fresh.journal().size() - 2).text, prefix + long_file);
    }
}

// The prefix that a caller writes has no say in it.
TEST_ON_MACHINE(CreateShortcutCalls, TakeOffAPrefixThatIsNotNeeded)
{
    EXPECT_EQ(making(uR"(\\?\C:\dir)", uR"(\\?\C:\a.lnk)"), std::nullopt);
    EXPECT_EQ(machine.shortcut_target(file), target);
    EXPECT_EQ(com_calls(machine).at(4), R"(IPersistFile::Save(C:\a.lnk) flags 1)");
}

TEST_ON_MACHINE(CreateShortcutCalls, ATargetIsNeitherLookedAtNorFollowed)
{
    machine.add_directory(u"C:\\real")
        .add_symbolic_link(u"C:\\link", u"C:\\real", flavour::directory);
    EXPECT_EQ(making(u"C:\\link"), std::nullopt);
    EXPECT_EQ(machine.shortcut_target(file), u"C:\\link");
    EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 0);
}

TEST_ON_MACHINE(CreateShortcutCalls, OnAShare)
{
    machine.add_share(u"server", u"share");
    EXPECT_EQ(making(uR"(\\server\share\x)", uR"(\\server\share\a.lnk)"), std::nullopt);
    EXPECT_EQ(machine.shortcut_target(uR"(\\server\share\a.lnk)"), uR"(\\server\share\x)");
}

TEST_ON_MACHINE(CreateShortcutCalls, AThreadOfAnyApartmentKeepsIt)
{
    for (DWORD const kind : {DWORD{COINIT_MULTITHREADED}, DWORD{COINIT_APARTMENTTHREADED}}) {
        simulated_machine fresh;
        ASSERT_EQ(::CoInitializeEx(nullptr, kind), S_OK);
        EXPECT_EQ(making(), std::nullopt);
        EXPECT_EQ(fresh.shortcut_target(file), target);
        EXPECT_EQ(fresh.live_interfaces(), 0);
        EXPECT_EQ(fresh.calls_of("CoUninitialize"), 1) << "also where CoInitialize failed";
        EXPECT_EQ(fresh.com_apartments(), kind == DWORD{COINIT_MULTITHREADED} ? 0 : 1);
        if (fresh.com_apartments() != 0)
            ::CoUninitialize();
    }
}

} // namespace
} // namespace fl::filesystem::tests
