#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsMv, RenamesAndReplaces)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "1");
    work.make_file(work.path(u"b.txt"), "22");
    EXPECT_EQ(
        run_flfs_on_disk({"mv", utf8(work.root()) + "/a.txt", utf8(work.path(u"b.txt"))}),
        printed("moved " + utf8(work.path(u"a.txt")) + " -> " + utf8(work.path(u"b.txt")) + "\n"));
    EXPECT_EQ(work.entries(work.root()), std::vector<std::u16string>{u"b.txt"});
}

TEST(FlfsMv, NoNameOfFullStopsThatWouldMeanTheDirectoryAheadOfIt)
{
    workspace work;
    work.make_file(work.path(u"x\\a.txt"));
    std::string const x = utf8(work.path(u"x"));
    std::string const y = utf8(work.path(u"y"));
    auto const told = [](std::string const &word, std::string const &meaning) {
        return "flfs: " + word + "\\... would mean " + meaning +
               ", since the system drops full stops and blanks from the end\nTry \"flfs mv "
               "--help\".\n";
    };
    EXPECT_EQ(run_flfs_on_disk({"mv", x + "\\...", y}), refused(2, told("FROM: " + x, x)));
    EXPECT_EQ(run_flfs_on_disk({"mv", x + "\\a.txt", y + "\\..."}),
              refused(2, told("TO: " + y, y)));
    EXPECT_EQ(work.entries(work.root()), std::vector<std::u16string>{u"x"});
    EXPECT_TRUE(work.is_file(work.path(u"x\\a.txt")));
}

struct failure_case
{
    char16_t const *from;
    char16_t const *to;
    char16_t const *blamed;
};

constexpr failure_case failure_cases[] = {
    {u"no", u"b.txt", u"no"},
    {u"a.txt", u"no\\b.txt", u"no\\b.txt"},
};

TEST(FlfsMv, TheMissingOneIsToBlame)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    for (failure_case const &row : failure_cases) {
        EXPECT_EQ(run_flfs_on_disk({"mv", utf8(work.path(row.from)), utf8(work.path(row.to))}),
                  refused(1, report_of("PathNotFound", "pathname", {utf8(work.path(row.blamed))},
                                       not_there)));
        EXPECT_EQ(work.entries(work.root()), std::vector<std::u16string>{u"a.txt"});
    }
}

#if FLFS_SYSTEM_IS_SIMULATED

TEST(FlfsMv, ACodeThatMayBeAboutBoth)
{
    simulation::simulated_machine machine;
    machine.add_file(u"C:\\a.txt");
    auto const broken = machine.fail_call("MoveFileExW", 1, ERROR_IO_DEVICE);
    flfs_result const result = run_flfs_on_disk({"mv", "C:\\a.txt", "C:\\b.txt"});
    EXPECT_EQ(
        result,
        refused(
            1, report_of("SystemError", "pathname", {"C:\\a.txt", "C:\\b.txt"},
                         "The system refused. `net helpmsg 1117` tells what it means by that code.",
                         1117)));
}

TEST(FlfsMv, WithoutAPathnameBothArgumentsStand)
{
    simulation::simulated_machine machine;
    std::u16string const server = u"\\\\" + std::u16string(260, u's');
    EXPECT_EQ(run_flfs_on_disk({"mv", "C:\\a.txt", utf8(server)}),
              refused(1, report_of("InvalidArgument", "argument", {"C:\\a.txt", utf8(server)},
                                   "Long UNC path without root not permitted.")));
}

#endif

} // namespace
