#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
using std::filesystem::copy_options;
using test_support::failure;

void make_tree(workspace &work)
{
    work.make_file(work.path(uR"(tree\f)"), "f");
    work.make_file(work.path(uR"(tree\d\g)"), "g");
    work.make_directory(work.path(uR"(tree\d\e)"));
}

TEST(Copy, RefusesOptionsThatExcludeEachOtherAheadOfAllElse)
{
    workspace work;
    auto const existing =
        invalid_argument("Invalid combination selected: overwrite_if_exists, skip_existing & "
                         "update_existing cannot be used together");
    auto const links = invalid_argument("Invalid combination selected: copy_symlinks & "
                                        "skip_symlinks cannot be used together");
    constexpr auto skip = copy_options::skip_existing;
    constexpr auto overwrite = copy_options::overwrite_existing;
    constexpr auto update = copy_options::update_existing;
    constexpr auto both_links = copy_options::copy_symlinks | copy_options::skip_symlinks;
    struct
    {
        copy_options options;
        failure expected;
        char const *why;
    } const cases[] = {
        {skip | update, existing, "two of three"},
        {skip | overwrite, existing, "two of three"},
        {overwrite | update, existing, "two of three"},
        {skip | overwrite | update, existing, "all three"},
        {both_links, links, "both ways with links"},
        {both_links | skip | overwrite, links, "links come first"},
    };
    for (auto const &row : cases) {
        EXPECT_FAILURE(copy(work.path(u"no"), work.path(u"to"), row.options), row.expected)
            << row.why;
        EXPECT_FAILURE(copy(upath(), upath(), row.options), row.expected) << row.why;
    }
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(Copy, OfAFile)
{
    workspace work;
    work.make_file(work.path(u"a"), "content");
    work.make_directory(work.path(u"d"));
    work.change_directory(work.root());
    copy(u"a", u"text");
    copy(upath(u"a"), upath(u"path"));
    copy(u"a", u"d");
    EXPECT_EQ(work.entries(work.root()), (names{u"a", u"d", u"path", u"text"}));
    EXPECT_EQ(work.entries(work.path(u"d")), names{u"a"}) << "into the directory";
    EXPECT_FAILURE(copy(u"a", u"d"), file_exists(u"d"))
        << "named as it was given, though it is the file in it that is in the way";
}

TEST(Copy, NamesTheOneThatIsMissing)
{
    workspace work;
    work.make_file(work.path(u"a"));
    work.change_directory(work.root());
    EXPECT_FAILURE(copy(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy(u"no/no", u"to"), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy(upath(u"a"), upath(u"no/to")), not_found(uR"(no\to)"));
    EXPECT_EQ(work.entries(work.root()), names{u"a"});
}

TEST(Copy, OntoItselfIsCode17)
{
    workspace work;
    work.make_file(work.path(u"a"), "a");
    work.make_directory(work.path(u"d"));
    for (std::u16string const &self : {work.path(u"a"), work.path(u"d")})
        EXPECT_FAILURE(copy(self, self), system_error(17, self, self));
}

TEST(Copy, OfADirectoryTakesItsFilesOnly)
{
    workspace work;
    make_tree(work);
    copy(work.path(u"tree"), work.path(u"to"));
    EXPECT_EQ(work.entries(work.path(u"to")), names{u"f"});
}

TEST(Copy, OfATree)
{
    workspace work;
    make_tree(work);
    copy(work.path(u"tree"), work.path(u"to"), copy_options::recursive);
    EXPECT_EQ(work.entries(work.path(u"to")), (names{u"d", u"f"}));
    EXPECT_EQ(work.entries(work.path(uR"(to\d)")), (names{u"e", u"g"}));
    EXPECT_TRUE(work.is_directory(work.path(uR"(to\d\e)")));
}

TEST(Copy, OfNamesThatDifferInAStopOrABlankOnly)
{
    workspace work;
    names const twins = {u"a", u"a ", u"a.", u"b"};
    for (std::u16string const &name : twins) {
        work.make_file(work.path(uR"(tree\)") + name, "content");
        work.make_file(work.path(uR"(tree\d.\)") + name, "content");
    }
    copy(work.path(u"tree"), work.path(u"to"), copy_options::recursive);
    EXPECT_EQ(work.entries(work.path(u"to")), (names{u"a", u"a ", u"a.", u"b", u"d."}));
    EXPECT_EQ(work.entries(work.path(uR"(to\d.)")), twins);
}

TEST(Copy, OfDirectoriesOnly)
{
    workspace work;
    make_tree(work);
    constexpr auto only = copy_options::directories_only;
    copy(work.path(u"tree"), work.path(u"one"), only);
    EXPECT_EQ(work.entries(work.path(u"one")), names{});
    copy(work.path(u"tree"), work.path(u"all"), only | copy_options::recursive);
    EXPECT_EQ(work.entries(work.path(u"all")), names{u"d"});
    EXPECT_EQ(work.entries(work.path(uR"(all\d)")), names{u"e"});
    copy(work.path(uR"(tree\f)"), work.path(u"none"), only);
    EXPECT_FALSE(work.exists(work.path(u"none")));
}

TEST(Copy, OfADirectoryToSymbolicLinks)
{
    workspace work;
    make_tree(work);
    EXPECT_FAILURE(copy(work.path(u"tree"), work.path(u"to"), copy_options::create_symlinks),
                   file_is_directory(work.path(u"tree")));
    EXPECT_FALSE(work.exists(work.path(u"to")));
}

TEST(Copy, OfADirectoryOntoAFileIsCode17)
{
    workspace work;
    make_tree(work);
    work.make_file(work.path(u"to"), "to");
    EXPECT_FAILURE(copy(work.path(u"tree"), work.path(u"to")),
                   system_error(17, work.path(u"tree"), work.path(u"to")));
}

TEST(Copy, StopsAtTheFirstErrorAndKeepsWhatItCopied)
{
    workspace work;
    work.make_file(work.path(uR"(tree\a)"), "a");
    work.make_file(work.path(uR"(tree\b)"), "b");
    work.make_file(work.path(uR"(tree\c)"), "c");
    work.make_file(work.path(uR"(to\b)"), "in the way");
    EXPECT_FAILURE(copy(work.path(u"tree"), work.path(u"to")), file_exists(work.path(u"to")));
    EXPECT_EQ(work.entries(work.path(u"to")), (names{u"a", u"b"}));
    copy(work.path(u"tree"), work.path(u"to"), copy_options::skip_existing);
    EXPECT_EQ(work.entries(work.path(u"to")), (names{u"a", u"b", u"c"}));
}

TEST(Copy, OneMoreNameForAFile)
{
    workspace work;
    work.make_file(work.path(u"a"), "a");
    copy(work.path(u"a"), work.path(u"b"), copy_options::create_hard_links);
    EXPECT_TRUE(work.is_file(work.path(u"b")));
    EXPECT_TRUE(equivalent(work.path(u"a"), work.path(u"b")));
}

} // namespace
} // namespace fl::filesystem
