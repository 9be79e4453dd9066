#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
using test_support::failure;

TEST(RemoveAll, TakesATreeWithAllThatIsInIt)
{
    workspace work;
    work.make_file(work.path(uR"(t\a\b\c\file)"), "content");
    work.make_directory(work.path(uR"(t\a\empty)"));
    work.make_file(work.path(uR"(t\file)"));
    work.make_file(work.path(u"other"));
    remove_all(work.path(u"t"));
    EXPECT_EQ(work.entries(work.root()), names{u"other"});
}

TEST(RemoveAll, TakesAFileOrAnEmptyDirectory)
{
    workspace work;
    work.make_file(work.path(u"file"));
    work.make_directory(work.path(u"dir"));
    remove_all(work.path(u"file"));
    EXPECT_EQ(work.entries(work.root()), names{u"dir"});
    remove_all(upath(work.path(u"dir")));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(RemoveAll, PassesOverTheEmptyPath)
{
    workspace work;
    work.change_directory(work.root());
    work.make_file(work.path(u"file"));
    remove_all(u"");
    remove_all(upath());
    EXPECT_EQ(work.entries(work.root()), names{u"file"});
}

TEST(RemoveAll, OfAMissingNameNamesItsForm)
{
    workspace work;
    work.change_directory(work.root());
    auto const expected = not_found(work.path(u"no"));
    EXPECT_FAILURE(remove_all(work.path(u"no")), expected);
    EXPECT_FAILURE(remove_all(u"no"), expected);
    EXPECT_FAILURE(remove_all(upath(u"no/")), expected);
    EXPECT_FAILURE(remove_all(uR"(\\?\)" + work.path(u"no")), expected);
    EXPECT_FAILURE(remove_all(work.path(uR"(no\x)")), not_found(work.path(uR"(no\x)")));
    std::u16string const overlong =
        work.path(std::u16string(200, u'd') + u'\\') + std::u16string(100, u'x');
    EXPECT_FAILURE(remove_all(overlong), not_found(uR"(\\?\)" + overlong));
}

TEST(RemoveAll, ReachesTheDiskByAnyNotation)
{
    workspace work;
    for (char16_t const *name : {u"a", u"b", u"c", u"d", u"e", u"f", u"g"})
        work.make_file(work.path(std::u16string(name) + uR"(\sub\file)"));
    work.change_directory(work.path(u"g"));
    work.make_directory(work.path(u"kept"));
    remove_all(u"../a");
    remove_all(work.path(uR"(kept\..\b)"));
    remove_all(work.path(uR"(.\c\)"));
    remove_all(uR"(\\?\)" + work.path(u"d"));
    remove_all(work.root().substr(2) + uR"(\e)");
    remove_all(work.path(u"F"));
    EXPECT_EQ(work.entries(work.root()), (names{u"g", u"kept"}));
    remove_all(u"sub");
    EXPECT_EQ(work.entries(work.path(u"g")), names{});
}

/// Without a long prefix the system would cut these names, and miss them or take others.
TEST(RemoveAll, TakesNamesThatEndInAFullStopOrBlank)
{
    workspace work;
    for (char16_t const *name : {u"foo.", u"foo", u"bar ", u"bar", u"...", u". .", u"a. "}) {
        work.make_file(work.path(uR"(t\files\)") + name);
        work.make_file(work.path(uR"(t\directories\)") + name + uR"(\x)");
        work.make_file(work.path(uR"(t\directories\)") + name + uR"(\sub)" + name + uR"(\y.)");
    }
    work.make_file(work.path(u"foo"));
    remove_all(work.path(u"t"));
    EXPECT_EQ(work.entries(work.root()), names{u"foo"});
}

TEST(RemoveAll, OfANameThatEndsInAFullStopIsOfItsTwin)
{
    workspace work;
    work.make_file(work.path(uR"(foo.\x)"));
    work.make_file(work.path(uR"(foo\y)"));
    remove_all(work.path(u"foo."));
    EXPECT_EQ(work.entries(work.root()), names{u"foo."}) << "the system cuts what a caller gives";
}

std::u16string directory_of(std::u16string parent, std::size_t size)
{
    parent += u"\\t\\" + std::u16string(100, u'd') + u'\\';
    return parent + std::u16string(size - parent.size(), u'n');
}

/// A directory of exactly `size` units, whose pattern and entries are two units longer,
/// and whose entries have entries, too.
void expect_removal(workspace &work, std::u16string const &parent, std::size_t size)
{
    std::u16string const directory = directory_of(parent, size);
    for (std::u16string const &top : {parent + u"\\t", directory}) {
        work.make_file(directory + u"\\f");
        work.make_file(directory + u"\\d\\x");
        work.make_file(directory + u"\\d.\\x ");
        work.make_file(directory + u"\\name of some length\\x");
        EXPECT_EQ(failure_of([&] { remove_all(top); }), std::nullopt) << size;
        EXPECT_FALSE(work.exists(top)) << size;
    }
    remove_all(parent + u"\\t");
    EXPECT_EQ(work.entries(parent), names{}) << size;
}

TEST(RemoveAll, TakesDirectoriesAroundTheLimitOfPathnames)
{
    workspace work;
    for (std::size_t size = 240; size <= 264; ++size)
        expect_removal(work, work.root(), size);
}

TEST(RemoveAll, TakesDirectoriesAroundTheLimitOfPathnamesOnAShare)
{
    workspace work;
    NEEDS(work.has_share(), "there is no share");
    for (std::size_t size = 240; size <= 264; ++size)
        expect_removal(work, work.share_root(), size);
}

TEST(RemoveAll, TakesATreeFarBeyondTheLimit)
{
    workspace work;
    std::u16string path = work.path(u"t");
    for (int level = 0; level < 6; ++level)
        path += u'\\' + std::u16string(200, u'd') + u'.';
    work.make_file(path + u"\\f");
    remove_all(work.path(u"t"));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(RemoveAll, RefusesWhatIsNoPathnameOfADisk)
{
    EXPECT_FAILURE(remove_all(uR"(\\.\COM1)"), bad_path_type(uR"(\\.\COM1)"));
}

} // namespace
} // namespace fl::filesystem
