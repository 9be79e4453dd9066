#include "support/workspace.hpp"
#include "tools/run_flfs.hpp"

#include <gtest/gtest.h>

#include <string>

#if FLFS_SYSTEM_IS_SIMULATED
#include <simulation/machine.hpp>
#endif

namespace {

using namespace test_support;

TEST(FlfsMv, RenamesAndReplaces)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "1");
    work.make_file(work.path(u"b.txt"), "22");
    flfs_result const result =
        run_flfs_on_disk({"mv", utf8(work.root()) + "/a.txt", utf8(work.path(u"b.txt"))});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out,
              "moved " + utf8(work.path(u"a.txt")) + " -> " + utf8(work.path(u"b.txt")) + "\n");
    EXPECT_EQ(result.err, "");
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
    flfs_result const from = run_flfs_on_disk({"mv", x + "\\...", y});
    EXPECT_EQ(from.exit_code, 2);
    EXPECT_EQ(from.err, told("FROM: " + x, x));
    flfs_result const to = run_flfs_on_disk({"mv", x + "\\a.txt", y + "\\..."});
    EXPECT_EQ(to.exit_code, 2);
    EXPECT_EQ(to.err, told("TO: " + y, y));
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
        flfs_result const result =
            run_flfs_on_disk({"mv", utf8(work.path(row.from)), utf8(work.path(row.to))});
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "flfs: fl:filesystem:PathNotFound\n"
                              "  pathname: " +
                                  utf8(work.path(row.blamed)) +
                                  "\n"
                                  "  code:     0\n"
                                  "  The name, or a directory on the way to it, doesn't exist. "
                                  "Check the spelling.\n");
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
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err,
              "flfs: fl:filesystem:SystemError\n"
              "  pathname: C:\\a.txt\n"
              "  and:      C:\\b.txt\n"
              "  code:     1117\n"
              "  The system refused. `net helpmsg 1117` tells what it means by that code.\n");
}

TEST(FlfsMv, WithoutAPathnameBothArgumentsStand)
{
    simulation::simulated_machine machine;
    std::u16string const server = u"\\\\" + std::u16string(260, u's');
    flfs_result const result = run_flfs_on_disk({"mv", "C:\\a.txt", utf8(server)});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "flfs: fl:filesystem:InvalidArgument\n"
                          "  argument: C:\\a.txt\n"
                          "  and:      " +
                              utf8(server) +
                              "\n"
                              "  code:     0\n"
                              "  Long UNC path without root not permitted.\n");
}

#endif

} // namespace
