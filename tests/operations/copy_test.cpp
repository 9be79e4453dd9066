#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

void make_tree(workspace &work)
{
    work.make_file(work.path(uR"(tree\f)"), "f");
    work.make_file(work.path(uR"(tree\d\g)"), "g");
    work.make_directory(work.path(uR"(tree\d\e)"));
}

TEST_IN_WORKSPACE(Copy, RefusesOptionsThatExcludeEachOtherAheadOfAllElse)
{
    auto const existing =
        invalid_argument("Invalid combination selected: overwrite_if_exists, skip_existing & "
                         "update_existing cannot be used together");
    auto const links = invalid_argument("Invalid combination selected: copy_symlinks & "
                                        "skip_symlinks cannot be used together");
    constexpr auto skip = copy_options::skip_existing;
    constexpr auto overwrite = copy_options::overwrite_existing;
    constexpr auto update = copy_options::update_existing;
    constexpr auto both_links = copy_options::copy_symlinks | copy_options::skip_symlinks;
    failing_row<copy_options> const cases[] = {
        {skip | update, existing, "two of three"},
        {skip | overwrite, existing, "two of three"},
        {overwrite | update, existing, "two of three"},
        {skip | overwrite | update, existing, "all three"},
        {both_links, links, "both ways with links"},
        {both_links | skip | overwrite, links, "links come first"},
    };
    for (auto const &row : cases) {
        EXPECT_FAILURE(copy(at(u"no"), at(u"to"), row.given), row.expected) << row.why;
        EXPECT_FAILURE(copy(upath(), upath(), row.given), row.expected) << row.why;
    }
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(Copy, OfAFile)
{
    make({{u"a", "content"}, u"d\\"});
    copy(u"a", u"text");
    copy(upath(u"a"), upath(u"path"));
    copy(u"a", u"d");
    EXPECT_EQ(entries(), (names{u"a", u"d", u"path", u"text"}));
    EXPECT_EQ(entries(u"d"), names{u"a"}) << "into the directory";
    EXPECT_FAILURE(copy(u"a", u"d"), file_exists(u"d"))
        << "named as it was given, though it is the file in it that is in the way";
}

TEST_IN_WORKSPACE(Copy, NamesTheOneThatIsMissing)
{
    make_file(u"a");
    EXPECT_FAILURE(copy(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy(u"no/no", u"to"), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy(upath(u"a"), upath(u"no/to")), not_found(uR"(no\to)"));
    EXPECT_EQ(entries(), names{u"a"});
}

TEST_IN_WORKSPACE(Copy, OntoItselfIsCode17)
{
    make({{u"a", "a"}, u"d\\"});
    for (std::u16string const &self : {at(u"a"), at(u"d")})
        EXPECT_FAILURE(copy(self, self), system_error(17, self, self));
}

TEST_IN_WORKSPACE(Copy, OfADirectoryTakesItsFilesOnly)
{
    make_tree(work);
    copy(at(u"tree"), at(u"to"));
    EXPECT_EQ(entries(u"to"), names{u"f"});
}

TEST_IN_WORKSPACE(Copy, OfATree)
{
    make_tree(work);
    copy(at(u"tree"), at(u"to"), copy_options::recursive);
    EXPECT_EQ(entries(u"to"), (names{u"d", u"f"}));
    EXPECT_EQ(entries(uR"(to\d)"), (names{u"e", u"g"}));
    EXPECT_TRUE(work.is_directory(at(uR"(to\d\e)")));
}

TEST_IN_WORKSPACE(Copy, OfNamesThatDifferInAStopOrABlankOnly)
{
    names const twins = {u"a", u"a ", u"a.", u"b"};
    for (std::u16string const &name : twins) {
        work.make_file(at(uR"(tree\)") + name, "content");
        work.make_file(at(uR"(tree\d.\)") + name, "content");
    }
    copy(at(u"tree"), at(u"to"), copy_options::recursive);
    EXPECT_EQ(entries(u"to"), (names{u"a", u"a ", u"a.", u"b", u"d."}));
    EXPECT_EQ(entries(uR"(to\d.)"), twins);
}

TEST_IN_WORKSPACE(Copy, OfDirectoriesOnly)
{
    make_tree(work);
    constexpr auto only = copy_options::directories_only;
    copy(at(u"tree"), at(u"one"), only);
    EXPECT_EQ(entries(u"one"), names{});
    copy(at(u"tree"), at(u"all"), only | copy_options::recursive);
    EXPECT_EQ(entries(u"all"), names{u"d"});
    EXPECT_EQ(entries(uR"(all\d)"), names{u"e"});
    copy(at(uR"(tree\f)"), at(u"none"), only);
    EXPECT_FALSE(work.exists(at(u"none")));
}

TEST_IN_WORKSPACE(Copy, OfADirectoryToSymbolicLinks)
{
    make_tree(work);
    EXPECT_FAILURE(copy(at(u"tree"), at(u"to"), copy_options::create_symlinks),
                   file_is_directory(at(u"tree")));
    EXPECT_FALSE(work.exists(at(u"to")));
}

TEST_IN_WORKSPACE(Copy, OfADirectoryOntoAFileIsCode17)
{
    make_tree(work);
    make_file(u"to", "to");
    EXPECT_FAILURE(copy(at(u"tree"), at(u"to")), system_error(17, at(u"tree"), at(u"to")));
}

TEST_IN_WORKSPACE(Copy, StopsAtTheFirstErrorAndKeepsWhatItCopied)
{
    make({{uR"(tree\a)", "a"},
          {uR"(tree\b)", "b"},
          {uR"(tree\c)", "c"},
          {uR"(to\b)", "in the way"}});
    EXPECT_FAILURE(copy(at(u"tree"), at(u"to")), file_exists(at(u"to")));
    EXPECT_EQ(entries(u"to"), (names{u"a", u"b"}));
    copy(at(u"tree"), at(u"to"), copy_options::skip_existing);
    EXPECT_EQ(entries(u"to"), (names{u"a", u"b", u"c"}));
}

TEST_IN_WORKSPACE(Copy, OneMoreNameForAFile)
{
    make_file(u"a", "a");
    copy(at(u"a"), at(u"b"), copy_options::create_hard_links);
    EXPECT_TRUE(work.is_file(at(u"b")));
    EXPECT_TRUE(equivalent(at(u"a"), at(u"b")));
}

} // namespace
} // namespace fl::filesystem::tests
