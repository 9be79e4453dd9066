// Reading a shortcut on the simulated machine: every call, and what each failing one
// leaves behind.

#include "links/shortcut.hpp"

#include "support/calls.hpp"

#include <objbase.h>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr unsigned int untouched = 77;

TEST_ON_MACHINE(ReadShortcutTargetCalls, InOrder)
{
    machine.add_directory(u"C:\\dir").add_shortcut(u"C:\\a.lnk", u"C:\\dir");
    unsigned int error = untouched;
    EXPECT_EQ(read_shortcut_target(L"C:\\a.lnk", error), L"C:\\dir");
    EXPECT_EQ(error, untouched);
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{"CoInitialize()", "CoCreateInstance() flags 1", "IUnknown::QueryInterface()",
                     R"(IPersistFile::Load(C:\a.lnk))", "IShellLinkW::Resolve()",
                     "IShellLinkW::GetPath() flags 4", "CoUninitialize()"}));
}

TEST_ON_MACHINE(ReadShortcutTargetCalls, NoneForAnotherName)
{
    machine.add_directory(u"C:\\dir").add_shortcut(u"C:\\a.LNK", u"C:\\dir");
    for (wchar_t const *const name : {L"C:\\a.LNK", L"C:\\dir", L".lnk", L""}) {
        unsigned int error = untouched;
        EXPECT_EQ(read_shortcut_target(name, error), L"");
        EXPECT_EQ(error, untouched);
    }
    EXPECT_EQ(machine.journal().size(), 0U);
}

constexpr row_of<wchar_t const *, char16_t const *> prefix_cases[] = {
    {LR"(C:\a.lnk)", uR"(C:\a.lnk)", "none"},
    {LR"(\\?\C:\a.lnk)", uR"(C:\a.lnk)", "of a drive"},
    {LR"(\\?\UNC\server\share\a.lnk)", uR"(\\server\share\a.lnk)", "of a server"},
    {LR"(\\server\share\a.lnk)", uR"(\\server\share\a.lnk)", "a server without one"},
    {LR"(a.lnk)", u"a.lnk", "a relative pathname"},
};

TEST_ON_MACHINE(ReadShortcutTargetCalls, LoadWithoutALongPrefix)
{
    machine.add_share(u"server", u"share").add_directory(u"C:\\dir");
    machine.add_shortcut(u"C:\\a.lnk", u"C:\\dir");
    machine.add_shortcut(uR"(\\server\share\a.lnk)", u"C:\\dir");
    expect_rows(prefix_cases, [&](auto path) {
        machine.clear_journal();
        unsigned int error = untouched;
        EXPECT_EQ(read_shortcut_target(path, error), L"C:\\dir");
        return machine.journal().at(3).text;
    });
}

TEST_ON_MACHINE(ReadShortcutTargetCalls, LoadAPrefixedNameOfAnyLengthWithoutIt)
{
    std::u16string const bare =
        u"C:\\" + std::u16string(200, u'd') + u'\\' + std::u16string(200, u'n') + u".lnk";
    unsigned int error = untouched;
    read_shortcut_target(wide(uR"(\\?\)" + bare), error);
    EXPECT_EQ(machine.journal().at(3).text, bare);
}

/// The calls whose failure is an HRESULT, by their number.
struct step_case
{
    char const *function;
    std::optional<unsigned int> code_of_access_denied; ///< of 0x80070005; none: no error
    char const *target;
    char const *why;
};

constexpr step_case step_cases[] = {
    {"CoInitialize", 14077, "", "ignored; then no object can be made: 0x800401F0"},
    {"CoCreateInstance", 5, "", "no object"},
    {"IUnknown::QueryInterface", 5, "", "no other interface"},
    {"IPersistFile::Load", 5, "", "no file"},
    {"IShellLinkW::Resolve", 5, "", "no target"},
    {"IShellLinkW::GetPath", 5, "", "no path"},
    {"CoUninitialize", std::nullopt, "C:\\dir", "nobody asks"},
};

TEST_ON_MACHINE(ReadShortcutTargetCalls, EachCallThatFails)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_directory(u"C:\\dir").add_shortcut(u"C:\\a.lnk", u"C:\\dir");
    };
    auto const reading = [](failing_run const &run) {
        unsigned int error = untouched;
        std::wstring const target = read_shortcut_target(L"C:\\a.lnk", error);
        if (!run.is_broken())
            return;
        ASSERT_LE(run.nth, static_cast<int>(std::size(step_cases)));
        step_case const &row = step_cases[run.nth - 1];
        EXPECT_EQ(printable(units(target)), row.target) << row.why;
        EXPECT_EQ(error, row.code_of_access_denied.value_or(untouched)) << row.why;
        EXPECT_EQ(run.machine.calls_of(row.function), 1) << row.why;
        EXPECT_EQ(run.machine.calls_of("CoUninitialize"), 1) << row.why;
    };
    EXPECT_EQ(sweep(build, reading, {static_cast<DWORD>(E_ACCESSDENIED)}),
              static_cast<int>(std::size(step_cases)));
}

TEST_ON_MACHINE(ReadShortcutTargetCalls, StopAtTheFirstFailure)
{
    struct
    {
        char const *function;
        std::size_t calls; ///< all of them, `CoUninitialize` included
    } const cases[] = {{"CoCreateInstance", 3},
                       {"IUnknown::QueryInterface", 4},
                       {"IPersistFile::Load", 5},
                       {"IShellLinkW::Resolve", 6},
                       {"IShellLinkW::GetPath", 7}};
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\dir").add_shortcut(u"C:\\a.lnk", u"C:\\dir");
        sure_fault const fault = fresh.fail_every_call_on(row.function, static_cast<DWORD>(E_FAIL));
        unsigned int error = untouched;
        EXPECT_EQ(read_shortcut_target(L"C:\\a.lnk", error), L"") << row.function;
        EXPECT_EQ(error, 14077U) << row.function;
        EXPECT_EQ(fresh.journal().size(), row.calls) << row.function;
        EXPECT_EQ(fresh.journal().back().function, "CoUninitialize") << row.function;
        expect_nothing_open(fresh);
    }
}

// The target is 259 units and the NUL at most: the shell cuts what is longer.
TEST_ON_MACHINE(ReadShortcutTargetCalls, TargetsAreCutToTheBuffer)
{
    for (std::size_t const size : {258U, 259U, 260U, 300U}) {
        simulated_machine fresh;
        std::u16string const target =
            u"\\\\?\\C:\\" + std::u16string(100, u'd') + u'\\' + std::u16string(size - 108, u'n');
        fresh.add_file(target).add_shortcut(u"C:\\a.lnk", target);
        unsigned int error = untouched;
        EXPECT_EQ(units(read_shortcut_target(L"C:\\a.lnk", error)), target.substr(0, 259)) << size;
        EXPECT_EQ(error, untouched) << size;
    }
}

TEST_ON_MACHINE(ReadShortcutTargetCalls, AThreadOfAnotherApartmentGoesOnInIt)
{
    machine.add_directory(u"C:\\dir").add_shortcut(u"C:\\a.lnk", u"C:\\dir");
    ASSERT_EQ(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    unsigned int error = untouched;
    EXPECT_EQ(read_shortcut_target(L"C:\\a.lnk", error), L"C:\\dir");
    EXPECT_EQ(error, untouched);
    EXPECT_EQ(machine.calls_of("CoUninitialize"), 1) << "also where CoInitialize failed";
}

TEST_ON_MACHINE(ReadShortcutTargetCalls, AThreadOfTheSameApartmentKeepsIt)
{
    machine.add_directory(u"C:\\dir").add_shortcut(u"C:\\a.lnk", u"C:\\dir");
    ASSERT_EQ(::CoInitialize(nullptr), S_OK);
    unsigned int error = untouched;
    EXPECT_EQ(read_shortcut_target(L"C:\\a.lnk", error), L"C:\\dir");
    EXPECT_EQ(machine.com_apartments(), 1);
    ::CoUninitialize();
}

} // namespace
} // namespace fl::filesystem::detail
