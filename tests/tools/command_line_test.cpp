#include "tools/run_flfs.hpp"

#include <string>
#include <vector>

namespace {

using namespace test_support;

struct usage_case
{
    std::vector<std::string> arguments;
    std::string err;
    char const *why;
};

usage_case const usage_cases[] = {
    {{}, "flfs: A subcommand is required\nTry \"flfs --help\".\n", "nothing to do"},
    {{"nope"},
     "flfs: There is no command or option nope\nTry \"flfs --help\".\n",
     "an unknown command"},
    {{"--nope"},
     "flfs: There is no command or option --nope\nTry \"flfs --help\".\n",
     "an unknown option ahead of a command"},
    {{"[nope]"},
     "flfs: There is no command or option [nope]\nTry \"flfs --help\".\n",
     "brackets are no list"},
    {{"\xED\xA0\x80\x1B"},
     "flfs: There is no command or option \\uD800\\u001B\nTry \"flfs --help\".\n",
     "what a terminal can't show, escaped"},
    {{"inspect"}, "flfs: TEXT is required\nTry \"flfs inspect --help\".\n", "no text"},
    {{"inspect", "--json"}, "flfs: TEXT is required\nTry \"flfs inspect --help\".\n", "still none"},
    {{"inspect", "--nope", "x"},
     "flfs: The following argument was not expected: --nope\nTry \"flfs inspect --help\".\n",
     "an unknown option of a command"},
    {{"mkdir"}, "flfs: PATH is required\nTry \"flfs mkdir --help\".\n", "no pathname"},
    {{"mkdir", "--links", "x"},
     "flfs: The following argument was not expected: --links. Did you mean --like?\nTry \"flfs "
     "mkdir --help\".\n",
     "another command's option"},
    {{"mkdri", "x"},
     "flfs: There is no command or option mkdri. Did you mean mkdir?\nTry \"flfs --help\".\n",
     "two letters that changed places"},
    {{"lss"},
     "flfs: There is no command or option lss. Did you mean ls?\nTry \"flfs --help\".\n",
     "a letter twice"},
    {{"--versoin"},
     "flfs: There is no command or option --versoin. Did you mean --version?\n"
     "Try \"flfs --help\".\n",
     "an option of the program"},
    {{"ls", "--folow"},
     "flfs: The following argument was not expected: --folow. Did you mean --follow?\n"
     "Try \"flfs ls --help\".\n",
     "an option of a command"},
    {{"touch", "--tiem=2024-02-29", "x"},
     "flfs: The following argument was not expected: --tiem=2024-02-29. Did you mean --time?\n"
     "Try \"flfs touch --help\".\n",
     "one with a value"},
    {{"mkdir", "-q", "--json", "x"},
     "flfs: --json excludes --quiet\nTry \"flfs mkdir --help\".\n",
     "nothing to read and something"},
    {{"rm", "-v", "x"},
     "flfs: --verbose requires --recursive\nTry \"flfs rm --help\".\n",
     "an option of trees"},
    {{"cp", "-n", "--as", "file", "a", "b"},
     "flfs: --as excludes --dry-run\nTry \"flfs cp --help\".\n",
     "looking ahead at narrower operations"},
    {{"completion", "fish"},
     "flfs: SHELL: fish not in {bash,powershell}\nTry \"flfs completion --help\".\n",
     "a shell that it doesn't know"},
    {{"readlink"}, "flfs: PATH is required\nTry \"flfs readlink --help\".\n", "no pathname"},
    {{"access", "r"}, "flfs: PATH is required\nTry \"flfs access --help\".\n", "no pathname"},
    {{"access", "rq", "x"},
     "flfs: MODES: rq is made of other letters than e, r, w and x\n"
     "Try \"flfs access --help\".\n",
     "a letter that isn't one"},
    {{"access", "[r]", "x"},
     "flfs: MODES: [r] is made of other letters than e, r, w and x\n"
     "Try \"flfs access --help\".\n",
     "brackets are no list"},
    {{"access", "", "x"},
     "flfs: MODES: A letter is needed: e, r, w or x\nTry \"flfs access --help\".\n",
     "no letter"},
    {{"chmod", "-h"}, "flfs: PATH is required\nTry \"flfs chmod --help\".\n", "a word, no help"},
    {{"chmod", "-z", "x"},
     "flfs: WORD: -z is no sign +, - or = with letters out of rwxashi\n"
     "Try \"flfs chmod --help\".\n",
     "a letter that isn't one"},
    {{"chmod", "", "x"},
     "flfs: WORD: (empty) is no sign +, - or = with letters out of rwxashi\n"
     "Try \"flfs chmod --help\".\n",
     "no word"},
    {{"chmod", "+w", "x", "-w"},
     "flfs: The following argument was not expected: -w\nTry \"flfs chmod --help\".\n",
     "a second word"},
    {{"mv", "a"}, "flfs: TO is required\nTry \"flfs mv --help\".\n", "one pathname"},
    {{"mv", "a", "b", "c"},
     "flfs: The following argument was not expected: c\nTry \"flfs mv --help\".\n",
     "three of them"},
    {{"ln", "a", "b"},
     "flfs: Say -s for a symbolic link, --hard, --junction or --shortcut\n"
     "Try \"flfs ln --help\".\n",
     "no kind of link"},
    {{"ln", "-s", "a"}, "flfs: LINK is required\nTry \"flfs ln --help\".\n", "one pathname"},
    {{"ln", "-s", "--shortcut", "a", "b"},
     "flfs: --symbolic excludes --shortcut\nTry \"flfs ln --help\".\n",
     "two kinds"},
    {{"ln", "--shortcut", "--file", "a", "b"},
     "flfs: --file requires --symbolic\nTry \"flfs ln --help\".\n",
     "a shortcut to a file"},
    {{"ln", "-s", "--file", "--directory", "a", "b"},
     "flfs: --file excludes --directory\nTry \"flfs ln --help\".\n",
     "two flavours"},
    {{"cp", "a"}, "flfs: TO is required\nTry \"flfs cp --help\".\n", "one pathname"},
    {{"cp", "--as", "tree", "a", "b"},
     "flfs: --as: tree not in {file,directory,symlink}\nTry \"flfs cp --help\".\n",
     "a kind that isn't one"},
    {{"cp", "-r", "--as", "directory", "a", "b"},
     "flfs: --as directory takes no other options\nTry \"flfs cp --help\".\n",
     "an empty directory has no depth"},
    {{"rm", "-r", "--as", "file", "a"},
     "flfs: --recursive excludes --as\nTry \"flfs rm --help\".\n",
     "two kinds of removal"},
    {{"stat", "--express", "--links", "a"},
     "flfs: --links excludes --express\nTry \"flfs stat --help\".\n",
     "two questions"},
    {{"canonical", "--weakly", "--base", "a", "b"},
     "flfs: --base excludes --weakly\nTry \"flfs canonical --help\".\n",
     "a base for what takes none"},
    {{"same", "a"}, "flfs: OTHER is required\nTry \"flfs same --help\".\n", "one pathname"},
    {{"relative", "a"}, "flfs: BASE is required\nTry \"flfs relative --help\".\n", "no base"},
    {{"tour", "a", "b"},
     "flfs: The following argument was not expected: b\nTry \"flfs tour --help\".\n",
     "two folders"},
    {{"ln", "--hard", "--junction", "a", "b"},
     "flfs: --hard excludes --junction\nTry \"flfs ln --help\".\n",
     "two kinds of others"},
    {{"rm", "--force", "a"},
     "flfs: --force requires --recursive\nTry \"flfs rm --help\".\n",
     "an option of trees"},
    {{"mkdir", "-p", "--like", "a", "b"},
     "flfs: --parents excludes --like\nTry \"flfs mkdir --help\".\n",
     "one of several like another"},
    {{"is", "dir", "a"},
     "flfs: KIND: dir is none of directory, file, other, symlink, junction and empty\n"
     "Try \"flfs is --help\".\n",
     "a kind that isn't one"},
    {{"resize", "-1", "a"},
     "flfs: SIZE: -1 is no number of bytes\nTry \"flfs resize --help\".\n",
     "a size below nothing"},
    {{"resize", "1k", "a"},
     "flfs: SIZE: 1k is no number of bytes\nTry \"flfs resize --help\".\n",
     "a size in other units"},
    {{"touch", "--time", "2023-02-29", "a"},
     "flfs: --time: 2023-02-29 is no time such as 2024-02-29T12:00:00Z\n"
     "Try \"flfs touch --help\".\n",
     "a day that never was"},
    {{"touch", "--time", "2024-02-29T24:00", "a"},
     "flfs: --time: 2024-02-29T24:00 is no time such as 2024-02-29T12:00:00Z\n"
     "Try \"flfs touch --help\".\n",
     "an hour that there isn't"},
    {{"touch", "--time", "2024-02", "a"},
     "flfs: --time: 2024-02 is no time such as 2024-02-29T12:00:00Z\n"
     "Try \"flfs touch --help\".\n",
     "no day"},
    {{"rm", "-r"}, "flfs: PATH is required\nTry \"flfs rm --help\".\n", "no pathname"},
    {{"inspect", "caf\xE9"}, "flfs: Argument 2 is not UTF-8\nTry \"flfs --help\".\n", "Latin-1"},
};

TEST(FlfsCommandLine, WrongUsage)
{
    for (usage_case const &row : usage_cases) {
        EXPECT_EQ(run_flfs(row.arguments), refused(2, row.err)) << row.why;
    }
}

struct help_case
{
    std::vector<std::string> arguments;
    std::vector<std::string> mentioned;
};

help_case const help_cases[] = {
    {{"--help"},
     {"Usage: flfs [OPTIONS] COMMAND", "inspect", "mkdir", "readlink", "Examples:", "--version"}},
    {{"-h"}, {"Usage: flfs [OPTIONS] COMMAND"}},
    {{"inspect", "--help"}, {"Usage: flfs inspect [OPTIONS] TEXT...", "--json"}},
    {{"inspect", "x", "-h"}, {"Usage: flfs inspect [OPTIONS] TEXT...", "--json"}},
    {{"mkdir", "--help"}, {"Usage: flfs mkdir [OPTIONS] PATH...", "--parents"}},
    {{"readlink", "--help"}, {"Usage: flfs readlink [OPTIONS] PATH...", "--json"}},
    {{"stat", "--help"}, {"Usage: flfs stat [OPTIONS] PATH...", "--links", "--json"}},
    {{"access", "--help"}, {"Usage: flfs access [OPTIONS] MODES PATH...", "--json"}},
    {{"chmod", "--help"}, {"Usage: flfs chmod [OPTIONS] WORD PATH...", "--links", "read-only"}},
    {{"ln", "--help"}, {"Usage: flfs ln [OPTIONS] TARGET LINK", "-s,--symbolic", "--shortcut"}},
    {{"mv", "--help"}, {"Usage: flfs mv [OPTIONS] FROM TO"}},
    {{"--help"},
     {"Pathnames:", "Asking:", "Making and changing:", "Links:", "Process and installation:",
      "All of it at once:"}},
    {{"absolute", "-h"}, {"Usage: flfs absolute [OPTIONS] PATH...", "--base", "--json"}},
    {{"canonical", "-h"}, {"Usage: flfs canonical [OPTIONS] PATH...", "--weakly", "--json"}},
    {{"relative", "-h"}, {"Usage: flfs relative [OPTIONS] PATH BASE", "--json"}},
    {{"unc", "-h"}, {"Usage: flfs unc [OPTIONS] PATH...", "--tolerant", "--json"}},
    {{"forms", "-h"}, {"Usage: flfs forms [OPTIONS] PATH...", "--json"}},
    {{"exists", "-h"}, {"Usage: flfs exists [OPTIONS] PATH...", "--json"}},
    {{"same", "-h"}, {"Usage: flfs same [OPTIONS] PATH OTHER", "--json"}},
    {{"df", "-h"}, {"Usage: flfs df [OPTIONS] PATH...", "--json"}},
    {{"cp", "-h"}, {"Usage: flfs cp [OPTIONS] FROM TO", "-P,--copy-symlinks", "--as KIND"}},
    {{"cd", "-h"}, {"Usage: flfs cd [OPTIONS] PATH", "--json"}},
    {{"where", "-h"}, {"Usage: flfs where [OPTIONS]", "--module", "--json"}},
    {{"tour", "-h"}, {"Usage: flfs tour [OPTIONS] [FOLDER]", "--keep"}},
    {{"rm", "-h"}, {"Usage: flfs rm [OPTIONS] PATH...", "-r,--recursive", "--keep-going"}},
    {{"ls", "-h"}, {"Usage: flfs ls [OPTIONS] [PATH...]", "-r,--recursive", "--follow", "--json"}},
    {{"tree", "-h"}, {"Usage: flfs tree [OPTIONS] [PATH...]", "--skip-denied", "--json"}},
    {{"is", "-h"}, {"Usage: flfs is [OPTIONS] KIND PATH...", "--json"}},
    {{"size", "-h"}, {"Usage: flfs size [OPTIONS] PATH...", "--json"}},
    {{"names", "-h"}, {"Usage: flfs names [OPTIONS] PATH...", "--json"}},
    {{"time", "-h"}, {"Usage: flfs time [OPTIONS] PATH...", "--json"}},
    {{"touch", "-h"}, {"Usage: flfs touch [OPTIONS] PATH...", "--time TIME", "--like FILE"}},
    {{"resize", "-h"}, {"Usage: flfs resize [OPTIONS] SIZE PATH..."}},
    {{"ensure", "-h"}, {"Usage: flfs ensure [OPTIONS] PATH..."}},
    {{"read-shortcut", "-h"}, {"Usage: flfs read-shortcut [OPTIONS] PATH...", "--json"}},
    {{"temp", "-h"}, {"Usage: flfs temp [OPTIONS]", "--json"}},
    {{"rm", "-h"}, {"-v,--verbose", "-n,--dry-run", "-q,--quiet", "--json"}},
    {{"completion", "-h"}, {"Usage: flfs completion [OPTIONS] SHELL", "bash", "powershell"}},
    {{"manual", "-h"}, {"Usage: flfs manual [OPTIONS]", "--as KIND"}},
};

/// Newer versions of CLI11 put the long names of options in a column of their own.
std::string without_columns(std::string text)
{
    for (std::size_t at = text.find(", "); at != std::string::npos; at = text.find(", ", at))
        if (text.find("  ", at) == at + 1)
            text.erase(at + 1, text.find_first_not_of(' ', at + 1) - (at + 1));
        else
            ++at;
    return text;
}

TEST(FlfsCommandLine, Help)
{
    for (help_case const &row : help_cases) {
        flfs_result const result = run_flfs(row.arguments);
        EXPECT_EQ(result.exit_code, 0) << result.out;
        EXPECT_EQ(result.err, "") << result.out;
        std::string const help = without_columns(result.out);
        for (std::string const &text : row.mentioned)
            EXPECT_NE(help.find(text), std::string::npos) << text << "\n" << result.out;
    }
}

TEST(FlfsCommandLine, Version)
{
    EXPECT_EQ(run_flfs({"--version"}), printed("flfs 0.2.0\n"));
}

struct word_case
{
    std::vector<std::string> words;
    std::vector<std::string> texts;
    char const *why;
};

word_case const word_cases[] = {
    {{""}, {""}, "the empty word"},
    {{"[a,b]"}, {"[a,b]"}, "brackets are no list"},
    {{"[[]", "["}, {"[[]", "["}, "lone brackets"},
    {{"++", "a"}, {"++", "a"}, "doesn't end the command"},
    {{"{}"}, {"{}"}, "is no empty list"},
    {{"%%", "a"}, {"%%", "a"}, "separates nothing"},
    {{"/json", "/h"}, {"/json", "/h"}, "a slash begins a pathname"},
    {{"inspect", "mkdir"}, {"inspect", "mkdir"}, "the names of commands"},
    {{"a=b", "a,b;c"}, {"a=b", "a,b;c"}, "all punctuation"},
    {{"-"}, {"-"}, "a hyphen alone"},
    {{"--", "-h", "--json"}, {"-h", "--json"}, "hyphens behind the double hyphen"},
    {{"a", "--", "-h"}, {"a", "-h"}, "also behind other texts"},
    {{"--", "--", "--"}, {"--", "--"}, "only the first one ends the options"},
    {{"\x1F", "\x1F["}, {"\x1F", "\x1F["}, "a unit separator in a text"},
};

TEST(FlfsCommandLine, TextsArriveUnchanged)
{
    for (word_case const &row : word_cases) {
        std::vector<std::string> arguments = {"inspect", "--json"};
        arguments.insert(arguments.end(), row.words.begin(), row.words.end());
        flfs_result const result = run_flfs(arguments);
        EXPECT_EQ(result.exit_code, 0) << row.why << "\n" << result.err;
        auto const array = nlohmann::json::parse(result.out, nullptr, false);
        std::vector<std::string> texts;
        for (auto const &object : array)
            texts.push_back(object.value("text", "(no text)"));
        EXPECT_EQ(texts, row.texts) << row.why;
    }
}

#if FLFS_SYSTEM_IS_SIMULATED

struct refused_case
{
    std::vector<std::string> arguments;
    char const *use;
};

refused_case const refused_cases[] = {
    {{"stat", "C:\\a"}, "read"},
    {{"access", "r", "C:\\a"}, "read"},
    {{"chmod", "-w", "C:\\a"}, "change"},
    {{"ln", "-s", "b", "C:\\a"}, "change"},
    {{"mv", "a", "b"}, "change"},
    {{"rm", "-r", "C:\\a"}, "change"},
    {{"absolute", "a"}, "read"},
    {{"canonical", "a"}, "read"},
    {{"relative", "a", "b"}, "read"},
    {{"unc", "a"}, "read"},
    {{"forms", "a"}, "read"},
    {{"exists", "a"}, "read"},
    {{"same", "a", "b"}, "read"},
    {{"df", "a"}, "read"},
    {{"cp", "a", "b"}, "change"},
    {{"cd", "a"}, "read"},
    {{"where"}, "read"},
    {{"tour", "a"}, "change"},
    {{"ls"}, "read"},
    {{"tree", "a"}, "read"},
    {{"is", "file", "a"}, "read"},
    {{"size", "a"}, "read"},
    {{"names", "a"}, "read"},
    {{"time", "a"}, "read"},
    {{"touch", "a"}, "change"},
    {{"resize", "1", "a"}, "change"},
    {{"ensure", "a"}, "change"},
    {{"read-shortcut", "a.lnk"}, "read"},
    {{"temp"}, "read"},
};

TEST(FlfsCommandLine, CommandsOnDisksAreRefusedWhereThereIsNoWindows)
{
    for (refused_case const &row : refused_cases) {
        flfs_result const result = run_flfs(row.arguments);
        std::string const name = row.arguments.front();
        EXPECT_EQ(result,
                  refused(2, "flfs: " + name +
                                 " works on Windows only: there is no Windows file system to " +
                                 row.use + " here.\n"))
            << name;
    }
}

#endif

} // namespace
