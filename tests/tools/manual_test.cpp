#include "tools/run_flfs.hpp"

#include "flfs/suggestion.hpp"

#include <string>

namespace {

using namespace test_support;

bool has_line(std::string const &text, std::string const &line)
{
    return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
}

TEST(FlfsManual, ForMan)
{
    flfs_result const result = run_flfs({"manual", "--as", "man"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    for (char const *const line :
         {".TH FLFS 1 \"\" \"flfs\"", ".SH \"Making and changing\"",
          ".SS \"flfs cp [OPTIONS] FROM TO\"", "\\fB\\-P, \\-\\-copy\\-symlinks\\fR",
          "\\&. and .. are dropped by text, and links stay: see canonical.",
          "\\fB\\-\\-base DIRECTORY\\fR"})
        EXPECT_TRUE(has_line(result.out, line)) << line;
}

TEST(FlfsManual, InMarkdown)
{
    flfs_result const result = run_flfs({"manual"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    for (char const *const line : {"# flfs", "## Links", "### `flfs ls [OPTIONS] [PATH...]`",
                                   "- `-r, --recursive`: List all directories below, too"})
        EXPECT_TRUE(has_line(result.out, line)) << line;
}

TEST(FlfsCompletion, NamesCommandsAndOptions)
{
    flfs_result const bash = run_flfs({"completion", "bash"});
    EXPECT_EQ(bash.exit_code, 0) << bash.err;
    EXPECT_TRUE(has_line(bash.out, "    relative) options='--help --json' ;;"));
    flfs_result const powershell = run_flfs({"completion", "powershell"});
    EXPECT_EQ(powershell.exit_code, 0) << powershell.err;
    EXPECT_TRUE(has_line(powershell.out, "        'relative' = '--help --json'"));
}

struct suggestion_case
{
    char const *word;
    char const *meant;
    char const *why;
};

constexpr suggestion_case suggestion_cases[] = {
    {"remoev", "remove", "two letters that changed places"},
    {"remov", "remove", "one that is missing"},
    {"remmove", "remove", "one too many"},
    {"renove", "remove", "another one"},
    {"rmve", "remove", "two that are missing"},
    {"rename", "", "three others"},
    {"r", "", "nothing of it would be left"},
    {"lx", "ls", "one of two"},
    {"", "", "no word"},
    {"remove", "remove", "itself"},
};

TEST(FlfsSuggestion, TheNearest)
{
    for (suggestion_case const &row : suggestion_cases)
        EXPECT_EQ(flfs::nearest(row.word, {"ls", "remove", "list"}), row.meant) << row.why;
}

} // namespace
