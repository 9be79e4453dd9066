#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_IN_WORKSPACE(RemoveAll, TakesATreeWithAllThatIsInIt)
{
    make({{uR"(t\a\b\c\file)", "content"}, uR"(t\a\empty\)", uR"(t\file)", u"other"});
    remove_all(at(u"t"));
    EXPECT_EQ(entries(), names{u"other"});
}

TEST_IN_WORKSPACE(RemoveAll, TakesAFileOrAnEmptyDirectory)
{
    make({u"file", u"dir\\"});
    remove_all(at(u"file"));
    EXPECT_EQ(entries(), names{u"dir"});
    remove_all(upath(at(u"dir")));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(RemoveAll, PassesOverTheEmptyPath)
{
    make_file(u"file");
    remove_all(u"");
    remove_all(upath());
    EXPECT_EQ(entries(), names{u"file"});
}

TEST_IN_WORKSPACE(RemoveAll, OfAMissingNameNamesItsForm)
{
    auto const expected = not_found(at(u"no"));
    EXPECT_FAILURE(remove_all(at(u"no")), expected);
    EXPECT_FAILURE(remove_all(u"no"), expected);
    EXPECT_FAILURE(remove_all(upath(u"no/")), expected);
    EXPECT_FAILURE(remove_all(uR"(\\?\)" + at(u"no")), expected);
    EXPECT_FAILURE(remove_all(at(uR"(no\x)")), not_found(at(uR"(no\x)")));
    std::u16string const overlong = chain_of_size(work.root(), 350);
    EXPECT_FAILURE(remove_all(overlong), not_found(uR"(\\?\)" + overlong));
}

TEST_IN_WORKSPACE(RemoveAll, ReachesTheDiskByAnyNotation)
{
    for (char16_t const *name : {u"a", u"b", u"c", u"d", u"e", u"f", u"g"})
        make_file(std::u16string(name) + uR"(\sub\file)");
    enter(u"g");
    make_directory(u"kept");
    remove_all(u"../a");
    remove_all(at(uR"(kept\..\b)"));
    remove_all(at(uR"(.\c\)"));
    remove_all(uR"(\\?\)" + at(u"d"));
    remove_all(work.root().substr(2) + uR"(\e)");
    remove_all(at(u"F"));
    EXPECT_EQ(entries(), (names{u"g", u"kept"}));
    remove_all(u"sub");
    EXPECT_EQ(entries(u"g"), names{});
}

/// Without a long prefix the system would cut these names, and miss them or take others.
TEST_IN_WORKSPACE(RemoveAll, TakesNamesThatEndInAFullStopOrBlank)
{
    for (char16_t const *name : {u"foo.", u"foo", u"bar ", u"bar", u"...", u". .", u"a. "}) {
        work.make_file(at(uR"(t\files\)") + name);
        work.make_file(at(uR"(t\directories\)") + name + uR"(\x)");
        work.make_file(at(uR"(t\directories\)") + name + uR"(\sub)" + name + uR"(\y.)");
    }
    make_file(u"foo");
    remove_all(at(u"t"));
    EXPECT_EQ(entries(), names{u"foo"});
}

TEST_IN_WORKSPACE(RemoveAll, OfANameThatEndsInAFullStopIsOfItsTwin)
{
    make({uR"(foo.\x)", uR"(foo\y)"});
    remove_all(at(u"foo."));
    EXPECT_EQ(entries(), names{u"foo."}) << "the system cuts what a caller gives";
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

TEST_IN_WORKSPACE(RemoveAll, TakesDirectoriesAroundTheLimitOfPathnames)
{
    for (std::size_t size = 240; size <= 264; ++size)
        expect_removal(work, work.root(), size);
}

TEST_IN_WORKSPACE(RemoveAll, TakesDirectoriesAroundTheLimitOfPathnamesOnAShare)
{
    NEEDS(work.has_share(), "there is no share");
    for (std::size_t size = 240; size <= 264; ++size)
        expect_removal(work, work.share_root(), size);
}

TEST_IN_WORKSPACE(RemoveAll, TakesATreeFarBeyondTheLimit)
{
    std::u16string path = at(u"t");
    for (int level = 0; level < 6; ++level)
        path += u'\\' + std::u16string(200, u'd') + u'.';
    work.make_file(path + u"\\f");
    remove_all(at(u"t"));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(RemoveAll, RefusesWhatIsNoPathnameOfADisk)
{
    EXPECT_FAILURE(remove_all(uR"(\\.\COM1)"), bad_path_type(uR"(\\.\COM1)"));
}

} // namespace
} // namespace fl::filesystem::tests
