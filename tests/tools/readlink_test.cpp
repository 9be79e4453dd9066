#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

flfs_result report(std::vector<std::u16string> const &pathnames, bool as_json = false)
{
    return run_flfs_on_disk("readlink", pathnames, as_json);
}

TEST(FlfsReadlink, WhatIsNoLink)
{
    workspace work;
    work.make_file(work.path(u"file"));
    EXPECT_EQ(report({work.path(u"file")}),
              refused(1, report_of("InvalidArgument", "argument", {utf8(work.path(u"file"))},
                                   "The file or directory is not a reparse point.")));
}

TEST(FlfsReadlink, EachFailureIsTold)
{
    workspace work;
    std::u16string const missing = work.path(u"no");
    EXPECT_EQ(report({missing, u""}),
              refused(1, told_of_missing_and_empty("pathname", utf8(missing))));
}

TEST(FlfsReadlink, AFailureAsJson)
{
    workspace work;
    flfs_result const result = report({work.path(u"no")}, true);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "");
    ordered_json const one = ordered_json::parse(result.out).at(0);
    EXPECT_EQ(one.at("pathname"), utf8(work.path(u"no")));
    EXPECT_TRUE(one.at("kind").is_null() && one.at("text").is_null() && one.at("tag").is_null());
    EXPECT_EQ(one.at("failure").at("identifier"), "fl:filesystem:PathNotFound");
}

TEST(FlfsReadlink, AFileCalledLikeAShortcut)
{
    workspace work;
    work.make_file(work.path(u"a.lnk"), std::string(200, 'x'));
    EXPECT_EQ(
        report({work.path(u"a.lnk")}),
        refused(1, report_of(
                       "SystemError", "pathname", {utf8(work.path(u"a.lnk"))},
                       "The system refused. `net helpmsg 14077` tells what it means by that code.",
                       14077)));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::flavour;
using simulation::simulated_machine;

TEST(FlfsReadlink, IsRefusedWhereThereIsNoWindows)
{
    for (char const *option : {"--json", "other"}) {
        EXPECT_EQ(run_flfs({"readlink", option, "C:\\link"}),
                  refused(2, "flfs: readlink works on Windows only: there is no Windows file "
                             "system to read here.\n"))
            << option;
    }
}

struct kind_case
{
    char16_t const *pathname;
    char const *lines;
    char const *kind;
    char const *text; ///< a null pointer: none
    char const *tag;
};

constexpr kind_case kind_cases[] = {
    {u"C:/relative",
     "C:\\relative\n    kind  symbolic link, relative\n    text  ..\\x\n"
     "    tag   0xA000000C\n",
     "symbolic_link_relative", "..\\x", "0xA000000C"},
    {u"C:\\absolute",
     "C:\\absolute\n    kind  symbolic link, absolute\n    text  C:\\x\n"
     "    tag   0xA000000C\n",
     "symbolic_link_absolute", "C:\\x", "0xA000000C"},
    {u"C:\\junction", "C:\\junction\n    kind  junction\n    text  C:\\x\n    tag   0xA0000003\n",
     "junction", "C:\\x", "0xA0000003"},
    {u"C:\\unnamed",
     "C:\\unnamed\n    kind  junction\n    text  \\??\\C:\\x\n    tag   0xA0000003\n", "junction",
     "\\??\\C:\\x", "0xA0000003"},
    {u"C:\\volume",
     "C:\\volume\n    kind  volume mount point\n    text  \\??\\Volume{1}\n"
     "    tag   0xA0000003\n",
     "volume_mount_point", "\\??\\Volume{1}", "0xA0000003"},
    {u"C:\\dedup", "C:\\dedup\n    kind  deduplicated file, no link\n    tag   0x80000013\n",
     "deduplicated_file", nullptr, "0x80000013"},
    {u"C:\\dfs", "C:\\dfs\n    kind  DFS directory, no link\n    tag   0x8000000A\n",
     "dfs_directory", nullptr, "0x8000000A"},
    {u"C:\\other", "C:\\other\n    kind  reparse point of another kind\n    tag   0x80000123\n",
     "other_reparse_point", nullptr, "0x80000123"},
    {u"C:\\a.lnk", "C:\\a.lnk\n    kind  shortcut\n    text  C:\\dir\n", "shortcut", "C:\\dir",
     nullptr},
};

class FlfsReadlinkKinds : public testing::Test
{
protected:
    FlfsReadlinkKinds()
    {
        machine.add_directory(u"C:\\dir").add_symbolic_link(u"C:\\relative", u"../x");
        machine.add_symbolic_link(u"C:\\absolute", u"C:\\x", flavour::directory);
        machine.add_junction(u"C:\\junction", u"C:\\x");
        machine.add_junction(u"C:\\unnamed", uR"(\??\C:\x\)", u"");
        machine.add_junction(u"C:\\volume", uR"(\??\Volume{1}\)", u"");
        machine.add_deduplicated_file(u"C:\\dedup");
        machine.add_reparse_point(u"C:\\dfs", 0x8000000A, "x", flavour::directory);
        machine.add_reparse_point(u"C:\\other", 0x80000123, "x");
        machine.add_shortcut(u"C:\\a.lnk", u"C:\\dir");
    }

    simulated_machine machine;
};

ordered_json value_or_null(char const *text)
{
    return text == nullptr ? ordered_json(nullptr) : ordered_json(text);
}

TEST_F(FlfsReadlinkKinds, ForPeople)
{
    for (kind_case const &row : kind_cases) {
        EXPECT_EQ(report({row.pathname}), printed(row.lines));
        EXPECT_EQ(machine.open_handles(), 0) << row.lines;
        EXPECT_EQ(machine.live_interfaces(), 0) << row.lines;
        EXPECT_EQ(machine.com_apartments(), 0) << row.lines;
    }
}

TEST_F(FlfsReadlinkKinds, AsJson)
{
    std::vector<std::u16string> pathnames;
    for (kind_case const &row : kind_cases)
        pathnames.push_back(row.pathname);
    flfs_result const result = report(pathnames, true);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    ordered_json const array = ordered_json::parse(result.out);
    std::size_t at = 0;
    for (kind_case const &row : kind_cases) {
        ordered_json const &one = array.at(at++);
        EXPECT_EQ(one.at("pathname"), utf8(row.pathname));
        EXPECT_EQ(one.at("kind"), row.kind);
        EXPECT_EQ(one.at("text"), value_or_null(row.text)) << row.kind;
        EXPECT_EQ(one.at("tag"), value_or_null(row.tag)) << row.kind;
        EXPECT_TRUE(one.at("failure").is_null()) << row.kind;
    }
    EXPECT_EQ(array.size(), at);
}

TEST_F(FlfsReadlinkKinds, AFailureDoesNotStopIt)
{
    flfs_result const result = report({u"C:\\no", u"C:\\junction"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, kind_cases[2].lines);
    EXPECT_NE(result.err, "");
}

TEST_F(FlfsReadlinkKinds, BeyondTheOldLimit)
{
    std::u16string const name =
        u"C:\\" + std::u16string(200, u'd') + u'\\' + std::u16string(200, u'n');
    machine.add_symbolic_link(name, u"x");
    flfs_result const result = report({name});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_NE(result.out.find("    text  x\n"), std::string::npos) << result.out;
}

#else

// The program itself: its arguments come to the command.
TEST(FlfsReadlink, RunsAsACommand)
{
    workspace work;
    flfs_result const result = run_flfs({"readlink", "--json", utf8(work.path(u"no"))});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(ordered_json::parse(result.out).at(0).at("failure").at("identifier"),
              "fl:filesystem:PathNotFound");
}

#endif

} // namespace
