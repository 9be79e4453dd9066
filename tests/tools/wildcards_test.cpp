#include "flfs/wildcards.hpp"

#include "tools/run_flfs.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace test_support;

struct match_case
{
    char16_t const *pattern;
    char16_t const *name;
    bool matches;
    char const *why;
};

constexpr match_case match_cases[] = {
    {u"*", u"a", true, "all names"},
    {u"*.*", u"a", true, "all names, since DOS"},
    {u"*.txt", u"a.txt", true, "an extension"},
    {u"*.TXT", u"a.txt", true, "in another case"},
    {u"\u00C4*", u"\u00E4b", true, "a letter of Western Europe"},
    {u"*.htm", u"a.html", false, "whose short name would end in .htm"},
    {u"a?c", u"abc", true, "one unit"},
    {u"a?c", u"ac", false, "none"},
    {u"a?c", u"abbc", false, "two"},
    {u"a*c", u"ac", true, "no unit at all"},
    {u"a*b*c", u"axbxbxc", true, "several"},
    {u"a*b*c", u"axbxbx", false, "all but the end"},
    {u"*a", u"aab", false, "a beginning alone"},
    {u"a", u"ab", false, "no wildcard"},
    {u"a*", u"a", true, "nothing behind"},
    {u"**", u"a", true, "twice"},
    {u"?", u"", false, "no name"},
    {u"*aaaaaaaaab", u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", false,
     "many ways that all fail"},
};

TEST(FlfsWildcards, Match)
{
    for (match_case const &row : match_cases)
        EXPECT_EQ(flfs::matches(row.pattern, row.name), row.matches) << row.why;
}

struct presence_case
{
    char16_t const *pathname;
    bool has_wildcard;
};

constexpr presence_case presence_cases[] = {
    {u"C:\\a", false},       {u"C:\\a*", true},
    {u"C:\\*\\b", true},     {u"\\\\?\\C:\\a", false},
    {u"\\\\?\\C:\\?", true}, {u"\\\\?\\UNC\\s\\h\\a", false},
    {u"a?", true},           {u"", false},
};

TEST(FlfsWildcards, ALongPrefixHasNone)
{
    for (presence_case const &row : presence_cases)
        EXPECT_EQ(flfs::has_wildcard(row.pathname), row.has_wildcard)
            << testing::PrintToString(std::u16string(row.pathname));
}

struct expansion_case
{
    std::u16string pattern; ///< behind the folder
    std::vector<std::u16string> names;
    char const *why;
};

expansion_case const expansion_cases[] = {
    {u"*.txt", {u"a.txt", u"b.txt"}, "two files"},
    {u"*", {u"a.txt", u"b.txt", u"dir1", u"dir2"}, "all"},
    {u"dir?\\*.log", {u"dir1\\c.log", u"dir2\\c.log"}, "in two directories"},
    {u"*\\c.log", {u"dir1\\c.log", u"dir2\\c.log"}, "a name behind: files have none below them"},
    {u"dir*\\", {u"dir1", u"dir2"}, "directories"},
    {u"*.txt\\", {}, "files are no directories"},
    {u"*.zip", {}, "none"},
    {u"no\\*", {}, "in what isn't there"},
};

TEST(FlfsWildcards, StandForWhatIsThere)
{
    workspace work;
    for (char16_t const *const name : {u"a.txt", u"b.txt", u"dir1\\c.log", u"dir2\\c.log"})
        work.make_file(work.path(name));
    for (expansion_case const &row : expansion_cases) {
        std::vector<std::u16string> whole;
        for (std::u16string const &name : row.names)
            whole.push_back(work.path(name));
        std::vector<std::u16string> found = flfs::expanded(work.path(row.pattern));
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, whole) << row.why;
    }
}

TEST(FlfsWildcards, OfCommands)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "1");
    work.make_file(work.path(u"b.txt"), "22");
    work.make_file(work.path(u"c.log"), "333");
    EXPECT_EQ(run_flfs_on_disk({"rm", utf8(work.path(u"*.txt"))}),
              printed("removed " + utf8(work.path(u"a.txt")) + "\nremoved " +
                      utf8(work.path(u"b.txt")) + "\n"));
    EXPECT_EQ(work.entries(work.root()), std::vector<std::u16string>{u"c.log"});
}

TEST(FlfsWildcards, ThatStandForNothing)
{
    workspace work;
    std::string const pattern = utf8(work.path(u"*.txt"));
    flfs_result const result = run_flfs_on_disk({"size", pattern});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("  Nothing has a name like that, and no name holds a * or ?.\n"),
              std::string::npos)
        << result.err;
    flfs_result const made = run_flfs_on_disk({"mkdir", pattern});
    EXPECT_EQ(made.exit_code, 1);
    EXPECT_NE(made.err.find("no name holds a * or ?.\n"), std::string::npos) << made.err;
}

TEST(FlfsWildcards, OfCommandsThatTakeOneName)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    flfs_result const result =
        run_flfs_on_disk({"mv", utf8(work.path(u"*.txt")), utf8(work.path(u"b"))});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.err.find("  Wildcards stand for no names here. Write each pathname.\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(work.entries(work.root()), std::vector<std::u16string>{u"a.txt"});
}

TEST(FlfsAdvice, AQuoteThatBecamePartOfTheName)
{
    workspace work;
    flfs_result const result = run_flfs_on_disk({"ls", utf8(work.root()) + "\""});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.err.find("  A quote became part of the name. Leave out the backslash ahead of "
                              "the closing quote, or write two.\n"),
              std::string::npos)
        << result.err;
}

TEST(FlfsAdvice, OfMovingIntoADirectory)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.make_directory(work.path(u"dir"));
    flfs_result const result =
        run_flfs_on_disk({"mv", utf8(work.path(u"a.txt")), utf8(work.path(u"dir"))});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.err.find("  TO is a directory. Give the whole new pathname: " +
                              utf8(work.path(u"dir\\a.txt")) + " moves into it.\n"),
              std::string::npos)
        << result.err;
    EXPECT_TRUE(work.is_file(work.path(u"a.txt")));
    flfs_result const missing =
        run_flfs_on_disk({"mv", utf8(work.path(u"no.txt")), utf8(work.path(u"dir"))});
    EXPECT_NE(missing.err.find("Check the spelling."), std::string::npos) << missing.err;
}

} // namespace
