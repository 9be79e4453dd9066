// What the headers warn callers of: where an operation reaches further than its argument
// seems to say, or not as far.

#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

#include <windows.h>

namespace fl::filesystem {
namespace {

using namespace test_support;
using std::filesystem::copy_options;

// Full stops, blanks and NULs

TEST(Warnings, ANameOfFullStopsIsTheDirectoryAheadOfIt)
{
    for (char16_t const *name : {u"...", u"....", u". .", u".. ."}) {
        workspace work;
        std::u16string const asked = work.path(u"x\\") + name;
        work.make_file(work.path(uR"(x\y\kept)"));
        rename(asked, work.path(u"renamed"));
        EXPECT_EQ(work.entries(work.root()), names{u"renamed"}) << printable(name);
        work.make_directory(work.path(u"x"));
        remove(asked);
        EXPECT_EQ(work.entries(work.root()), names{u"renamed"}) << printable(name);
        work.make_file(work.path(uR"(x\y\lost)"));
        remove_all(asked);
        EXPECT_EQ(work.entries(work.root()), names{u"renamed"}) << printable(name);
    }
}

std::u16string with_nul(std::u16string const &path)
{
    return path + u'\0' + uR"(\kept)";
}

TEST(Warnings, ANulEndsThePathnameOfWhatIsRemoved)
{
    workspace work;
    work.make_file(work.path(uR"(tree\kept)"));
    for (auto const call : {static_cast<void (*)(std::u16string const &)>(remove), remove_file}) {
        work.make_file(work.path(u"file"));
        EXPECT_EQ(failure_of([&] { call(with_nul(work.path(u"file"))); }), std::nullopt);
    }
    work.make_directory(work.path(u"empty"));
    remove_directory(with_nul(work.path(u"empty")));
    EXPECT_EQ(work.entries(work.root()), names{u"tree"});
    remove_all(with_nul(work.path(u"tree")));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(Warnings, ANulEndsThePathnamesOfWhatIsMade)
{
    workspace work;
    create_directory(with_nul(work.path(u"a")));
    create_directories(with_nul(work.path(uR"(b\c)")));
    copy_directory(with_nul(work.path(u"a")), with_nul(work.path(u"d")));
    work.make_file(work.path(u"f"), "f");
    copy_file(with_nul(work.path(u"f")), with_nul(work.path(u"g")));
    copy(with_nul(work.path(u"f")), with_nul(work.path(u"h")));
    rename(with_nul(work.path(u"h")), with_nul(work.path(u"i")));
    create_shortcut(with_nul(work.path(u"f")), with_nul(work.path(u"k.lnk")));
    EXPECT_EQ(work.entries(work.root()), (names{u"a", u"b", u"d", u"f", u"g", u"i", u"k.lnk"}));
    EXPECT_EQ(work.entries(work.path(u"b")), names{u"c"});
    permissions(with_nul(work.path(u"f")), 0);
    EXPECT_EQ(work.attributes(work.path(u"f")) & FILE_ATTRIBUTE_READONLY,
              DWORD{FILE_ATTRIBUTE_READONLY});
    work.set_attributes(work.path(u"f"), FILE_ATTRIBUTE_NORMAL);
    change_current_path(with_nul(work.path(u"b")));
    EXPECT_EQ(get_current_path(), work.path(u"b"));
}

TEST(Warnings, ANulEndsTheTextAndThePlaceOfALink)
{
    workspace work;
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    create_symlink(with_nul(u"t"), with_nul(work.path(u"l")), 0);
    copy_symlink(with_nul(work.path(u"l")), with_nul(work.path(u"m")));
    EXPECT_EQ(work.entries(work.root()), (names{u"l", u"m"}));
    EXPECT_EQ(work.link_text(work.path(u"m")), u"t");
}

TEST(Warnings, CreateDirectoriesOfARootFindsItEvenIfThereIsNone)
{
    EXPECT_FAILURE(create_directories(u"Q:\\"), file_exists(u"Q:\\"));
    EXPECT_FAILURE(create_directories(uR"(\\no-server)"), file_exists(uR"(\\no-server)"));
}

// What a copy writes to

TEST(Warnings, OverwritingWritesIntoEveryHardLinkOfTheTarget)
{
    workspace work;
    work.make_file(work.path(u"new"), "new");
    work.make_file(work.path(u"to"), "former");
    copy(work.path(u"to"), work.path(u"other"), copy_options::create_hard_links);
    copy_file(work.path(u"new"), work.path(u"to"), copy_options::overwrite_existing);
    EXPECT_EQ(work.content(work.path(u"other")), "new");
    EXPECT_TRUE(equivalent(work.path(u"to"), work.path(u"other")));
}

TEST(Warnings, OverwritingGoesThroughASymbolicLink)
{
    workspace work;
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    work.make_file(work.path(u"new"), "new");
    work.make_file(work.path(u"target"), "former");
    work.make_symbolic_link(work.path(u"to"), u"target");
    copy_file(work.path(u"new"), work.path(u"to"), copy_options::overwrite_existing);
    EXPECT_EQ(work.content(work.path(u"target")), "new");
    EXPECT_TRUE(work.is_link(work.path(u"to")));
}

TEST(Warnings, OverwritingATreeWritesWhereItsLinksLead)
{
    workspace work;
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    work.make_file(work.path(uR"(from\f)"), "new");
    work.make_file(work.path(uR"(from\d\g)"), "new");
    work.make_file(work.path(uR"(outside\f)"), "former");
    work.make_symbolic_link(work.path(uR"(to\f)"), uR"(..\outside\f)");
    work.make_symbolic_link(work.path(uR"(to\d)"), uR"(..\outside)", link_to::directory);
    copy(work.path(u"from"), work.path(u"to"),
         copy_options::recursive | copy_options::overwrite_existing);
    EXPECT_EQ(work.entries(work.path(u"outside")), (names{u"f", u"g"}));
    EXPECT_EQ(work.content(work.path(uR"(outside\f)")), "new");
}

TEST(Warnings, AHardLinkOfALinkIsOneMoreNameOfTheLink)
{
    workspace work;
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    work.make_file(work.path(u"target"));
    work.make_symbolic_link(work.path(u"link"), u"target");
    copy(work.path(u"link"), work.path(u"name"), copy_options::create_hard_links);
    EXPECT_TRUE(work.is_link(work.path(u"name")));
    EXPECT_EQ(work.link_text(work.path(u"name")), u"target");
}

} // namespace
} // namespace fl::filesystem
