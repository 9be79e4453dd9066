// The ground that other tests stand on.

#include "platform/contract.hpp"

#include <stdexcept>

namespace contract {

namespace {

using test_support::access_right;
using test_support::link_to;

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
    NEEDS(space.has_share(), "there is no share");
    EXPECT_TRUE(space.share_root().starts_with(u"\\\\fl-server\\share\\"));
    EXPECT_TRUE(space.entries(space.share_root()).empty());
    space.make_file(space.share_root() + u"\\dir\\file");
    EXPECT_TRUE(space.is_file(space.share_root() + u"\\dir\\file"));
}

// Names that only a long prefix keeps as they are, and one of more than 260 units.
TEST(Workspace, TakesEveryName)
{
    workspace space;
    std::u16string const names[] = {u"dir.", u"dir ", u"dir...", std::u16string(250, u'd')};
    for (std::u16string const &name : names) {
        std::u16string const file = space.path(name) + u"\\file. ";
        space.make_file(file, "text");
        EXPECT_TRUE(space.is_directory(space.path(name))) << name.size();
        EXPECT_FALSE(space.is_directory(space.path(u"dir"))) << "nothing is cut off";
        EXPECT_EQ(space.content(file), "text") << name.size();
        EXPECT_EQ(space.entries(space.path(name)), (std::vector<std::u16string>{u"file. "}));
    }
}

TEST(Workspace, ReadsContent)
{
    workspace space;
    std::string const large(10000, 'x');
    space.make_file(space.path(u"large"), large + '\0' + "end");
    space.make_file(space.path(u"empty"));
    EXPECT_EQ(space.content(space.path(u"large")), large + '\0' + "end");
    EXPECT_EQ(space.content(space.path(u"empty")), "");
    EXPECT_THROW(space.content(space.root()), std::exception);
    EXPECT_THROW(space.content(space.path(u"missing")), std::exception);
}

TEST(Workspace, GivesAttributes)
{
    workspace space;
    std::u16string const file = space.path(u"dir\\file");
    std::u16string const dir = space.path(u"dir");
    space.make_file(file, "text");
    for (DWORD const given :
         {DWORD{FILE_ATTRIBUTE_READONLY}, DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}}) {
        space.set_attributes(file, given);
        space.set_attributes(dir, given);
        EXPECT_EQ(space.attributes(file), kept_attributes(given));
        EXPECT_EQ(space.attributes(dir), kept_attributes(given | FILE_ATTRIBUTE_DIRECTORY));
        EXPECT_EQ(space.content(file), "text");
    }
    EXPECT_THROW(space.attributes(space.path(u"missing")), std::exception);
    EXPECT_THROW(space.set_attributes(space.path(u"missing"), 0), std::exception);
}

TEST(Workspace, MakesSymbolicLinks)
{
    workspace space;
    std::u16string const link = space.path(u"new\\link. ");
    if (!space.has_symbolic_links()) {
        EXPECT_THROW(space.make_symbolic_link(link, u"file"), std::runtime_error);
        GTEST_SKIP() << "no symbolic links can be made here";
    }
    space.make_file(space.path(u"file"), "text");
    space.make_symbolic_link(link, u"..\\file");
    EXPECT_EQ(space.link_text(link), u"..\\file");
    EXPECT_TRUE(space.is_link(link));
    EXPECT_TRUE(space.is_file(link));
    EXPECT_THROW(space.content(link), std::exception) << "a link isn't followed";
    std::u16string const to_dir = space.path(u"to dir");
    space.make_symbolic_link(to_dir, u"Q:/a", link_to::directory);
    EXPECT_EQ(space.link_text(to_dir), u"Q:/a") << "as it stands";
    EXPECT_TRUE(space.is_directory(to_dir));
    EXPECT_THROW(space.make_symbolic_link(link, u"other"), std::exception) << "there already";
    EXPECT_THROW(space.make_symbolic_link(space.path(u"file"), u"other"), std::exception);
    EXPECT_EQ(space.link_text(link), u"..\\file");
    EXPECT_EQ(space.content(space.path(u"file")), "text");
}

TEST(Workspace, MakesJunctions)
{
    workspace space;
    std::u16string const junction = space.path(u"new\\junction");
    std::u16string const target = space.path(u"dir");
    if (!space.has_junctions()) {
        EXPECT_THROW(space.make_junction(junction, target), std::runtime_error);
        EXPECT_FALSE(space.exists(junction)) << "no directory is left in its place";
        GTEST_SKIP() << "no junctions can be made here";
    }
    space.make_file(target + u"\\file", "text");
    space.make_junction(junction, target);
    EXPECT_EQ(space.link_text(junction), target);
    EXPECT_TRUE(space.is_link(junction));
    EXPECT_TRUE(space.is_directory(junction));
    EXPECT_EQ(attributes_of(wide(junction) + L"\\file") & FILE_ATTRIBUTE_DIRECTORY, 0U)
        << "the system follows it";
    EXPECT_THROW(space.make_junction(junction, target), std::exception) << "there already";
    EXPECT_THROW(space.make_junction(target, target), std::exception);
}

TEST(Workspace, TellsLinksFromOthers)
{
    workspace space;
    space.make_file(space.path(u"file"));
    for (char16_t const *const name : {u"file", u"missing"}) {
        EXPECT_FALSE(space.is_link(space.path(name)));
        EXPECT_THROW(space.link_text(space.path(name)), std::exception);
    }
    EXPECT_FALSE(space.is_link(space.root()));
    EXPECT_THROW(space.link_text(space.root()), std::exception);
}

TEST(Workspace, MakesShortcuts)
{
    workspace space;
    std::u16string const name = space.path(u"new\\a.lnk");
    std::u16string const deep = space.path(std::u16string(250, u'd') + u"\\b.lnk");
    space.make_shortcut(name, space.path(u"missing"));
    EXPECT_EQ(space.shortcut_target(name), space.path(u"missing"));
    EXPECT_FALSE(space.is_link(name)) << "to the system it is a file like any other";
    space.make_shortcut(name, u"\\\\fl-dead-server\\share\\x");
    EXPECT_EQ(space.shortcut_target(name), u"\\\\fl-dead-server\\share\\x");
    space.make_shortcut(deep, u"C:\\fl-missing");
    EXPECT_EQ(space.shortcut_target(deep), u"C:\\fl-missing") << "in a deep directory";
    space.make_file(space.path(u"text.lnk"), "text");
    EXPECT_THROW(space.shortcut_target(space.path(u"text.lnk")), std::exception);
    EXPECT_THROW(space.shortcut_target(space.path(u"missing.lnk")), std::exception);
}

TEST(Workspace, RemovesWhatIsHardToRemove)
{
    workspace outside;
    std::u16string const kept = outside.path(u"dir\\kept");
    outside.make_file(kept, "text");
    std::u16string former;
    {
        workspace space;
        former = space.root();
        space.make_file(space.path(u"dir. \\" + std::u16string(250, u'd') + u"\\file."));
        space.make_file(space.path(u"locked\\file"));
        space.set_attributes(space.path(u"locked\\file"), FILE_ATTRIBUTE_READONLY);
        space.set_attributes(space.path(u"locked"), FILE_ATTRIBUTE_READONLY);
        if (space.has_symbolic_links()) {
            space.make_symbolic_link(space.path(u"to file"), kept);
            space.make_symbolic_link(space.path(u"to dir"), outside.path(u"dir"),
                                     link_to::directory);
        }
        if (space.has_junctions())
            space.make_junction(space.path(u"junction"), outside.path(u"dir"));
    }
    EXPECT_EQ(outside.content(kept), "text") << "links go without what they lead to";
    EXPECT_TRUE(outside.root() == former || !outside.exists(former)) << "nothing is left behind";
}

/// A call that needs the right, on the folder that holds `dir` and in it `file`.
struct denial_case
{
    access_right right;
    char16_t const *path;
    DWORD (*call)(std::wstring const &root);
};

constexpr denial_case denial_cases[] = {
    {access_right::read_attributes, u"dir\\file",
     [](std::wstring const &root) { return get_file_attributes(root + LR"(\dir\file)"); }},
    {access_right::read, u"dir\\file",
     [](std::wstring const &root) { return code_of_open(root + LR"(\dir\file)"); }},
    {access_right::write, u"dir\\file",
     [](std::wstring const &root) {
         return set_attributes(root + LR"(\dir\file)", FILE_ATTRIBUTE_HIDDEN);
     }},
    {access_right::execute, u"dir\\file",
     [](std::wstring const &root) {
         return code_of_open(root + LR"(\dir\file)", {.access = GENERIC_EXECUTE});
     }},
    {access_right::remove, u"dir\\file",
     [](std::wstring const &root) { return delete_file(root + LR"(\dir\file)"); }},
    {access_right::list, u"dir",
     [](std::wstring const &root) {
         WIN32_FIND_DATAW data;
         HANDLE const search = ::FindFirstFileW((root + LR"(\dir\*)").c_str(), &data);
         DWORD const code = ::GetLastError();
         return search != INVALID_HANDLE_VALUE && ::FindClose(search) ? success : code;
     }},
    {access_right::create_entries, u"dir",
     [](std::wstring const &root) { return create_directory(root + LR"(\dir\new)"); }},
};

TEST(Workspace, DeniesRights)
{
    for (denial_case const &row : denial_cases) {
        workspace space;
        space.make_file(space.path(u"dir\\file"), "text");
        if (!space.can_deny_rights()) {
            EXPECT_THROW(space.deny(space.path(row.path), row.right), std::logic_error);
            continue;
        }
        std::string const right = "right " + std::to_string(static_cast<int>(row.right));
        space.deny(space.path(row.path), row.right);
        EXPECT_EQ(row.call(wide(space.root())), DWORD{ERROR_ACCESS_DENIED}) << right;
        EXPECT_EQ(space.content(space.path(u"dir\\file")), "text") << "not hindered: " << right;
        workspace free;
        free.make_file(free.path(u"dir\\file"), "text");
        EXPECT_EQ(row.call(wide(free.root())), success) << "not denied: " << right;
    }
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
