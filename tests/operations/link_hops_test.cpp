#include <fl/filesystem.hpp>

#include "operations/shown_hops.hpp"
#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
using hops = std::vector<link_hop>;

TEST(LinkHops, ThereAreNoneWithoutLinks)
{
    workspace work;
    work.make_file(work.path(uR"(dir\file)"));
    work.make_file(work.path(u"plain.lnk.txt"));
    for (char16_t const *name : {uR"(dir\file)", u"dir", uR"(dir\..\dir\.)", u"plain.lnk.txt",
                                 u"no", uR"(no\x)", uR"(dir\file\x)"}) {
        EXPECT_EQ(link_hops(work.path(name)), hops{}) << printable(name);
        EXPECT_EQ(link_hops(upath(work.path(name))), hops{}) << printable(name);
    }
    EXPECT_EQ(link_hops(u""), hops{});
    EXPECT_EQ(link_hops(upath()), hops{});
}

TEST(LinkHops, ShowsShortcuts)
{
    workspace work;
    work.make_file(work.path(uR"(dir\file)"));
    work.make_shortcut(work.path(u"k.lnk"), work.path(u"dir"));
    work.make_shortcut(work.path(u"again.lnk"), work.path(u"k.lnk"));
    hops const expected{
        {work.path(u"again.lnk"), link_kind::shortcut, work.path(u"k.lnk"),
         work.path(uR"(k.lnk\file)"), false},
        {work.path(u"k.lnk"), link_kind::shortcut, work.path(u"dir"), work.path(uR"(dir\file)"),
         false},
    };
    EXPECT_EQ(link_hops(work.path(uR"(again.lnk\file)")), expected);
    EXPECT_EQ(link_hops(upath(work.path(uR"(again.lnk\file)"))), expected);
    work.change_directory(work.root());
    EXPECT_EQ(link_hops(uR"(again.lnk\file)"), expected) << "from the current directory";
    EXPECT_EQ(link_hops(u"./dir//../again.lnk/file/"), expected) << "in any notation";
}

TEST(LinkHops, ExamplesOfTheHeader)
{
    workspace work;
    if (!work.has_symbolic_links() || !work.has_junctions())
        GTEST_SKIP() << "there are no symbolic links or junctions";
    work.make_file(work.path(uR"(real\file)"));
    work.make_symbolic_link(work.path(u"link"), u"dir", link_to::directory);
    work.make_junction(work.path(u"dir"), work.path(u"real"));
    hops const expected{
        {work.path(u"link"), link_kind::relative_symbolic_link, u"dir", work.path(uR"(dir\file)"),
         false},
        {work.path(u"dir"), link_kind::junction, work.path(u"real"), work.path(uR"(real\file)"),
         false},
    };
    EXPECT_EQ(link_hops(work.path(uR"(link\file)")), expected);
}

TEST(LinkHops, AMissingEndKeepsTheWayToIt)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.make_shortcut(work.path(u"k.lnk"), work.path(u"dir"));
    EXPECT_EQ(link_hops(work.path(uR"(k.lnk\no)")),
              (hops{{work.path(u"k.lnk"), link_kind::shortcut, work.path(u"dir"),
                     work.path(uR"(dir\no)"), false}}));
}

TEST(LinkHops, RefusesWhatHasNoRootToBeginWith)
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
} // namespace fl::filesystem
