// Links in what is resolved, which only the simulated machine can make at will.

#include <fl/filesystem/operations.hpp>

#include "access/walking.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr text_row<char16_t> link_cases[] = {
    {uR"(C:\f.link)", uR"(C:\d\f)", "a link at the end is followed"},
    {uR"(C:\d.link)", uR"(C:\d)", "to a directory, too"},
    {uR"(C:\d.link\)", uR"(C:\d)", "whatever it ends in"},
    {uR"(C:\d.link\f)", uR"(C:\d\f)", "a link on the way"},
    {uR"(C:\d.link\up)", uR"(C:\d\e\f)", "a link behind a link"},
    {uR"(C:\chain)", uR"(C:\d\f)", "a link to a link to a link"},
    {uR"(C:\d\up)", uR"(C:\d\e\f)", "a text that goes up goes from the link's directory"},
    {uR"(C:\way\back)", uR"(D:\real\t)", "from the real one, where that is another"},
    {uR"(C:\behind)", uR"(D:\real\t)", "going up behind a link goes up from its target"},
    {uR"(C:\junction)", uR"(D:\real\sub)", "a junction"},
    {uR"(C:\junction\x)", uR"(D:\real\sub\x)", "and below one"},
    {uR"(C:\nameless\x)", uR"(D:\real\sub\x)", "a junction that shows people nothing"},
    {uR"(C:\volume)", uR"(C:\volume)", "a volume in a directory is where it is shown"},
    {uR"(C:\volume\real\t)", uR"(C:\volume\real\t)", "and so is what is on it"},
    {uR"(C:\t.lnk)", uR"(D:\real\t)", "a shortcut"},
    {uR"(C:\sub.lnk\x)", uR"(D:\real\sub\x)", "below a shortcut"},
    {uR"(C:\to.lnk)", uR"(D:\real\t)", "a link to a shortcut"},
    {uR"(C:\to share)", uR"(\\s\h\f)", "to a share"},
    {uR"(C:\dedup)", uR"(C:\dedup)", "a reparse point that is no link"},
};

void add_links(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").add_file(uR"(\\s\h\f)");
    machine.add_file(uR"(C:\d\f)").add_file(uR"(C:\d\e\f)").add_file(uR"(D:\real\t)");
    machine.add_file(uR"(D:\real\sub\x)").add_symbolic_link(uR"(C:\f.link)", uR"(C:\d\f)");
    machine.add_symbolic_link(uR"(C:\d.link)", u"d", flavour::directory);
    machine.add_symbolic_link(uR"(C:\d\up)", uR"(..\d\e\f)");
    machine.add_symbolic_link(uR"(C:\chain)", u"chain2");
    machine.add_symbolic_link(uR"(C:\chain2)", u"f.link");
    machine.add_junction(uR"(C:\junction)", uR"(D:\real\sub)");
    machine.add_junction(uR"(C:\way)", uR"(D:\real\sub)");
    machine.add_symbolic_link(uR"(D:\real\sub\back)", uR"(..\t)");
    machine.add_symbolic_link(uR"(C:\behind)", uR"(junction\..\t)");
    machine.add_junction(uR"(C:\nameless)", uR"(\??\D:\real\sub\)", u"");
    machine.add_mount_point(uR"(C:\volume)", u'D').add_shortcut(uR"(C:\t.lnk)", uR"(D:\real\t)");
    machine.add_shortcut(uR"(C:\sub.lnk)", uR"(D:\real\sub)");
    machine.add_symbolic_link(uR"(C:\to.lnk)", u"t.lnk");
    machine.add_symbolic_link(uR"(C:\to share)", uR"(\\s\h\f)");
    machine.add_deduplicated_file(uR"(C:\dedup)");
}

TEST_ON_MACHINE(CanonicalLinks, AreAllFollowed)
{
    add_links(machine);
    expect_rows(link_cases, [](auto text) { return canonical(text); });
    expect_rows(link_cases, [](auto text) { return canonical(upath(text)).native(); });
}

TEST_ON_MACHINE(CanonicalLinks, BelowABase)
{
    add_links(machine);
    EXPECT_EQ(canonical(u"back", uR"(C:\way)"), uR"(D:\real\t)");
    EXPECT_EQ(canonical(u"x", uR"(C:\sub.lnk)"), uR"(D:\real\sub\x)");
    EXPECT_EQ(canonical(uR"(..\d\f)", uR"(C:\way)"), uR"(C:\d\f)")
        << "the text that is joined goes up by text";
}

constexpr char16_t const *dead_ends[] = {uR"(C:\missing)",    uR"(C:\missing\x)",
                                         uR"(C:\below file)", uR"(C:\up from file)",
                                         uR"(C:\no.lnk)",     uR"(C:\hidden\x)"};

TEST_ON_MACHINE(CanonicalLinks, ThatLeadNowhere)
{
    machine.add_file(uR"(C:\f)").add_symbolic_link(uR"(C:\missing)", u"no");
    machine.add_symbolic_link(uR"(C:\below file)", uR"(f\x)");
    machine.add_symbolic_link(uR"(C:\up from file)", uR"(f\..\f)");
    machine.add_shortcut(uR"(C:\no.lnk)", uR"(C:\no)").add_junction(uR"(C:\hidden)", uR"(Q:\d)");
    for (char16_t const *text : dead_ends)
        EXPECT_FAILURE(canonical(text), not_found(u"")) << printable(text);
}

TEST_ON_MACHINE(CanonicalLinks, ATextThatIsNoPathname)
{
    for (char16_t const *text : {uR"(\\s)", uR"(\\?\x)"}) {
        machine.add_symbolic_link(u"C:\\l", text, text, 0);
        EXPECT_FAILURE(canonical(u"C:\\l"), invalid_argument("Invalid Path Type"));
        machine.remove(u"C:\\l");
    }
}

TEST_ON_MACHINE(CanonicalLinks, HundredAndNoMore)
{
    machine.add_file(uR"(C:\l0)");
    for (int i = 1; i <= 101; ++i)
        machine.add_symbolic_link(numbered(uR"(C:\l)", i), numbered(u"l", i - 1));
    EXPECT_EQ(canonical(uR"(C:\l100)"), uR"(C:\l0)");
    EXPECT_FAILURE(canonical(uR"(C:\l101)"), too_many_links(uR"(\\?\C:\l1)"))
        << "the 101st that is met";
}

TEST_ON_MACHINE(CanonicalLinks, Loops)
{
    machine.add_symbolic_link(uR"(C:\self)", u"self");
    machine.add_symbolic_link(uR"(C:\a)", u"b").add_symbolic_link(uR"(C:\b)", u"a");
    EXPECT_FAILURE(canonical(uR"(C:\self)"), too_many_links(uR"(\\?\C:\self)"));
    EXPECT_FAILURE(canonical(uR"(C:\a)"), too_many_links(uR"(\\?\C:\a)"))
        << "the 101st link of a pair is the first one again";
}

// A drive in a link on a network is a drive of the server.
TEST_ON_MACHINE(CanonicalLinks, OnANetworkThatNameADriveStay)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_directory(uR"(C:\x)");
    machine.add_symbolic_link(uR"(\\s\h\d\l)", uR"(C:\x)", flavour::directory);
    machine.add_symbolic_link(uR"(\\s\h\d\near)", u"f").add_file(uR"(\\s\h\d\f)");
    machine.add_shortcut(uR"(\\s\h\d\x.lnk)", uR"(C:\x)");
    text_row<char16_t> const cases[] = {
        {uR"(\\s\h\d\l)", uR"(\\s\h\d\l)", "on a share"},
        {uR"(\\?\UNC\s\h\d\l)", uR"(\\s\h\d\l)", "with a prefix"},
        {uR"(X:\d\l)", uR"(X:\d\l)", "on a mapped drive"},
        {uR"(\\s\h\d\near)", uR"(\\s\h\d\f)", "a relative one is followed"},
        {uR"(X:\d\near)", uR"(X:\d\f)", "on a mapped drive, too"},
        {uR"(\\s\h\d\x.lnk)", uR"(C:\x)", "and so is a shortcut"},
        {uR"(X:\d\x.lnk)", uR"(C:\x)", "which means this machine"},
        {uR"(\\s\h\)", uR"(\\s\h\)", "a share"},
        {uR"(X:\)", uR"(X:\)", "a mapped drive"},
    };
    expect_rows(cases, [](auto text) { return canonical(text); });
}

TEST_ON_MACHINE(CanonicalLinks, ToAPathnameBeyondTheLimitOfAPlainOne)
{
    std::u16string const target = chain_of_size(u"C:", 3000);
    machine.add_file(target).add_symbolic_link(uR"(C:\l)", target);
    EXPECT_EQ(canonical(uR"(C:\l)"), target);
    std::u16string const on_share = uR"(\\s\h)" + target.substr(2);
    machine.add_share(u"s", u"h").add_file(on_share);
    EXPECT_EQ(canonical(on_share), on_share);
}

// The target's text goes to the system up to its first NUL.
TEST_ON_MACHINE(CanonicalLinks, ANulInTheTargetEndsIt)
{
    using namespace std::string_view_literals;
    machine.add_file(uR"(C:\f)").add_symbolic_link(uR"(C:\l)", u"f\0junk"sv, u"f\0junk"sv, 1);
    EXPECT_EQ(canonical(uR"(C:\l)"), uR"(C:\f)");
}

TEST_ON_MACHINE(CanonicalLinks, WhatTheCallerMayNotLookAt)
{
    machine.add_file(uR"(C:\d\f)").add_symbolic_link(uR"(C:\l)", uR"(d\f)");
    machine.deny(uR"(C:\d)", right::list).deny(uR"(C:\d\f)", right::read_attributes);
    EXPECT_FAILURE(canonical(uR"(C:\d\f)"), denied(uR"(\\?\C:\d\f)"));
    EXPECT_FAILURE(canonical(uR"(C:\l)"), denied(uR"(\\?\C:\d\f)"))
        << "the link's target, not the link";
    EXPECT_FAILURE(canonical(u"f", uR"(C:\d)"), denied(uR"(\\?\C:\d\f)"));
    machine.allow(uR"(C:\d\f)", right::read_attributes);
    machine.deny(uR"(C:\d)", right::read_attributes);
    EXPECT_EQ(canonical(uR"(C:\d\f)"), uR"(C:\d\f)") << "a name on the way needn't be looked at";
}

} // namespace
} // namespace fl::filesystem::tests
