#include "tools/run_flfs.hpp"

#include <string>
#include <vector>

namespace {

using namespace test_support;

/// Runs it with `--dry-run` and without. `told` is what the first says of the names, which
/// stand behind the folder.
std::string told_ahead(workspace const &work, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin() + 1, "--dry-run");
    flfs_result const result = run_flfs_on_disk(arguments);
    std::string text = result.out + result.err;
    std::string const folder = utf8(work.root()) + "\\";
    for (std::size_t at = 0; (at = text.find(folder)) != text.npos;)
        text.erase(at, folder.size());
    return text;
}

std::string whole(workspace const &work, char16_t const *name)
{
    return utf8(work.path(name));
}

TEST(FlfsDryRun, OfRemovingATree)
{
    workspace work;
    work.make_file(work.path(u"dir\\sub\\a.txt"));
    work.make_file(work.path(u"dir\\z.txt"));
    EXPECT_EQ(told_ahead(work, {"rm", "-r", whole(work, u"dir")}), "would remove dir\\sub\\a.txt\n"
                                                                   "would remove dir\\sub\n"
                                                                   "would remove dir\\z.txt\n"
                                                                   "would remove dir\n");
    EXPECT_TRUE(work.is_file(work.path(u"dir\\sub\\a.txt")));
}

TEST(FlfsDryRun, OfRemovingWhatCannotGo)
{
    workspace work;
    work.make_file(work.path(u"dir\\a.txt"));
    std::string const full = told_ahead(work, {"rm", whole(work, u"dir")});
    EXPECT_EQ(full.substr(0, full.find('\n')), "flfs: fl:filesystem:DirectoryNotEmpty");
    std::string const missing = told_ahead(work, {"rm", "-r", whole(work, u"no")});
    EXPECT_EQ(missing.substr(0, missing.find('\n')), "flfs: fl:filesystem:PathNotFound");
    EXPECT_EQ(run_flfs_on_disk({"chmod", "-w", whole(work, u"dir\\a.txt")}).exit_code, 0);
    std::string const kept = told_ahead(work, {"rm", "-r", whole(work, u"dir")});
    EXPECT_EQ(kept.substr(0, kept.find('\n')), "flfs: fl:filesystem:AccessDenied");
    EXPECT_EQ(told_ahead(work, {"rm", "-rf", whole(work, u"dir")}),
              "would remove dir\\a.txt\nwould remove dir\n");
    EXPECT_TRUE(work.is_file(work.path(u"dir\\a.txt")));
}

TEST(FlfsDryRun, OfMoving)
{
    workspace work;
    work.make_file(work.path(u"a"));
    work.make_file(work.path(u"b"));
    work.make_directory(work.path(u"dir"));
    EXPECT_EQ(told_ahead(work, {"mv", whole(work, u"a"), whole(work, u"c")}),
              "would move a -> c\n");
    EXPECT_EQ(told_ahead(work, {"mv", whole(work, u"a"), whole(work, u"b")}),
              "would move, replacing, a -> b\n");
    std::string const over = told_ahead(work, {"mv", whole(work, u"a"), whole(work, u"dir")});
    EXPECT_NE(over.find("TO is a directory."), std::string::npos) << over;
    std::string const below = told_ahead(work, {"mv", whole(work, u"a"), whole(work, u"no\\c")});
    EXPECT_EQ(below.substr(0, below.find('\n')), "flfs: fl:filesystem:PathNotFound");
    EXPECT_EQ(work.entries(work.root()), (std::vector<std::u16string>{u"a", u"b", u"dir"}));
}

struct copy_case
{
    std::vector<std::string> options;
    std::string told;
    char const *why;
};

copy_case const copy_cases[] = {
    {{}, "would make from -> to\nwould copy from\\a -> to\\a\n", "what lies deeper stays"},
    {{"-r"},
     "would make from -> to\nwould copy from\\a -> to\\a\nwould make from\\sub -> to\\sub\n"
     "would copy from\\sub\\b -> to\\sub\\b\n",
     "all of it"},
    {{"-r", "--directories-only"},
     "would make from -> to\nwould pass over from\\a -> to\\a\nwould make from\\sub -> to\\sub\n"
     "would pass over from\\sub\\b -> to\\sub\\b\n",
     "no files"},
    {{"-r", "--hard-links"},
     "would make from -> to\nwould link from\\a -> to\\a\nwould make from\\sub -> to\\sub\n"
     "would link from\\sub\\b -> to\\sub\\b\n",
     "more names"},
};

TEST(FlfsDryRun, OfCopying)
{
    workspace work;
    work.make_file(work.path(u"from\\a"));
    work.make_file(work.path(u"from\\sub\\b"));
    for (copy_case const &row : copy_cases) {
        std::vector<std::string> words = {"cp"};
        words.insert(words.end(), row.options.begin(), row.options.end());
        words.insert(words.end(), {whole(work, u"from"), whole(work, u"to")});
        EXPECT_EQ(told_ahead(work, words), row.told) << row.why;
        EXPECT_FALSE(work.exists(work.path(u"to"))) << row.why;
    }
}

copy_case const copies_over[] = {
    {{"--overwrite"}, "would replace a -> b\n", "whatever is there"},
    {{"--skip-existing"}, "would pass over a -> b\n", "it stays"},
    {{"--directories-only"}, "would pass over a -> b\n", "no files"},
};

TEST(FlfsDryRun, OfCopyingOverAFile)
{
    workspace work;
    work.make_file(work.path(u"a"), "1");
    work.make_file(work.path(u"b"), "22");
    for (copy_case const &row : copies_over)
        EXPECT_EQ(
            told_ahead(work, {"cp", row.options.front(), whole(work, u"a"), whole(work, u"b")}),
            row.told)
            << row.why;
    std::string const refused = told_ahead(work, {"cp", whole(work, u"a"), whole(work, u"b")});
    EXPECT_EQ(refused.substr(0, refused.find('\n')), "flfs: fl:filesystem:FileExistsError");
    std::string const itself = told_ahead(work, {"cp", whole(work, u"a"), whole(work, u"a")});
    EXPECT_NE(itself.find("  They are the same,"), std::string::npos) << itself;
    EXPECT_EQ(work.content(work.path(u"b")), "22");
}

TEST(FlfsDryRun, ToldToPrograms)
{
    workspace work;
    work.make_file(work.path(u"a"));
    flfs_result const result = run_flfs_on_disk({"rm", "-n", "--json", whole(work, u"a")});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    auto const object = nlohmann::json::parse(result.out).at(0);
    EXPECT_EQ(object.at("done"), nullptr);
    EXPECT_EQ(object.at("failures"), nlohmann::json::array());
    EXPECT_EQ(object.at("names").at(0).at("done"), "would remove");
    EXPECT_EQ(object.at("names").at(0).at("pathname"), whole(work, u"a"));
}

TEST(FlfsQuiet, NothingButFailures)
{
    workspace work;
    flfs_result const made = run_flfs_on_disk({"mkdir", "-q", whole(work, u"a")});
    EXPECT_EQ(made.exit_code, 0);
    EXPECT_EQ(made.out + made.err, "");
    flfs_result const again = run_flfs_on_disk({"mkdir", "--quiet", whole(work, u"a")});
    EXPECT_EQ(again.exit_code, 1);
    EXPECT_EQ(again.out, "");
    EXPECT_NE(again.err, "");
}

TEST(FlfsVerbose, TellsEachCopy)
{
    workspace work;
    work.make_file(work.path(u"from\\a"));
    flfs_result const result =
        run_flfs_on_disk({"cp", "-r", "-v", whole(work, u"from"), whole(work, u"to")});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    auto const line = [&work](char16_t const *from, char16_t const *to) {
        return "copied " + whole(work, from) + " -> " + whole(work, to) + "\n";
    };
    EXPECT_EQ(result.out, line(u"from", u"to") + line(u"from\\a", u"to\\a") + line(u"from", u"to"));
}

#if FLFS_SYSTEM_IS_SIMULATED

TEST(FlfsVerbose, TellsEachRemoval)
{
    workspace work;
    work.make_file(work.path(u"dir\\a"));
    EXPECT_EQ(run_flfs_on_disk({"rm", "-r", "-v", whole(work, u"dir")}),
              printed("removed " + whole(work, u"dir\\a") + "\nremoved " + whole(work, u"dir") +
                      "\nremoved " + whole(work, u"dir") + ", 2 names\n"));
}

#endif

TEST(FlfsColours, OfDirectoriesAndNoes)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    std::ostringstream out;
    std::ostringstream err;
    flfs::session session{out, err};
    session.has_disk = true;
    session.has_colours = true;
    EXPECT_EQ(flfs::run({"exists", whole(work, u"no")}, session), flfs::exit_failure);
    EXPECT_EQ(out.str(), "\x1B[33mno   " + whole(work, u"no") + "\x1B[0m\n");
    out.str("");
    EXPECT_EQ(flfs::run({"tree", utf8(work.root())}, session), flfs::exit_success);
    EXPECT_EQ(out.str(), utf8(work.root()) + "\n    \x1B[34mdir\x1B[0m\\\n");
}

} // namespace
