#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

// In calls with literals and options the namespace is told: those of the standard library
// would fit as well, found by its type of the options.

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

constexpr auto skip = copy_options::skip_existing;
constexpr auto overwrite = copy_options::overwrite_existing;
constexpr auto update = copy_options::update_existing;
constexpr auto both_links = copy_options::copy_symlinks | copy_options::skip_symlinks;

/// What is said of two ways with an existing target, and of two ways with links.
auto const two_targets =
    invalid_argument("Invalid combination selected: overwrite_if_exists, skip_existing & "
                     "update_existing cannot be used together");
auto const two_links = invalid_argument("Invalid combination selected: copy_symlinks & "
                                        "skip_symlinks cannot be used together");

void make_tree(workspace &work)
{
    work.make_file(work.path(uR"(tree\f)"), "f");
    work.make_file(work.path(uR"(tree\d\g)"), "g");
    work.make_directory(work.path(uR"(tree\d\e)"));
}

TEST_IN_WORKSPACE(Copy, RefusesOptionsThatExcludeEachOtherAheadOfAllElse)
{
    failing_row<copy_options> const cases[] = {
        {skip | update, two_targets, "two of three"},
        {skip | overwrite, two_targets, "two of three"},
        {overwrite | update, two_targets, "two of three"},
        {skip | overwrite | update, two_targets, "all three"},
        {both_links, two_links, "both ways with links"},
        {both_links | skip | overwrite, two_links, "links come first"},
    };
    expect_failures(cases, [&](auto options) { copy(at(u"no"), at(u"to"), options); });
    expect_failures(cases, [](auto options) { copy(upath(), upath(), options); });
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
    copy(at(u"tree"), at(u"to"), skip);
    EXPECT_EQ(entries(u"to"), (names{u"a", u"b", u"c"}));
}

TEST_IN_WORKSPACE(Copy, OneMoreNameForAFile)
{
    make_file(u"a", "a");
    copy(at(u"a"), at(u"b"), copy_options::create_hard_links);
    EXPECT_TRUE(work.is_file(at(u"b")));
    EXPECT_TRUE(equivalent(at(u"a"), at(u"b")));
}

TEST_IN_WORKSPACE(CopyFile, TakesTextsAndPathsInAnyNotation)
{
    make_file(u"a", "content");
    copy_file(u"a", u"text");
    copy_file(upath(u"a"), upath(u"path"));
    copy_file(uR"(\\?\)" + at(u"a"), std::u16string(u"./prefixed"));
    EXPECT_EQ(entries(), (names{u"a", u"path", u"prefixed", u"text"}));
    EXPECT_TRUE(work.is_file(at(u"text")));
}

TEST_IN_WORKSPACE(CopyFile, OfAPathAndATextKeepsTheirOrderAndReplacesNothing)
{
    make_file(u"a", "content");
    std::u16string const to = at(u"to");
    copy_file(upath(at(u"a")), std::u16string_view(to));
    EXPECT_TRUE(work.is_file(to));
    EXPECT_FAILURE(copy_file(upath(at(u"a")), std::u16string_view(to)), file_exists(to));
}

TEST_IN_WORKSPACE(CopyFile, ThatFailsForAnotherReasonThanAnExistingTargetSaysSo)
{
    NEEDS(work.can_deny_rights(), "this workspace writes no access control lists");
    make({{u"a", "content"}, u"closed\\"});
    work.deny_creation(at(u"closed"));
    for (copy_options const options : {skip, update})
        EXPECT_FAILURE(fl::filesystem::copy_file(at(u"a"), at(uR"(closed\b)"), options),
                       denied(at(uR"(closed\b)")));
}

TEST_IN_WORKSPACE(CopyFile, RefusesTwoWaysWithAnExistingTargetAheadOfAllElse)
{
    for (copy_options const options :
         {skip | overwrite, skip | update, overwrite | update, skip | overwrite | update}) {
        EXPECT_FAILURE(copy_file(at(u"no"), at(u"to"), options), two_targets);
        EXPECT_FAILURE(copy_file(upath(), upath(), options), two_targets);
    }
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(CopyFile, RefusesTwoWaysWithLinksFirst)
{
    EXPECT_FAILURE(fl::filesystem::copy_file(u"", u"", both_links), two_links);
    EXPECT_FAILURE(fl::filesystem::copy_file(u"", u"", both_links | skip | overwrite), two_links);
}

TEST_IN_WORKSPACE(CopyFile, NamesTheOneThatIsMissing)
{
    make_file(u"a");
    EXPECT_FAILURE(copy_file(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy_file(upath(u"no/no"), upath(u"to")), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy_file(u"a", u"no/to"), not_found(uR"(no\to)"));
    EXPECT_EQ(entries(), names{u"a"});
}

TEST_IN_WORKSPACE(CopyFile, FindsATargetThatIsThere)
{
    make({{u"a", "a"}, {u"b", "b"}});
    EXPECT_FAILURE(copy_file(at(u"a"), at(u"b")), file_exists(at(u"b")));
    EXPECT_FAILURE(copy_file(at(u"a"), at(u"a")), file_exists(at(u"a"))) << "onto itself";
    EXPECT_FAILURE(copy_file(at(u"a"), at(u"b"), copy_options::recursive), file_exists(at(u"b")))
        << "other options don't count";
}

TEST_IN_WORKSPACE(CopyFile, OntoItselfIsInItsOwnWay)
{
    make_file(u"a", "a");
    std::u16string const self = at(u"a");
    for (copy_options const options : {skip, update})
        EXPECT_FAILURE(copy_file(self, self, options), system_error(32, self, self));
}

TEST_IN_WORKSPACE(CopyFile, DeclinesQuietlyAndOverwrites)
{
    make({{u"a", "long"}, {u"b", "b"}});
    copy_file(at(u"a"), at(u"b"), skip);
    EXPECT_EQ(status(at(u"b")).get_size(), 1U);
    copy_file(at(u"a"), at(u"b"), overwrite);
    EXPECT_EQ(status(at(u"b")).get_size(), 4U);
}

TEST_IN_WORKSPACE(CopyDirectory, MakesAnEmptyDirectory)
{
    make({uR"(a\f)", uR"(a\d\)"});
    copy_directory(at(u"a"), at(u"text"));
    copy_directory(upath(at(u"a")), upath(at(u"path")));
    EXPECT_TRUE(work.is_directory(at(u"text")));
    EXPECT_EQ(entries(u"text"), names{});
    EXPECT_EQ(entries(u"path"), names{});
}

TEST_IN_WORKSPACE(CopyDirectory, LeavesADirectoryThatIsThere)
{
    make({u"a\\", uR"(b\f)"});
    copy_directory(at(u"a"), at(u"b"));
    copy_directory(at(u"b"), at(u"b"));
    EXPECT_EQ(entries(u"b"), names{u"f"});
}

TEST_IN_WORKSPACE(CopyDirectory, RefusesTheEmptyPath)
{
    auto const refusal = empty_path();
    EXPECT_FAILURE(copy_directory(u"", u""), refusal);
    EXPECT_FAILURE(copy_directory(u"", uR"(C:\no)"), refusal);
    EXPECT_FAILURE(copy_directory(uR"(C:\no)", u""), refusal)
        << "before it is seen that `from` is missing";
    EXPECT_FAILURE(copy_directory(upath(u"no"), upath()), refusal);
    EXPECT_FAILURE(copy_directory(upath(), upath(u"no")), refusal);
    EXPECT_FAILURE(copy_directory(uR"(\\?\)", u"no"), refusal) << "nothing but a prefix";
}

TEST_IN_WORKSPACE(CopyDirectory, OfAFileNamesIt)
{
    make_file(u"f");
    EXPECT_FAILURE(copy_directory(at(u"f"), at(u"to")), not_directory(at(u"f")));
    EXPECT_FALSE(work.exists(at(u"to")));
}

TEST_IN_WORKSPACE(CopyDirectory, NamesTheOneThatIsMissing)
{
    make_directory(u"a");
    EXPECT_FAILURE(copy_directory(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy_directory(u"no/no", u"no/to"), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy_directory(u"a", u"no/to"), not_found(uR"(no\to)"));
    EXPECT_EQ(entries(), names{u"a"});
}

TEST_IN_WORKSPACE(CopyDirectory, FindsAFileInItsPlace)
{
    make({u"a\\", u"f"});
    EXPECT_FAILURE(copy_directory(at(u"a"), at(u"f")), file_exists(at(u"f")));
    EXPECT_TRUE(work.is_file(at(u"f")));
}

} // namespace
} // namespace fl::filesystem::tests
