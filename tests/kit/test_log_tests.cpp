#include "kit/test_log.hpp"

#include <gtest/gtest.h>

namespace {

constexpr char output[] = "Running main() from gtest_main.cc\r\n"
                          "[==========] Running 4 tests from 1 test suite.\r\n"
                          "[----------] 4 tests from Things\r\n"
                          "[ RUN      ] Things.Work\r\n"
                          "[       OK ] Things.Work (0 ms)\r\n"
                          "[ RUN      ] Things.Break\r\n"
                          "a.cpp:7: Failure\r\n"
                          "Value of: it\r\n"
                          "[  FAILED  ] Things.Break (3 ms)\r\n"
                          "[ RUN      ] Things.Wait\r\n"
                          "a.cpp:9: Skipped\r\n"
                          "there is no share\r\n"
                          "[  SKIPPED ] Things.Wait (0 ms)\r\n"
                          "[ RUN      ] Things.Rest\r\n"
                          "a.cpp:12: Skipped\r\n"
                          "there is no share\r\n"
                          "[  SKIPPED ] Things.Rest (0 ms)\r\n"
                          "[==========] 4 tests from 1 test suite ran. (5 ms total)\r\n"
                          "[  PASSED  ] 1 test.\r\n"
                          "[  SKIPPED ] 2 tests, listed below:\r\n"
                          "[  SKIPPED ] Things.Wait\r\n"
                          "[  SKIPPED ] Things.Rest\r\n"
                          "[  FAILED  ] 1 test, listed below:\r\n"
                          "[  FAILED  ] Things.Break\r\n";

TEST(TestLog, CountsAndKeepsFailuresWhole)
{
    kit::test_log const log = kit::read_test_log(output);
    EXPECT_TRUE(log.ended);
    EXPECT_EQ(log.ran, 4);
    EXPECT_EQ(log.passed, 1);
    EXPECT_EQ(log.failed, 1);
    EXPECT_EQ(log.skipped, 2);
    ASSERT_EQ(log.failures.size(), 1U);
    EXPECT_EQ(log.failures[0],
              "a.cpp:7: Failure\nValue of: it\n[  FAILED  ] Things.Break (3 ms)\n");
    EXPECT_EQ(log.reasons, (std::map<std::string, int>{{"there is no share", 2}}));
}

TEST(TestLog, OfAProgramThatCrashedHasNoEnd)
{
    std::string const all = output;
    kit::test_log const log =
        kit::read_test_log(all.substr(0, all.find("[ RUN      ] Things.Wait")));
    EXPECT_FALSE(log.ended);
    EXPECT_EQ(log.ran, 0);
    EXPECT_EQ(log.failures.size(), 1U) << "what failed before is still told";
    EXPECT_FALSE(kit::read_test_log("").ended);
}

TEST(TestLog, TellsHowManyFailuresDontFit)
{
    EXPECT_EQ(kit::fitting({"one\n", "two\n", "six\n"}, 12), "one\ntwo\nsix\n");
    EXPECT_EQ(kit::fitting({"one\n", "two\n", "six\n"}, 11), "one\ntwo\n... and 1 more\n");
    EXPECT_EQ(kit::fitting({"one\n"}, 3), "... and 1 more\n");
    EXPECT_EQ(kit::fitting({}, 0), "");
}

TEST(TestLog, LastLines)
{
    EXPECT_EQ(kit::last_lines("a\nb\nc\n", 2), "b\nc\n");
    EXPECT_EQ(kit::last_lines("a\nb\nc", 1), "c");
    EXPECT_EQ(kit::last_lines("a\nb\n", 2), "a\nb\n");
    EXPECT_EQ(kit::last_lines("a\n", 5), "a\n");
    EXPECT_EQ(kit::last_lines("", 5), "");
}

} // namespace
