#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsRm, FilesAndEmptyDirectories)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.make_directory(work.path(u"dir"));
    EXPECT_EQ(run_flfs_on_disk({"rm", utf8(work.root()) + "/a.txt", utf8(work.path(u"dir"))}),
              printed("removed " + utf8(work.path(u"a.txt")) + "\nremoved " +
                      utf8(work.path(u"dir")) + "\n"));
    EXPECT_TRUE(work.entries(work.root()).empty());
}

TEST(FlfsRm, AFailureDoesNotStopIt)
{
    workspace work;
    work.make_file(work.path(u"dir\\a.txt"));
    work.make_file(work.path(u"b.txt"));
    EXPECT_EQ(run_flfs_on_disk({"rm", utf8(work.path(u"dir")), utf8(work.path(u"no")),
                                utf8(work.path(u"b.txt"))}),
              (flfs_result{
                  1, "removed " + utf8(work.path(u"b.txt")) + "\n",
                  report_of("DirectoryNotEmpty", "pathname", {utf8(work.path(u"dir"))},
                            "The directory isn't empty. Use -r to remove what is in it, too.") +
                      report_of("PathNotFound", "pathname", {utf8(work.path(u"no"))}, not_there)}));
    EXPECT_TRUE(work.is_file(work.path(u"dir\\a.txt")));
    EXPECT_FALSE(work.exists(work.path(u"b.txt")));
}

TEST(FlfsRm, Trees)
{
    for (char const *option : {"-r", "--recursive"}) {
        workspace work;
        work.make_file(work.path(u"dir\\sub\\a.txt"));
        work.make_file(work.path(u"dir\\b.txt"));
        EXPECT_EQ(run_flfs_on_disk({"rm", option, utf8(work.path(u"dir"))}),
                  printed("removed " + utf8(work.path(u"dir")) + "\n"))
            << option;
        EXPECT_TRUE(work.entries(work.root()).empty()) << option;
    }
}

TEST(FlfsRm, TreesFailOneByOne)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    EXPECT_EQ(
        run_flfs_on_disk({"rm", "-r", utf8(work.path(u"no")), utf8(work.path(u"dir"))}),
        (flfs_result{1, "removed " + utf8(work.path(u"dir")) + "\n",
                     report_of("PathNotFound", "pathname", {utf8(work.path(u"no"))}, not_there)}));
}

TEST(FlfsRm, NothingElseThanAFileOrADirectory)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.make_directory(work.path(u"dir"));
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const directory = utf8(work.path(u"dir"));
    flfs_result const wrong = run_flfs_on_disk({"rm", "--as", "file", directory});
    EXPECT_EQ(
        wrong,
        refused(1,
                report_of("FileIsDirectory", "pathname", {directory},
                          "A file is needed here, and this is a directory. Check the pathname.")));
    EXPECT_EQ(run_flfs_on_disk({"rm", "--as", "directory", file}).exit_code, 1);
    EXPECT_EQ(work.entries(work.root()).size(), 2u);
    EXPECT_EQ(run_flfs_on_disk({"rm", "--as", "file", file}).out, "removed " + file + "\n");
    EXPECT_EQ(run_flfs_on_disk({"rm", "--as", "directory", directory}).out,
              "removed " + directory + "\n");
    EXPECT_TRUE(work.entries(work.root()).empty());
}

TEST(FlfsRm, NoNameOfFullStopsThatWouldMeanTheDirectoryAheadOfIt)
{
    workspace work;
    work.make_file(work.path(u"x\\a.txt"));
    work.make_file(work.path(u"b.txt"));
    std::string const x = utf8(work.path(u"x"));
    for (char const *name : {"\\...", "/.. .", "\\....\\", "\\. ", "\\..  //"}) {
        for (char const *option : {"-r", "--"}) {
            flfs_result const result =
                run_flfs_on_disk({"rm", option, utf8(work.path(u"b.txt")), x + name});
            EXPECT_EQ(result.exit_code, 2) << name;
            EXPECT_EQ(result.out, "") << name;
            bool const ends_in_blank = std::string(name).back() == ' ';
            std::string const shown = ends_in_blank ? '"' + x + name + '"' : x + name;
            EXPECT_EQ(result.err, "flfs: PATH: " + shown + " would mean " + x +
                                      ", since the system drops full stops and blanks from the "
                                      "end\nTry \"flfs rm --help\".\n");
        }
    }
    EXPECT_TRUE(work.is_file(work.path(u"x\\a.txt")));
    EXPECT_TRUE(work.is_file(work.path(u"b.txt"))) << "nor anything else that was named";
}

TEST(FlfsRm, NoNameOfBlanks)
{
    workspace work;
    work.change_directory(work.root());
    work.make_file(work.path(u"a.txt"));
    for (char const *option : {"-r", "--"}) {
        flfs_result const result = run_flfs_on_disk({"rm", option, "  "});
        EXPECT_EQ(result.exit_code, 2) << option;
        EXPECT_EQ(result.out, "");
    }
    EXPECT_TRUE(work.is_file(work.path(u"a.txt")));
}

TEST(FlfsRm, DotsThatMeanDirectoriesAreTakenForThese)
{
    workspace work;
    work.make_file(work.path(u"a\\b\\c.txt"));
    std::string const b = utf8(work.path(u"a\\b"));
    EXPECT_EQ(run_flfs_on_disk({"rm", "-r", b + "\\."}).exit_code, 0);
    EXPECT_FALSE(work.exists(work.path(u"a\\b")));
    work.make_directory(work.path(u"a\\b"));
    EXPECT_EQ(run_flfs_on_disk({"rm", "-r", b + "\\.."}).exit_code, 0);
    EXPECT_FALSE(work.exists(work.path(u"a")));
}

TEST(FlfsRm, TheEmptyPathnameIsPassedOver)
{
    workspace work;
    work.change_directory(work.root());
    work.make_file(work.path(u"a.txt"));
    for (std::vector<std::string> const &arguments :
         {std::vector<std::string>{"rm", ""}, {"rm", "-r", ""}}) {
        EXPECT_EQ(run_flfs_on_disk(arguments), printed("passed over (empty)\n"));
    }
    EXPECT_TRUE(work.is_file(work.path(u"a.txt")));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

TEST(FlfsRm, ReadOnlyFilesEndATree)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\a.txt").set_attributes(u"C:\\dir\\a.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(run_flfs_on_disk({"rm", "-r", "C:\\dir"}),
              refused(1, report_of("AccessDenied", "pathname", {"C:\\dir\\a.txt"},
                                   "It is read-only, which `flfs chmod +w` changes, or you have no "
                                   "right to remove it.")));
    EXPECT_EQ(run_flfs_on_disk({"rm", "C:\\dir\\a.txt"}).exit_code, 0) << "by itself it goes";
    EXPECT_FALSE(machine.exists(u"C:\\dir\\a.txt"));
}

TEST(FlfsRm, Denied)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.txt");
    auto const broken = machine.fail_every_call_on_name(u"C:\\a.txt", ERROR_ACCESS_DENIED);
    EXPECT_EQ(run_flfs_on_disk({"rm", "C:\\a.txt"}),
              refused(1, report_of("AccessDenied", "pathname", {"C:\\a.txt"},
                                   "You have no right to remove it. Check the permissions.")));
    EXPECT_TRUE(machine.exists(u"C:\\a.txt"));
}

TEST(FlfsRm, LinksAndNotWhatTheyLeadTo)
{
    for (char const *option : {"-r", "--"}) {
        simulated_machine machine;
        machine.add_file(u"C:\\dir\\a.txt").add_junction(u"C:\\junction", u"C:\\dir");
        flfs_result const result = run_flfs_on_disk({"rm", option, "C:\\junction"});
        EXPECT_EQ(result.exit_code, 0) << result.err;
        EXPECT_FALSE(machine.exists(u"C:\\junction")) << option;
        EXPECT_TRUE(machine.exists(u"C:\\dir\\a.txt")) << option;
    }
}

#endif

} // namespace
