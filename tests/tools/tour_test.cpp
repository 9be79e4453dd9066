#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

/// Puts the module that everything here counts to on the disk.
void make_program(simulated_machine &machine)
{
    machine.add_file(u"C:\\program\\program.exe");
}

#endif

/// The same on the system that the test runs on, where that isn't there by itself.
void make_program([[maybe_unused]] workspace &work)
{
#if FLFS_SYSTEM_IS_SIMULATED
    work.make_file(u"C:\\program\\program.exe");
#endif
}

TEST(FlfsTour, AllAsExpected)
{
    workspace work;
    std::string const folder = utf8(work.path(u"tour Gr\u00F6\u00DFe"));
    make_program(work);
    flfs_result const result = run_flfs_on_disk({"tour", folder});
    EXPECT_EQ(result.exit_code, 0) << result.out;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.rfind("A tour of fl::filesystem in " + folder + ",\n", 0), 0u);
    EXPECT_NE(result.out.find(" steps, all as expected\n"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("OTHERWISE"), std::string::npos) << result.out;
    EXPECT_TRUE(work.entries(work.root()).empty()) << "the folder is removed";
}

TEST(FlfsTour, KeepsItsFolder)
{
    workspace work;
    make_program(work);
    flfs_result const result = run_flfs_on_disk({"tour", "--keep", utf8(work.path(u"kept"))});
    EXPECT_EQ(result.exit_code, 0) << result.out;
    std::vector<std::u16string> const left = {u"archive", u"reports"};
    EXPECT_EQ(work.entries(work.path(u"kept")), left);
}

TEST(FlfsTour, AFolderThatIsThereIsNotTouched)
{
    workspace work;
    work.make_file(work.path(u"mine\\a.txt"));
    std::string const folder = utf8(work.path(u"mine"));
    EXPECT_EQ(
        run_flfs_on_disk({"tour", folder}),
        refused(1, report_of("FileExistsError", "pathname", {folder},
                             "Something of that name is there already. Choose another name, or "
                             "remove it first.")));
    EXPECT_EQ(work.entries(work.path(u"mine")), std::vector<std::u16string>{u"a.txt"});
}

#if FLFS_SYSTEM_IS_SIMULATED

TEST(FlfsTour, InAFreshTemporaryFolder)
{
    simulated_machine machine;
    make_program(machine);
    machine.add_directory(u"C:\\temporary");
    ::SetEnvironmentVariableW(L"TEMP", L"C:\\temporary");
    flfs_result const result = run_flfs_on_disk({"tour", "--keep"});
    EXPECT_EQ(result.exit_code, 0) << result.out << result.err;
    std::vector<std::u16string> const names = machine.entries(u"C:\\temporary");
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names.front().substr(0, 10), u"flfs-tour-");
    EXPECT_EQ(machine.current_directory(), u"C:\\");
}

TEST(FlfsTour, NobodyKnowsATemporaryFolder)
{
    simulated_machine machine;
    EXPECT_EQ(run_flfs_on_disk({"tour"}),
              refused(1, "flfs: No temporary folder is known. Set the environment variable "
                         "TEMP, or say FOLDER.\n"));
}

TEST(FlfsTour, WithoutTheRightToMakeSymbolicLinks)
{
    simulated_machine machine;
    make_program(machine);
    machine.deny_symbolic_links();
    flfs_result const result = run_flfs_on_disk({"tour", "C:\\tour"});
    EXPECT_EQ(result.exit_code, 0) << result.out;
    EXPECT_NE(result.out.find("This system refuses symbolic links, which the library reports.\n"
                              "        create_symlink(u\"may.txt\", u\"reports\\\\link.txt\", "
                              "regular_file)\n"
                              "        = SystemError, code 1314\n"),
              std::string::npos)
        << result.out;
}

TEST(FlfsTour, AStepThatComesOutOtherwise)
{
    simulated_machine machine;
    make_program(machine);
    auto const broken = machine.fail_call("MoveFileExW", 1, ERROR_IO_DEVICE);
    flfs_result const result = run_flfs_on_disk({"tour", "C:\\tour"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.out.find("        = SystemError naming reports\\june.txt, code 1117\n"
                              "        OTHERWISE THAN EXPECTED: july.txt, may.txt\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find(" steps, otherwise than expected: "), std::string::npos);
    EXPECT_EQ(result.out.find("all as expected"), std::string::npos);
    EXPECT_FALSE(machine.exists(u"C:\\tour"));
    EXPECT_EQ(machine.open_handles(), 0);
}

TEST(FlfsTour, WaitsForOthersWhoStandInItsFolder)
{
    simulated_machine machine;
    make_program(machine);
    auto const broken =
        machine.fail_call_on_name("RemoveDirectoryW", u"C:\\tour", 1, ERROR_SHARING_VIOLATION);
    flfs_result const result = run_flfs_on_disk({"tour", "C:\\tour"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(broken.fired());
    EXPECT_FALSE(machine.exists(u"C:\\tour"));
}

TEST(FlfsTour, AFolderThatCanNotBeRemoved)
{
    simulated_machine machine;
    make_program(machine);
    auto const broken =
        machine.fail_every_call_on_name("RemoveDirectoryW", u"C:\\tour", ERROR_ACCESS_DENIED);
    flfs_result const result = run_flfs_on_disk({"tour", "C:\\tour"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err.rfind("flfs: fl:filesystem:AccessDenied\n  pathname: C:\\tour\n", 0), 0u)
        << result.err;
}

// what checks itself must not be blind: whatever call fails, a step notices
TEST(FlfsTour, EveryKindOfFailingCallIsNoticed)
{
    for (char const *function :
         {"CreateDirectoryW", "CopyFileW", "MoveFileExW", "CreateHardLinkW", "SetFileAttributesW",
          "SetCurrentDirectoryW", "DeleteFileW", "RemoveDirectoryW", "IPersistFile::Save"}) {
        simulated_machine machine;
        make_program(machine);
        auto const broken = machine.fail_every_call_on(function, ERROR_IO_DEVICE);
        EXPECT_EQ(run_flfs_on_disk({"tour", "C:\\tour"}).exit_code, 1) << function;
        EXPECT_TRUE(broken.fired()) << function;
    }
}

#endif

} // namespace
