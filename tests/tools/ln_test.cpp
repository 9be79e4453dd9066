#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsLn, AShortcut)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    std::string const target = utf8(work.path(u"dir"));
    std::string const link = utf8(work.path(u"to dir.lnk"));
    EXPECT_EQ(run_flfs_on_disk({"ln", "--shortcut", target, link}),
              printed("made " + link + " -> " + target + "\n"));
    EXPECT_EQ(run_flfs_on_disk({"readlink", link}).out,
              link + "\n    kind  shortcut\n    text  " + target + "\n");
}

TEST(FlfsLn, AShortcutNeedsItsExtension)
{
    workspace work;
    std::string const target = utf8(work.path(u"a.txt"));
    std::string const link = utf8(work.path(u"link"));
    EXPECT_EQ(run_flfs_on_disk({"ln", "--shortcut", target, link}),
              refused(1, report_of("InvalidArgument", "argument", {target, link},
                                   "Shortcut path input must have .lnk file extension.")));
    EXPECT_FALSE(work.exists(work.path(u"link")));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

struct flavour_case
{
    std::vector<std::string> options;
    char const *target;
    bool is_to_directory;
    char const *why;
};

flavour_case const flavour_cases[] = {
    {{"-s"}, "dir", true, "the target tells"},
    {{"-s"}, "a.txt", false, "the target tells"},
    {{"--symbolic"}, "no", false, "a missing target is a file"},
    {{"-s", "--directory"}, "no", true, "forced"},
    {{"-s", "--file"}, "dir", false, "forced"},
};

TEST(FlfsLn, SymbolicLinks)
{
    for (flavour_case const &row : flavour_cases) {
        simulated_machine machine;
        machine.add_directory(u"C:\\dir").add_file(u"C:\\a.txt");
        std::vector<std::string> arguments = {"ln"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        arguments.insert(arguments.end(), {row.target, "C:/link"});
        flfs_result const result = run_flfs_on_disk(arguments);
        EXPECT_EQ(result.exit_code, 0) << row.why << "\n" << result.err;
        EXPECT_EQ(result.out, std::string("made C:\\link -> ") + row.target + "\n") << row.why;
        EXPECT_EQ(result.err, "") << row.why;
        EXPECT_EQ(machine.reparse_tag(u"C:\\link"), 0xA000000C) << row.why;
        EXPECT_EQ((machine.attributes(u"C:\\link") & FILE_ATTRIBUTE_DIRECTORY) != 0,
                  row.is_to_directory)
            << row.why;
    }
}

// the library names no pathname; it is the link that is in the way
TEST(FlfsLn, AnExistingLinkIsToBlame)
{
    simulated_machine machine;
    machine.add_file(u"C:\\link", "x");
    EXPECT_EQ(
        run_flfs_on_disk({"ln", "-s", "C:\\target", "C:\\link"}),
        refused(1, report_of("FileExistsError", "argument", {"C:\\link"},
                             "Something of that name is there already. Choose another name, or "
                             "remove it first.")));
    EXPECT_EQ(machine.content(u"C:\\link"), "x");
}

TEST(FlfsLn, WithoutTheRightToMakeLinks)
{
    simulated_machine machine;
    machine.deny_symbolic_links();
    EXPECT_EQ(run_flfs_on_disk({"ln", "-s", "C:\\target", "C:\\link"}),
              refused(1, report_of("SystemError", "argument", {"C:\\link"},
                                   "You have no right to make symbolic links. Turn on Windows' "
                                   "developer mode, or be an administrator.",
                                   1314)));
    EXPECT_FALSE(machine.exists(u"C:\\link"));
}

TEST(FlfsLn, ATargetBeyondAsciiMayBeToBlame)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.\u00E9\u00E9\u00E9");
    std::string const target = "C:\\a.\xC3\xA9\xC3\xA9\xC3\xA9";
    flfs_result const result = run_flfs_on_disk({"ln", "-s", target, "C:\\link"});
    EXPECT_EQ(
        result,
        refused(1,
                "flfs: foundation::ustring::CtypeInvalidCharacter\n"
                "  argument: " +
                    target +
                    "\n"
                    "  and:      C:\\link\n"
                    "  code:     0\n"
                    "  An extension of three characters must be ASCII here. Rename the file.\n"));
}

#endif

} // namespace
