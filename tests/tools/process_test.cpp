#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsCd, ShowsWhatHasChanged)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.change_directory(work.root());
    std::string const root = utf8(work.root());
    std::string const dir = utf8(work.path(u"dir"));
    flfs_result const result = run_flfs_on_disk({"cd", dir});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    std::string const begin = "directory  " + root + " -> " + dir + "\n=" + root.substr(0, 2) + ' ';
    EXPECT_EQ(result.out.substr(0, begin.size()), begin);
    std::string const end = " -> " + dir + "\n"; // what it was before is another test's
    EXPECT_EQ(result.out.substr(result.out.size() - end.size()), end) << result.out;
}

// the library makes PATH whole when it stands in the new directory already
TEST(FlfsCd, ARelativePathnameStandsTwiceInTheVariable)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.change_directory(work.root());
    flfs_result const result = run_flfs_on_disk({"cd", "dir"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    std::string const end = " -> " + utf8(work.path(u"dir\\dir")) + "\n";
    EXPECT_EQ(result.out.substr(result.out.size() - end.size()), end) << result.out;
}

TEST(FlfsCd, AFailureChangesNothing)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.change_directory(work.root());
    std::string const missing = utf8(work.path(u"no"));
    EXPECT_EQ(run_flfs_on_disk({"cd", missing}),
              refused(1, report_of("PathNotFound", "pathname", {missing}, not_there)));
    EXPECT_EQ(run_flfs_on_disk({"absolute", "x"}).out, utf8(work.path(u"x")) + "\n");
}

TEST(FlfsDf, AFailureDoesNotStopIt)
{
    workspace work;
    flfs_result const result = run_flfs_on_disk({"df", "--json", "", utf8(work.root())});
    EXPECT_EQ(result.exit_code, 1);
    ordered_json const array = ordered_json::parse(result.out);
    ASSERT_EQ(array.size(), 2u);
    EXPECT_TRUE(array[0].at("capacity").is_null());
    EXPECT_EQ(array[0].at("failure").at("sentence"), "Empty Path not permitted.");
    EXPECT_GT(array[1].at("capacity"), 0);
    EXPECT_LE(array[1].at("available"), array[1].at("free"));
    EXPECT_TRUE(array[1].at("failure").is_null());
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

TEST(FlfsCd, TheVariableBeforeAndAfter)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\a").add_directory(u"C:\\b");
    EXPECT_EQ(run_flfs_on_disk({"cd", "C:/a"}).out, "directory  C:\\ -> C:\\a\n"
                                                    "=C:        (not set) -> C:\\a\n");
    flfs_result const result = run_flfs_on_disk({"cd", "--json", "C:/b"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    ordered_json const expected = {{"pathname", "C:/b"},
                                   {"name_of_variable", "=C:"},
                                   {"before", {{"directory", "C:\\a"}, {"variable", "C:\\a"}}},
                                   {"after", {{"directory", "C:\\b"}, {"variable", "C:\\b"}}},
                                   {"failure", nullptr}};
    EXPECT_EQ(ordered_json::parse(result.out), expected) << result.out;
}

TEST(FlfsCd, AServerHasNoVariable)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share").add_directory(u"\\\\server\\share\\dir");
    EXPECT_EQ(run_flfs_on_disk({"cd", "\\\\server\\share\\dir"}).out,
              "directory  C:\\ -> \\\\server\\share\\dir\n");
    EXPECT_EQ(machine.current_directory(), u"\\\\server\\share\\dir");
}

TEST(FlfsCd, TheEmptyPathnameStays)
{
    simulated_machine machine;
    EXPECT_EQ(run_flfs_on_disk({"cd", ""}), printed("directory  C:\\ -> C:\\\n"));
}

TEST(FlfsDf, Readable)
{
    simulated_machine machine;
    machine.set_volume_space(u"C:\\", 1536ULL << 30, 1023, 2047);
    EXPECT_EQ(run_flfs_on_disk({"df", "C:/"}),
              printed("C:\\\n"
                      "    capacity   1649267441664 bytes (1.5 TiB)\n"
                      "    free       1023 bytes\n"
                      "    available  2047 bytes (1.9 KiB)\n"));
}

// The library finds the installation once for each process, so all tests of this program
// leave its module where it is: all that this host has loaded is C:\program\program.exe.
TEST(FlfsWhere, TheModuleWhereNoInstallationIs)
{
    simulated_machine machine;
    machine.add_file(u"C:\\program\\program.exe");
    EXPECT_EQ(run_flfs_on_disk({"where"}), printed("C:\\program\\program.exe\n"));
    machine.set_program_pathname(u"C:\\Tool\\bin\\win64\\program.exe");
    machine.add_file(u"C:\\Tool\\bin\\win64\\program.exe");
    EXPECT_EQ(run_flfs_on_disk({"where", "--module"}),
              printed("C:\\program\\program.exe\n"
                      "library\n"
                      "    module  C:\\Tool\\bin\\win64\\program.exe\n"
                      "    base    C:\\Tool\n"
                      "flfs\n"
                      "    module  C:\\Tool\\bin\\win64\\program.exe\n"
                      "    base    C:\\Tool\n"));
    ordered_json const object = ordered_json::parse(run_flfs_on_disk({"where", "--json"}).out);
    EXPECT_EQ(object.at("install_path"), "C:\\program\\program.exe");
    EXPECT_EQ(object.at("program").at("base"), "C:\\Tool");
    EXPECT_TRUE(object.at("failure").is_null());
}

TEST(FlfsWhere, AModuleThatIsGone)
{
    simulated_machine machine;
    flfs_result const result = run_flfs_on_disk({"where", "--json"});
    EXPECT_EQ(result.exit_code, 1);
    ordered_json const object = ordered_json::parse(result.out);
    EXPECT_TRUE(object.at("library").is_null());
    EXPECT_EQ(object.at("failure").at("identifier"), "fl:filesystem:PathNotFound");
}

#endif

} // namespace
