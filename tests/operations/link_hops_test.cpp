#include <fl/filesystem.hpp>

#include "operations/shown_hops.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

using hops = std::vector<link_hop>;

TEST_IN_WORKSPACE(LinkHops, ThereAreNoneWithoutLinks)
{
    make({uR"(dir\file)", u"plain.lnk.txt"});
    for (char16_t const *name : {uR"(dir\file)", u"dir", uR"(dir\..\dir\.)", u"plain.lnk.txt",
                                 u"no", uR"(no\x)", uR"(dir\file\x)"}) {
        EXPECT_EQ(link_hops(at(name)), hops{}) << printable(name);
        EXPECT_EQ(link_hops(upath(at(name))), hops{}) << printable(name);
    }
    EXPECT_EQ(link_hops(u""), hops{});
    EXPECT_EQ(link_hops(upath()), hops{});
}

TEST_IN_WORKSPACE(LinkHops, ShowsShortcuts)
{
    make_file(uR"(dir\file)");
    work.make_shortcut(at(u"k.lnk"), at(u"dir"));
    work.make_shortcut(at(u"again.lnk"), at(u"k.lnk"));
    hops const expected{
        {at(u"again.lnk"), link_kind::shortcut, at(u"k.lnk"), at(uR"(k.lnk\file)"), false},
        {at(u"k.lnk"), link_kind::shortcut, at(u"dir"), at(uR"(dir\file)"), false},
    };
    EXPECT_EQ(link_hops(at(uR"(again.lnk\file)")), expected);
    EXPECT_EQ(link_hops(upath(at(uR"(again.lnk\file)"))), expected);
    EXPECT_EQ(link_hops(uR"(again.lnk\file)"), expected) << "from the current directory";
    EXPECT_EQ(link_hops(u"./dir//../again.lnk/file/"), expected) << "in any notation";
}

TEST_IN_WORKSPACE(LinkHops, ExamplesOfTheHeader)
{
    if (!work.has_symbolic_links() || !work.has_junctions())
        GTEST_SKIP() << "there are no symbolic links or junctions";
    make_file(uR"(real\file)");
    work.make_symbolic_link(at(u"link"), u"dir", link_to::directory);
    work.make_junction(at(u"dir"), at(u"real"));
    hops const expected{
        {at(u"link"), link_kind::relative_symbolic_link, u"dir", at(uR"(dir\file)"), false},
        {at(u"dir"), link_kind::junction, at(u"real"), at(uR"(real\file)"), false},
    };
    EXPECT_EQ(link_hops(at(uR"(link\file)")), expected);
}

TEST_IN_WORKSPACE(LinkHops, AMissingEndKeepsTheWayToIt)
{
    make_directory(u"dir");
    work.make_shortcut(at(u"k.lnk"), at(u"dir"));
    EXPECT_EQ(link_hops(at(uR"(k.lnk\no)")),
              (hops{{at(u"k.lnk"), link_kind::shortcut, at(u"dir"), at(uR"(dir\no)"), false}}));
}

TEST_IN_WORKSPACE(LinkHops, RefusesWhatHasNoRootToBeginWith)
{
    for (char16_t const *path : {uR"(\\.\COM1)", uR"(\\.\pipe\x)"}) {
        EXPECT_FAILURE(link_hops(path), bad_path_type(path));
        EXPECT_FAILURE(link_hops(upath(path)), bad_path_type(path));
    }
}

TEST(LinkHop, ComparesAllOfIt)
{
    link_hop const one{u"C:\\l", link_kind::junction, u"C:\\d", u"C:\\d", false};
    EXPECT_EQ(one, link_hop(one));
    for (int field = 0; field < 5; ++field) {
        link_hop other = one;
        if (field == 0)
            other.link += u'x';
        else if (field == 1)
            other.kind = link_kind::shortcut;
        else if (field == 2)
            other.text += u'x';
        else if (field == 3)
            other.leads_to.reset();
        else
            other.is_kept = true;
        EXPECT_NE(one, other) << field;
        EXPECT_FALSE(one == other) << field;
    }
    EXPECT_EQ(link_hop(), (link_hop{u"", link_kind::symbolic_link, u"", std::nullopt, false}));
}

} // namespace
} // namespace fl::filesystem::tests
