// What the headers warn callers of: where an operation reaches further than its argument
// seems to say, or not as far.

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <windows.h>

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

// Full stops, blanks and NULs

TEST_IN_WORKSPACE(Warnings, ANameOfFullStopsIsTheDirectoryAheadOfIt)
{
    for (char16_t const *name : {u"...", u"....", u". .", u".. ."}) {
        workspace fresh;
        std::u16string const asked = fresh.path(u"x\\") + name;
        fresh.make_file(fresh.path(uR"(x\y\kept)"));
        rename(asked, fresh.path(u"renamed"));
        EXPECT_EQ(fresh.entries(fresh.root()), names{u"renamed"}) << printable(name);
        fresh.make_directory(fresh.path(u"x"));
        remove(asked);
        EXPECT_EQ(fresh.entries(fresh.root()), names{u"renamed"}) << printable(name);
        fresh.make_file(fresh.path(uR"(x\y\lost)"));
        remove_all(asked);
        EXPECT_EQ(fresh.entries(fresh.root()), names{u"renamed"}) << printable(name);
    }
}

std::u16string with_nul(std::u16string const &path)
{
    return path + u'\0' + uR"(\kept)";
}

TEST_IN_WORKSPACE(Warnings, ANulEndsThePathnameOfWhatIsRemoved)
{
    make_file(uR"(tree\kept)");
    for (auto const call : {static_cast<void (*)(std::u16string const &)>(remove), remove_file}) {
        make_file(u"file");
        EXPECT_EQ(failure_of([&] { call(with_nul(at(u"file"))); }), std::nullopt);
    }
    make_directory(u"empty");
    remove_directory(with_nul(at(u"empty")));
    EXPECT_EQ(entries(), names{u"tree"});
    remove_all(with_nul(at(u"tree")));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(Warnings, ANulEndsThePathnamesOfWhatIsMade)
{
    create_directory(with_nul(at(u"a")));
    create_directories(with_nul(at(uR"(b\c)")));
    copy_directory(with_nul(at(u"a")), with_nul(at(u"d")));
    make_file(u"f", "f");
    copy_file(with_nul(at(u"f")), with_nul(at(u"g")));
    copy(with_nul(at(u"f")), with_nul(at(u"h")));
    rename(with_nul(at(u"h")), with_nul(at(u"i")));
    create_shortcut(with_nul(at(u"f")), with_nul(at(u"k.lnk")));
    EXPECT_EQ(entries(), (names{u"a", u"b", u"d", u"f", u"g", u"i", u"k.lnk"}));
    EXPECT_EQ(entries(u"b"), names{u"c"});
    permissions(with_nul(at(u"f")), 0);
    EXPECT_EQ(work.attributes(at(u"f")) & FILE_ATTRIBUTE_READONLY, DWORD{FILE_ATTRIBUTE_READONLY});
    work.set_attributes(at(u"f"), FILE_ATTRIBUTE_NORMAL);
    change_current_path(with_nul(at(u"b")));
    EXPECT_EQ(get_current_path(), at(u"b"));
}

TEST_IN_WORKSPACE(Warnings, ANulEndsTheTextAndThePlaceOfALink)
{
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    create_symlink(with_nul(u"t"), with_nul(at(u"l")), 0);
    copy_symlink(with_nul(at(u"l")), with_nul(at(u"m")));
    EXPECT_EQ(entries(), (names{u"l", u"m"}));
    EXPECT_EQ(work.link_text(at(u"m")), u"t");
}

TEST_IN_WORKSPACE(Warnings, CreateDirectoriesOfARootFindsItEvenIfThereIsNone)
{
    EXPECT_FAILURE(create_directories(u"Q:\\"), file_exists(u"Q:\\"));
    EXPECT_FAILURE(create_directories(uR"(\\no-server)"), file_exists(uR"(\\no-server)"));
}

// What a copy writes to

TEST_IN_WORKSPACE(Warnings, OverwritingWritesIntoEveryHardLinkOfTheTarget)
{
    make({{u"new", "new"}, {u"to", "former"}});
    copy(at(u"to"), at(u"other"), copy_options::create_hard_links);
    copy_file(at(u"new"), at(u"to"), copy_options::overwrite_existing);
    EXPECT_EQ(work.content(at(u"other")), "new");
    EXPECT_TRUE(equivalent(at(u"to"), at(u"other")));
}

TEST_IN_WORKSPACE(Warnings, OverwritingGoesThroughASymbolicLink)
{
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    make({{u"new", "new"}, {u"target", "former"}});
    work.make_symbolic_link(at(u"to"), u"target");
    copy_file(at(u"new"), at(u"to"), copy_options::overwrite_existing);
    EXPECT_EQ(work.content(at(u"target")), "new");
    EXPECT_TRUE(work.is_link(at(u"to")));
}

TEST_IN_WORKSPACE(Warnings, OverwritingATreeWritesWhereItsLinksLead)
{
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    make({{uR"(from\f)", "new"}, {uR"(from\d\g)", "new"}, {uR"(outside\f)", "former"}});
    work.make_symbolic_link(at(uR"(to\f)"), uR"(..\outside\f)");
    work.make_symbolic_link(at(uR"(to\d)"), uR"(..\outside)", link_to::directory);
    copy(at(u"from"), at(u"to"), copy_options::recursive | copy_options::overwrite_existing);
    EXPECT_EQ(entries(u"outside"), (names{u"f", u"g"}));
    EXPECT_EQ(work.content(at(uR"(outside\f)")), "new");
}

TEST_IN_WORKSPACE(Warnings, AHardLinkOfALinkIsOneMoreNameOfTheLink)
{
    NEEDS(work.has_symbolic_links(), "this system makes no symbolic links");
    make_file(u"target");
    work.make_symbolic_link(at(u"link"), u"target");
    copy(at(u"link"), at(u"name"), copy_options::create_hard_links);
    EXPECT_TRUE(work.is_link(at(u"name")));
    EXPECT_EQ(work.link_text(at(u"name")), u"target");
}

} // namespace
} // namespace fl::filesystem::tests
