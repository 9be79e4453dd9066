// The ground that other tests stand on.

#include "platform/contract.hpp"

#include <stdexcept>

namespace contract {

namespace {

TEST(Workspace, IsAFreshFolder)
{
    std::u16string former;
    {
        workspace space;
        former = space.root();
        EXPECT_LE(former.size(), 60U);
        EXPECT_EQ(former.substr(1, 2), u":\\");
        EXPECT_NE(former.back(), u'\\');
        EXPECT_TRUE(space.entries(former).empty());
        EXPECT_EQ(space.path(u"a\\b"), former + u"\\a\\b");
        space.make_file(space.path(u"kept. "), "text");
    }
    workspace next;
    EXPECT_TRUE(next.entries(next.root()).empty());
    EXPECT_TRUE(next.root() == former || !next.exists(former)) << "nothing is left behind";
}

TEST(Workspace, MakesAndFinds)
{
    workspace space;
    std::u16string const deep =
        space.path(std::u16string(200, u'd') + u"\\" + std::u16string(200, u'e') + u"\\inner");
    space.make_directory(deep);
    space.make_directory(deep);
    space.make_file(deep + u"\\b", "text");
    space.make_file(deep + u"\\new\\a");
    EXPECT_EQ(space.entries(deep), (std::vector<std::u16string>{u"b", u"new"}));
    EXPECT_TRUE(space.is_file(deep + u"\\B"));
    EXPECT_FALSE(space.is_directory(deep + u"\\b"));
    EXPECT_TRUE(space.is_directory(deep + u"\\new"));
    EXPECT_FALSE(space.is_file(deep + u"\\new"));
    EXPECT_TRUE(space.exists(deep + u"\\new\\a"));
    EXPECT_FALSE(space.exists(deep + u"\\missing"));
    EXPECT_THROW(space.entries(deep + u"\\missing"), std::exception);
    EXPECT_THROW(space.make_directory(deep + u"\\b"), std::exception);
}

TEST(Workspace, RestoresTheCurrentDirectory)
{
    std::wstring const former = current_directory();
    {
        workspace space;
        space.make_directory(space.path(u"dir"));
        space.change_directory(space.path(u"dir"));
        EXPECT_EQ(current_directory(), in(space, L"dir"));
        EXPECT_THROW(space.change_directory(space.path(u"missing")), std::exception);
    }
    EXPECT_EQ(current_directory(), former);
}

TEST(Workspace, HasAFolderOnTheShare)
{
    workspace space;
    if (!space.has_share())
        GTEST_SKIP() << "there is no share";
    EXPECT_TRUE(space.share_root().starts_with(u"\\\\fl-server\\share\\"));
    EXPECT_TRUE(space.entries(space.share_root()).empty());
    space.make_file(space.share_root() + u"\\dir\\file");
    EXPECT_TRUE(space.is_file(space.share_root() + u"\\dir\\file"));
}

TEST(Workspace, TellsWhetherRightsCanBeDenied)
{
    workspace space;
    if (space.can_deny_rights()) {
        EXPECT_NO_THROW(space.deny_creation(space.root()));
    } else {
        EXPECT_THROW(space.deny_creation(space.root()), std::logic_error);
    }
}

} // namespace

} // namespace contract
