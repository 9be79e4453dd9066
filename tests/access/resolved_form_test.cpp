// The form behind all others, always with its long prefix, on the simulated machine.

#include "access/resolved_form.hpp"

#include "access/walking.hpp"
#include "support/calls.hpp"

#include <algorithm>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST_ON_MACHINE(ResolvedAccessForm, AlwaysHasItsPrefix)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    EXPECT_EQ(make_resolved_access_form(uR"(C:\a\.\b)"), LR"(\\?\C:\a\b)");
    EXPECT_EQ(make_resolved_access_form(u"x"), LR"(\\?\C:\work\x)");
    EXPECT_EQ(make_resolved_access_form(u"C:\\"), LR"(\\?\C:\)");
    EXPECT_EQ(make_resolved_access_form(uR"(\\s\h\x)"), LR"(\\?\UNC\s\h\x)");
    for (auto const &entry : machine.journal())
        EXPECT_EQ(entry.function, "GetFullPathNameW") << "no disk access";
}

constexpr text_row<wchar_t> resolved_cases[] = {
    {LR"(C:\link\..\x)", LR"(\\?\D:\p\x)", "up from where the link leads"},
    {LR"(\\?\C:\link\..\x)", LR"(\\?\D:\p\x)", "up from where the link leads"},
    {LR"(C:\d\..\link)", LR"(\\?\C:\link)", "a link at the end isn't followed"},
    {LR"(C:\d\..\no)", LR"(\\?\C:\no)", "and nobody asks for what is there"},
    {LR"(C:\d\..\link\)", LR"(\\?\C:\link)", "nor with a separator, which a path object drops"},
    {LR"(C:\link\..)", LR"(\\?\D:\p)", "dots at the end take part"},
    {LR"(C:\link\x\..\.)", LR"(\\?\D:\p\q)", "dots at the end take part"},
    {LR"(C:\d\..)", LR"(\\?\C:\)", "a root keeps its separator"},
    {LR"(C:\..)", LR"(\\?\C:\)", "a root keeps its separator"},
    {LR"(C:\..\a)", LR"(\\?\C:\a)", "with one separator"},
    {LR"(C:\d\..\a)", LR"(\\?\C:\a)", "with one separator"},
    {LR"(C:\d\..\)", LR"(\\?\C:\)", "with one separator"},
    {LR"(C:\d\..\ab)", LR"(\\?\C:\ab)", "a name of two units is no dots"},
    {LR"(C:\d\..\.a)", LR"(\\?\C:\.a)", "a name that begins with one"},
    {LR"(C:\d\..\...)", LR"(\\?\C:\...)", "three are a name"},
    {LR"(C:\d\e\..\f)", LR"(\\?\C:\d\f)", "no root"},
    {LR"(C:\d\e\..\)", LR"(\\?\C:\d)", "without the separator"},
    {LR"(\\s\h\d\..\x)", LR"(\\?\UNC\s\h\x)", "on a share"},
    {LR"(\\s\h\d\..)", LR"(\\?\UNC\s\h\)", "on a share"},
    {LR"(C:\link\x\..\.\no)", LR"(\\?\D:\p\q\no)", "dots within"},
};

TEST_ON_MACHINE(ResolvedAccessForm, ResolvesAllButTheLastElement)
{
    machine.add_drive(u'D').add_share(u"s", u"h").add_directory(uR"(\\s\h\d)");
    machine.add_directory(uR"(D:\p\q\x)").add_directory(uR"(C:\d\e)");
    machine.add_symbolic_link(u"C:\\link", uR"(D:\p\q)", flavour::directory);
    for (auto const &row : resolved_cases) {
        auto const hook = answering(machine, row.text);
        std::wstring form;
        EXPECT_EQ(failure_of([&] { form = make_resolved_access_form(u"C:\\any"); }), std::nullopt)
            << row.why;
        EXPECT_EQ(form, row.expected) << printable(units(row.text)) << ": " << row.why;
    }
}

TEST_ON_MACHINE(ResolvedAccessForm, TellsWhatTheWalkTells)
{
    machine.add_file(u"C:\\f").add_symbolic_link(u"C:\\loop", u"loop", flavour::directory);
    struct
    {
        wchar_t const *full;
        test_support::failure expected;
    } const cases[] = {
        {LR"(C:\f\..\x)", nowhere()},
        {LR"(C:\no\..\x)", not_found(uR"(\\?\C:\no)")},
        {LR"(C:\loop\..\x)", too_many_links(uR"(\\?\C:\loop)")},
    };
    for (auto const &row : cases) {
        auto const hook = answering(machine, row.full);
        EXPECT_FAILURE(make_resolved_access_form(u"C:\\any"), row.expected);
    }
}

} // namespace
} // namespace fl::filesystem::detail
