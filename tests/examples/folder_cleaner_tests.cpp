// The folder cleaner of examples/, line by line.

#include "folder_cleaner/cleaner.hpp"

#include "support/workspace.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace cleaner {
namespace {

using namespace fl::filesystem::literals;
using test_support::access_right;
using test_support::link_to;
using test_support::workspace;

using lines = std::vector<std::string>;

constexpr std::uint32_t read_only = 1;

/// What one run told. Disks tell names in an order of their own, so lines are sorted, but for
/// the last one.
struct answer
{
    int exit_code = 0;
    lines out;
    lines log;

    friend bool operator==(answer const &, answer const &) = default;
};

std::ostream &operator<<(std::ostream &out, answer const &shown)
{
    out << "exit code " << shown.exit_code;
    for (std::string const &line : shown.out)
        out << "\nout: " << line;
    for (std::string const &line : shown.log)
        out << "\nlog: " << line;
    return out;
}

lines lines_of(std::istringstream text)
{
    lines all;
    for (std::string line; std::getline(text, line);)
        all.push_back(line);
    if (!all.empty())
        std::sort(all.begin(), all.end() - 1);
    return all;
}

answer run_with(std::vector<fs::upath> const &arguments)
{
    std::ostringstream out, log;
    int const exit_code = run(arguments, out, log);
    return {exit_code, lines_of(std::istringstream(out.str())),
            lines_of(std::istringstream(log.str()))};
}

answer told(int exit_code, lines out, lines log = {})
{
    if (!out.empty())
        std::sort(out.begin(), out.end() - 1);
    return {exit_code, std::move(out), std::move(log)};
}

std::string utf8(std::u16string const &text)
{
    return fs::to_utf8(text);
}

/// A name in the folder `t`, in a directory of this one's own: the pathname has 260 units and
/// more, the shorter of them exactly 260.
std::u16string long_name(workspace const &work, char16_t directory, std::u16string const &name)
{
    std::u16string path = work.path(u"t\\") + directory;
    path.resize(260 - name.size() - 1, directory);
    return path + u'\\' + name;
}

TEST(FolderCleaner, ListsSizesFoldersAndLongNames)
{
    workspace work;
    std::u16string const deep = long_name(work, u'd', u"far.txt");
    std::u16string const folder = deep.substr(0, deep.size() - 8);
    work.make_file(work.path(u"t\\caf\u00E9.txt"), "soup");
    work.make_file(work.path(u"t\\one"), "1");
    work.make_file(deep);
    EXPECT_EQ(run_with({u"list"_path, work.path(u"t")}),
              told(0, {utf8(work.path(u"t\\caf\u00E9.txt")) + ": 4 bytes",
                       utf8(work.path(u"t\\one")) + ": 1 byte", utf8(folder) + ": folder",
                       utf8(deep) + ": 0 bytes",
                       "3 files of 5 bytes, 1 of them with a long name; 1 folder, 0 symbolic "
                       "links, 0 junctions"}));
}

TEST(FolderCleaner, TellsSymbolicLinksFromJunctionsAndEntersNeither)
{
    workspace work;
    if (!work.has_symbolic_links() || !work.has_junctions())
        GTEST_SKIP() << "there are no links";
    work.make_file(work.path(u"away\\file"), "not listed");
    work.make_symbolic_link(work.path(u"t\\broken"), u"nowhere");
    work.make_symbolic_link(work.path(u"t\\link"), u"..\\away", link_to::directory);
    work.make_junction(work.path(u"t\\junction"), work.path(u"away"));
    EXPECT_EQ(
        run_with({u"list"_path, work.path(u"t")}),
        told(0, {utf8(work.path(u"t\\broken")) + ": symbolic link to nowhere",
                 utf8(work.path(u"t\\junction")) + ": junction to " + utf8(work.path(u"away")),
                 utf8(work.path(u"t\\link")) + ": symbolic link to ..\\away",
                 "0 files of 0 bytes, 0 of them with a long name; 0 folders, 2 symbolic "
                 "links, 1 junction"}));
}

TEST(FolderCleaner, LogsALinkThatItMayNotRead)
{
    workspace work;
    if (!work.has_junctions() || !work.can_deny_rights())
        GTEST_SKIP() << "nothing can be denied";
    work.make_junction(work.path(u"t\\junction"), work.path(u"away"));
    work.deny(work.path(u"t\\junction"), access_right::read_attributes);
    EXPECT_EQ(run_with({u"list"_path, work.path(u"t")}),
              told(1,
                   {utf8(work.path(u"t\\junction")) + ": junction",
                    "0 files of 0 bytes, 0 of them with a long name; 0 folders, 0 symbolic "
                    "links, 1 junction"},
                   {"fl:filesystem:AccessDenied: the caller may not do this: \"" +
                    utf8(work.path(u"t\\junction")) + '"'}));
}

TEST(FolderCleaner, MovesLongNamesAndNumbersThoseThatAreAlike)
{
    workspace work;
    std::u16string const first = long_name(work, u'a', u"far.txt");
    std::u16string const second = long_name(work, u'b', u"far.txt");
    std::u16string const short_enough = first.substr(0, 258) + u"r"; // 259 units
    work.make_file(first, "first");
    work.make_file(second, "second");
    work.make_file(short_enough);
    answer const seen = run_with({u"move-long"_path, work.path(u"t"), work.path(u"moved\\here")});
    bool const in_order = work.content(work.path(u"moved\\here\\far.txt")) == "first";
    EXPECT_EQ(seen, told(0, {utf8(in_order ? first : second) + ": now " +
                                 utf8(work.path(u"moved\\here\\far.txt")),
                             utf8(in_order ? second : first) + ": now " +
                                 utf8(work.path(u"moved\\here\\2-far.txt")),
                             "2 files moved"}));
    EXPECT_EQ(work.content(work.path(u"moved\\here\\2-far.txt")), in_order ? "second" : "first");
    EXPECT_FALSE(work.exists(first));
    EXPECT_FALSE(work.exists(second));
    EXPECT_TRUE(work.exists(short_enough));
}

TEST(FolderCleaner, LogsWhatCannotBeMovedAndGoesOn)
{
    workspace work;
    if (!work.can_deny_rights())
        GTEST_SKIP() << "nothing can be denied";
    std::u16string const kept = long_name(work, u'a', u"kept.txt");
    std::u16string const moved = long_name(work, u'b', u"moved.txt");
    work.make_file(kept);
    work.make_file(moved);
    work.deny(kept, access_right::remove);
    EXPECT_EQ(run_with({u"move-long"_path, work.path(u"t"), work.path(u"here")}),
              told(1,
                   {utf8(moved) + ": now " + utf8(work.path(u"here\\moved.txt")), "1 file moved"},
                   {utf8(kept) + ": fl:filesystem:AccessDenied: the caller may not do this: \"" +
                    utf8(work.path(u"here\\kept.txt")) + '"'}));
    EXPECT_TRUE(work.exists(kept));
}

TEST(FolderCleaner, RemovesWithProgress)
{
    workspace work;
    for (char16_t tens = u'0'; tens <= u'9'; ++tens)
        for (char16_t units = u'0'; units <= u'9'; ++units)
            work.make_file(work.path(u"t\\") + tens + units);
    work.set_attributes(work.path(u"t\\00"), read_only);
    if (test_support::runs_under_wine()) {
        // no directory is listed there that is open for deletion, as one is while it is emptied
        EXPECT_EQ(
            run_with({u"remove"_path, work.path(u"t")}),
            told(1, {"0 names removed"},
                 {"fl:filesystem:SystemError: the system refused: \"" + utf8(work.path(u"t")) +
                  "\" (code 32: " + utf8(fs::system_message(32)) + ')'}));
        EXPECT_EQ(work.entries(work.path(u"t")).size(), 100U);
        return;
    }
    EXPECT_EQ(run_with({u"remove"_path, work.path(u"t")}),
              told(0, {"100 names so far", "101 names removed"}));
    EXPECT_FALSE(work.exists(work.path(u"t")));
}

TEST(FolderCleaner, LogsWhatIsLeft)
{
    workspace work;
    if (!work.can_deny_rights())
        GTEST_SKIP() << "nothing can be denied";
    work.make_file(work.path(u"t\\gone"));
    work.make_file(work.path(u"t\\kept"));
    work.deny(work.path(u"t\\kept"), access_right::remove);
    EXPECT_EQ(run_with({u"remove"_path, work.path(u"t")}),
              told(1, {"1 name removed"},
                   {"fl:filesystem:AccessDenied: the caller may not do this: \"" +
                    utf8(work.path(u"t\\kept")) + '"'}));
    EXPECT_EQ(work.entries(work.path(u"t")), std::vector<std::u16string>{u"kept"});
}

TEST(FolderCleaner, LogsAFolderThatIsNotThere)
{
    workspace work;
    lines const missing = {"fl:filesystem:PathNotFound: the name, or a directory on the way to it, "
                           "isn't there: \"" +
                           utf8(work.path(u"no")) + '"'};
    EXPECT_EQ(run_with({u"list"_path, work.path(u"no")}), told(1, {}, missing));
    EXPECT_EQ(run_with({u"move-long"_path, work.path(u"no"), work.path(u"here")}),
              told(1, {}, missing));
    EXPECT_EQ(run_with({u"remove"_path, work.path(u"no")}), told(1, {"0 names removed"}, missing));
}

TEST(FolderCleaner, SaysHowItIsUsed)
{
    lines const usage = {"       folder_cleaner move-long FOLDER ELSEWHERE",
                         "usage: folder_cleaner list FOLDER",
                         "       folder_cleaner remove FOLDER"};
    EXPECT_EQ(run_with({}), told(2, {}, usage));
    EXPECT_EQ(run_with({u"list"_path}), told(2, {}, usage));
    EXPECT_EQ(run_with({u"tidy"_path, u"t"_path}), told(2, {}, usage));
    EXPECT_EQ(run_with({u"remove"_path, u"t"_path, u"t"_path}), told(2, {}, usage));
}

} // namespace
} // namespace cleaner
