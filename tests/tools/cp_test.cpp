#include "flfs/tour/disk.hpp"
#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsCp, AFileAndATree)
{
    workspace work;
    work.make_file(work.path(u"from\\a.txt"), "1");
    work.make_file(work.path(u"from\\sub\\b.txt"), "2");
    std::string const from = utf8(work.path(u"from"));
    std::string const to = utf8(work.path(u"to"));
    EXPECT_EQ(run_flfs_on_disk({"cp", utf8(work.root()) + "/from", to}),
              printed("copied " + from + " -> " + to + "\n"));
    EXPECT_EQ(work.entries(work.path(u"to")), std::vector<std::u16string>{u"a.txt"});
    EXPECT_EQ(run_flfs_on_disk({"cp", "--recursive", from, to}).exit_code, 1)
        << "a.txt is there by now";
    EXPECT_EQ(run_flfs_on_disk({"cp", "-r", from, to + "2"}).exit_code, 0);
    EXPECT_EQ(work.entries(work.path(u"to2\\sub")), std::vector<std::u16string>{u"b.txt"});
}

struct existing_case
{
    std::vector<std::string> options;
    int exit_code;
    char const *said;
    char const *content;
};

existing_case const existing_cases[] = {
    {{"--skip-existing"}, 0, "copied as far as asked for ", "old"},
    {{"--overwrite"}, 0, "copied ", "new"},
    {{"--as", "file", "--overwrite"}, 0, "copied ", "new"},
    {{"--as", "file"}, 1, "", "old"},
    {{}, 1, "", "old"},
};

TEST(FlfsCp, OverAFileThatIsThere)
{
    for (existing_case const &row : existing_cases) {
        workspace work;
        work.make_file(work.path(u"a.txt"), "new");
        work.make_file(work.path(u"b.txt"), "old");
        std::string const from = utf8(work.path(u"a.txt"));
        std::string const to = utf8(work.path(u"b.txt"));
        std::vector<std::string> arguments = {"cp"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        arguments.insert(arguments.end(), {from, to});
        EXPECT_EQ(run_flfs_on_disk(arguments),
                  row.exit_code == 0
                      ? printed(row.said + from + " -> " + to + "\n")
                      : refused(1, report_of("FileExistsError", "pathname", {to},
                                             "Something of that name is there already. Choose "
                                             "another name, or remove it first.")));
        EXPECT_EQ(flfs::tour::content_of(work.path(u"b.txt")), row.content);
    }
}

TEST(FlfsCp, AsDirectory)
{
    workspace work;
    work.make_file(work.path(u"from\\a.txt"));
    std::string const from = utf8(work.path(u"from"));
    std::string const to = utf8(work.path(u"to"));
    EXPECT_EQ(run_flfs_on_disk({"cp", "--as", "directory", from, to}).exit_code, 0);
    EXPECT_TRUE(work.is_directory(work.path(u"to")));
    EXPECT_TRUE(work.entries(work.path(u"to")).empty());
    std::string const file = from + "\\a.txt";
    flfs_result const result =
        run_flfs_on_disk({"cp", "--as", "directory", file, utf8(work.path(u"no"))});
    EXPECT_EQ(
        result,
        refused(
            1, report_of(
                   "NotDirectoryError", "pathname", {file},
                   "A directory is needed here, and this is something else. Check the pathname.")));
}

TEST(FlfsCp, OptionsThatTheLibraryRefusesTogether)
{
    EXPECT_EQ(
        run_flfs_on_disk({"cp", "--update", "--overwrite", "a", "b"}),
        refused(1, report_of("InvalidArgument", "argument", {"a", "b"},
                             "Invalid combination selected: overwrite_if_exists, skip_existing & "
                             "update_existing cannot be used together.")));
}

TEST(FlfsCp, OntoItself)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const name = utf8(work.path(u"a.txt"));
    flfs_result const result = run_flfs_on_disk({"cp", name, name});
    EXPECT_EQ(
        result,
        refused(1,
                report_of("SystemError", "pathname", {name, name},
                          "They are the same, or a file stands where a directory is to go.", 17)));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

struct option_case
{
    std::vector<std::string> options;
    char16_t const *expected; ///< a name that must be there, or with ! ahead, must not
    DWORD tag;                ///< its reparse tag
};

option_case const option_cases[] = {
    {{"-r"}, u"C:\\to\\link", 0},
    {{"-r", "-P"}, u"C:\\to\\link", IO_REPARSE_TAG_SYMLINK},
    {{"-r", "--copy-symlinks"}, u"C:\\to\\link", IO_REPARSE_TAG_SYMLINK},
    {{"-r", "--skip-symlinks"}, u"!C:\\to\\link", 0},
    {{"-r", "--directories-only"}, u"C:\\to\\sub", 0},
    {{"-r", "--directories-only"}, u"!C:\\to\\a.txt", 0},
    {{"-r", "--update"}, u"C:\\to\\a.txt", 0},
};

TEST(FlfsCp, EachOptionReachesTheLibrary)
{
    for (option_case const &row : option_cases) {
        simulated_machine machine;
        machine.add_file(u"C:\\from\\a.txt", "x").add_directory(u"C:\\from\\sub");
        machine.add_symbolic_link(u"C:\\from\\link", u"a.txt");
        std::vector<std::string> arguments = {"cp"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        arguments.insert(arguments.end(), {"C:\\from", "C:\\to"});
        flfs_result const result = run_flfs_on_disk(arguments);
        EXPECT_EQ(result.exit_code, 0) << row.options.back() << "\n" << result.err;
        std::u16string const name = row.expected;
        if (name.front() == u'!') {
            EXPECT_FALSE(machine.exists(name.substr(1))) << row.options.back();
            continue;
        }
        ASSERT_TRUE(machine.exists(name)) << row.options.back();
        EXPECT_EQ(machine.reparse_tag(name), row.tag) << row.options.back();
    }
}

TEST(FlfsCp, Links)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.txt", "x").add_symbolic_link(u"C:\\link", u"a.txt");
    EXPECT_EQ(run_flfs_on_disk({"cp", "--hard-links", "C:\\a.txt", "C:\\b.txt"}).exit_code, 0);
    EXPECT_TRUE(machine.is_same(u"C:\\a.txt", u"C:\\b.txt"));
    EXPECT_EQ(run_flfs_on_disk({"cp", "--symlinks", "C:\\a.txt", "C:\\c.txt"}).exit_code, 0);
    EXPECT_EQ(machine.reparse_tag(u"C:\\c.txt"), IO_REPARSE_TAG_SYMLINK);
    EXPECT_EQ(run_flfs_on_disk({"cp", "--as", "symlink", "C:\\link", "C:\\copy"}).exit_code, 0);
    EXPECT_EQ(machine.reparse_data(u"C:\\copy"), machine.reparse_data(u"C:\\link"));
    machine.deny_symbolic_links();
    flfs_result const result = run_flfs_on_disk({"cp", "--symlinks", "C:\\a.txt", "C:\\d.txt"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.err.find("  code:     1314\n  You have no right to make symbolic links. "),
              std::string::npos)
        << result.err;
}

TEST(FlfsCp, ALinkOverAFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.txt", "x").add_symbolic_link(u"C:\\link", u"a.txt");
    machine.add_file(u"C:\\b.txt", "y");
    flfs_result const result = run_flfs_on_disk({"cp", "-P", "C:\\link", "C:\\b.txt"});
    EXPECT_EQ(
        result,
        refused(
            1,
            report_of(
                "SystemError", "pathname", {"C:\\link", "C:\\b.txt"},
                "A link can't be copied over something that is there, and devices can't be copied.",
                130)));
    EXPECT_EQ(machine.content(u"C:\\b.txt"), "y");
}

#endif

} // namespace
