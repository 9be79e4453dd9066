// Every kind of link on the way of a pathname, and calls that fail there, which only the
// simulated machine can show.

#include <fl/filesystem.hpp>

#include "access/wild_disk.hpp"
#include "operations/shown_hops.hpp"
#include "support/calls.hpp"

#include <algorithm>

namespace fl::filesystem::tests {
namespace {

using hops = std::vector<link_hop>;

constexpr auto absolute_link = link_kind::symbolic_link;
constexpr auto relative_link = link_kind::relative_symbolic_link;
constexpr auto junction = link_kind::junction;
constexpr auto shortcut = link_kind::shortcut;

void add_links(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (std::u16string const root : {u"C:", u"D:", u"\\\\s\\h"})
        machine.add_file(root + uR"(\d\e\f)");
    machine.add_symbolic_link(uR"(C:\relative)", u"d", flavour::directory);
    machine.add_symbolic_link(uR"(C:\rooted)", uR"(\d\e)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\d\up)", u"../relative/./e", flavour::directory);
    machine.add_symbolic_link(uR"(C:\back)", uR"(absolute\..\f)");
    machine.add_symbolic_link(uR"(C:\absolute)", uR"(D:\d\e)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\drive)", uR"(D:\)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\share)", uR"(\\s\h\d)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\no share)", uR"(\??\C:\d)", uR"(\\s)", 0);
    machine.add_symbolic_link(uR"(C:\dead)", u"no").add_symbolic_link(uR"(C:\file)", uR"(d\e\f)");
    machine.add_junction(uR"(C:\junction)", uR"(C:\d\)");
    machine.add_junction(uR"(C:\nameless)", uR"(\??\D:\d\)", u"");
    machine.add_mount_point(uR"(C:\volume)", u'D').add_deduplicated_file(uR"(C:\dedup)");
    machine.add_shortcut(uR"(C:\k.lnk)", uR"(C:\relative)")
        .add_shortcut(uR"(C:\plain)", uR"(C:\d)");
    machine.add_symbolic_link(uR"(\\s\h\drive)", uR"(C:\d)", flavour::directory);
    machine.add_shortcut(uR"(\\s\h\k.lnk)", uR"(C:\absolute)");
}

TEST_ON_MACHINE(LinkHopsCalls, OfTheEmptyPathAreNoneWhereverTheCurrentDirectoryIs)
{
    add_links(machine);
    machine.set_current_directory(uR"(C:\relative)");
    EXPECT_EQ(link_hops(u""), hops{});
    EXPECT_EQ(link_hops(upath()), hops{});
}

row_of<char16_t const *, hops> const ways[] = {
    {uR"(C:\relative\e\f)",
     {{uR"(C:\relative)", relative_link, u"d", uR"(C:\d\e\f)"}},
     "one in the middle"},
    {uR"(C:\relative)", {{uR"(C:\relative)", relative_link, u"d", uR"(C:\d)"}}, "the end"},
    {uR"(C:\rooted\f)",
     {{uR"(C:\rooted)", relative_link, uR"(\d\e)", uR"(C:\d\e\f)"}},
     "the system marks a text on the drive as relative"},
    {uR"(C:\d\up\f)",
     {{uR"(C:\d\up)", relative_link, uR"(..\relative\.\e)", uR"(C:\d\..\relative\.\e\f)"},
      {uR"(C:\relative)", relative_link, u"d", uR"(C:\d\.\e\f)"}},
     "dots are to come, and what they name is a link again"},
    {uR"(C:\back)",
     {{uR"(C:\back)", relative_link, uR"(absolute\..\f)", uR"(C:\absolute\..\f)"},
      {uR"(C:\absolute)", absolute_link, uR"(D:\d\e)", uR"(D:\d\e\..\f)"}},
     "a .. climbs from where the link ahead of it leads"},
    {uR"(C:\drive)", {{uR"(C:\drive)", absolute_link, uR"(D:\)", uR"(D:\)"}}, "a root"},
    {uR"(C:\drive\d)", {{uR"(C:\drive)", absolute_link, uR"(D:\)", uR"(D:\d)"}}, "below a root"},
    {uR"(C:\share\e)",
     {{uR"(C:\share)", absolute_link, uR"(\\s\h\d)", uR"(\\s\h\d\e)"}},
     "a share, without its prefix"},
    {uR"(C:\junction\e)",
     {{uR"(C:\junction)", junction, uR"(C:\d\)", uR"(C:\d\e)"}},
     "what it shows people"},
    {uR"(C:\nameless\e)",
     {{uR"(C:\nameless)", junction, uR"(D:\d)", uR"(D:\d\e)"}},
     "the system's name without its prefix"},
    {uR"(C:\k.lnk\e)",
     {{uR"(C:\k.lnk)", shortcut, uR"(C:\relative)", uR"(C:\relative\e)"},
      {uR"(C:\relative)", relative_link, u"d", uR"(C:\d\e)"}},
     "a shortcut, to a link"},
    {uR"(C:\volume\d)", {}, "another volume is no link"},
    {uR"(C:\dedup)", {}, "nor is a file that is kept elsewhere"},
    {uR"(C:\plain)", {}, "nor a shortcut by another name"},
    {uR"(\\s\h\drive\e)",
     {{uR"(\\s\h\drive)", absolute_link, uR"(C:\d)", std::nullopt, true}},
     "a drive of the server"},
    {uR"(X:\drive)",
     {{uR"(X:\drive)", absolute_link, uR"(C:\d)", std::nullopt, true}},
     "on a mapped drive, too"},
    {uR"(\\s\h\k.lnk)",
     {{uR"(\\s\h\k.lnk)", shortcut, uR"(C:\absolute)", uR"(C:\absolute)"},
      {uR"(C:\absolute)", absolute_link, uR"(D:\d\e)", std::nullopt, true}},
     "a shortcut means our drive; a link behind it is read as the server's"},
    {uR"(C:\no share\e)",
     {{uR"(C:\no share)", absolute_link, uR"(\\s)", std::nullopt}},
     "a text that can't be followed ends the way"},
    {uR"(C:\dead\e)",
     {{uR"(C:\dead)", relative_link, u"no", uR"(C:\no\e)"}},
     "a target that is missing ends the way"},
    {uR"(C:\k.lnk\no\relative)",
     {{uR"(C:\k.lnk)", shortcut, uR"(C:\relative)", uR"(C:\relative\no\relative)"},
      {uR"(C:\relative)", relative_link, u"d", uR"(C:\d\no\relative)"}},
     "what is missing ends it"},
    {uR"(C:\file\..\relative)",
     {{uR"(C:\relative)", relative_link, u"d", uR"(C:\d)"}},
     "dots of the pathname go by text"},
};

TEST_ON_MACHINE(LinkHopsCalls, Table)
{
    add_links(machine);
    for (auto const &row : ways) {
        std::string const shown = printable(row.given) + (std::string(": ") + row.why);
        EXPECT_EQ(link_hops(row.given), row.expected) << shown;
        EXPECT_EQ(link_hops(upath(row.given)), row.expected) << shown;
    }
}

TEST_ON_MACHINE(LinkHopsCalls, MakesTheCallsOfCanonicalButTheLast)
{
    for (char16_t const *path : {uR"(C:\d\up\f)", uR"(C:\k.lnk)", uR"(C:\nameless\e)",
                                 uR"(\\s\h\k.lnk)", uR"(X:\drive)"}) {
        simulated_machine fresh;
        add_links(fresh);
        canonical(path);
        lines expected = calls(fresh);
        expected.pop_back(); // whether anything is there in the end
        fresh.clear_journal();
        link_hops(path);
        EXPECT_EQ(calls(fresh), expected) << printable(path);
    }
}

TEST_ON_MACHINE(LinkHopsCalls, RoundAndRoundUpToTheHundredth)
{
    machine.add_symbolic_link(u"C:\\ping", u"pong").add_symbolic_link(u"C:\\pong", u"ping");
    hops const found = link_hops(uR"(C:\ping\x)");
    ASSERT_EQ(found.size(), 100U);
    link_hop const ping{u"C:\\ping", relative_link, u"pong", uR"(C:\pong\x)"};
    link_hop const pong{u"C:\\pong", relative_link, u"ping", uR"(C:\ping\x)"};
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_EQ(found[i], i % 2 == 0 ? ping : pong) << i;
}

TEST_ON_MACHINE(LinkHopsCalls, HasNoPrefixAtAnyLength)
{
    std::u16string const deep = std::u16string(200, u'd') + u'\\' + std::u16string(200, u'n');
    machine.add_drive(u'D').add_file(u"D:\\" + deep + u"\\far").add_directory(u"C:\\" + deep);
    machine.add_symbolic_link(u"C:\\" + deep + u"\\l", u"D:\\" + deep, flavour::directory);
    EXPECT_EQ(link_hops(u"C:\\" + deep + u"\\l\\far"),
              (hops{{u"C:\\" + deep + u"\\l", absolute_link, u"D:\\" + deep,
                     u"D:\\" + deep + u"\\far"}}));
}

TEST_ON_MACHINE(LinkHopsCalls, AFailingFullPathIsThrown)
{
    add_links(machine);
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_FAILURE(link_hops(uR"(C:\relative)"), denied(uR"(C:\relative)"));
    EXPECT_FAILURE(link_hops(upath(u"relative")), denied(u"relative"));
}

TEST_ON_MACHINE(LinkHopsCalls, AMountPointThatCantBeComparedEndsTheWay)
{
    add_links(machine);
    machine.add_junction(u"D:\\odd", u"\\??\\Vol\u00E9me{1}\\", u"");
    EXPECT_EQ(link_hops(uR"(C:\drive\odd\x)"),
              (hops{{uR"(C:\drive)", absolute_link, uR"(D:\)", uR"(D:\odd\x)"}}));
    EXPECT_THROW(canonical(uR"(C:\drive\odd\x)"), foundation::ustring::CtypeInvalidCharacter);
}

/// Whether `part` is what is left of the links `all` without some of them. One that can't be
/// read is a name like others, in the pathnames of those behind it.
bool says_part_of(hops const &all, hops const &part)
{
    auto next = all.begin();
    return std::all_of(part.begin(), part.end(), [&](link_hop const &one) {
        next = std::find_if(next, all.end(), [&](link_hop const &other) {
            return one.kind == other.kind && one.text == other.text;
        });
        return next != all.end() && next++ != all.end();
    });
}

TEST_ON_MACHINE(LinkHopsCalls, WhateverFailsLeavesLinksOutAndReleasesAll)
{
    std::u16string const path = uR"(C:\k.lnk\up\f)";
    hops all;
    {
        simulated_machine fresh;
        add_links(fresh);
        all = link_hops(path);
    }
    ASSERT_EQ(all.size(), 4U);
    int shorter = 0;
    sweep(add_links, [&](failing_run const &run) {
        hops found;
        auto const told = failure_of([&] { found = link_hops(path); });
        EXPECT_EQ(told.has_value(), run.nth == 1) << "the first is that of `absolute`";
        EXPECT_TRUE(says_part_of(all, found));
        shorter += run.nth > 1 && found.size() < all.size();
    });
    EXPECT_GT(shorter, 10);
}

// What holds of the links on any way: each leads on, is kept or ends it, and the way fails
// where that of `canonical` fails.
TEST_ON_MACHINE(LinkHopsCalls, WaysOverAnyDisk)
{
    int seen = 0;
    for (unsigned int seed = 1; seed <= 150; ++seed) {
        simulated_machine fresh;
        detail::wild_disk disk(seed);
        disk.build(fresh);
        for (int i = 0; i < 16; ++i) {
            std::u16string const path = disk.pathname();
            std::string const shown = printable(path) + ", seed " + std::to_string(seed);
            std::u16string end;
            hops found;
            auto const thrown = failure_of([&] { end = canonical(path); });
            auto const refused = failure_of([&] { found = link_hops(path); });
            ASSERT_TRUE(!refused || thrown == refused) << shown;
            ASSERT_LE(found.size(), 100U) << shown;
            for (std::size_t hop = 0; hop < found.size(); ++hop) {
                bool const goes_on = found[hop].leads_to.has_value();
                ASSERT_FALSE(found[hop].text.empty()) << shown << found[hop];
                ASSERT_FALSE(goes_on && found[hop].is_kept) << shown << found[hop];
                ASSERT_TRUE(goes_on || found[hop].is_kept || (thrown && hop + 1 == found.size()))
                    << shown << found[hop];
                ASSERT_NE(found[hop].link.substr(0, 4), uR"(\\?\)") << shown;
            }
            seen += static_cast<int>(found.size());
            if (HasFailure())
                return;
        }
    }
    EXPECT_GT(seen, 300);
}

} // namespace
} // namespace fl::filesystem::tests
