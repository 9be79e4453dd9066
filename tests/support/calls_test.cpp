// That the tests' own instruments fail where they have nothing to say.

#include "support/calls.hpp"

#include <gtest/gtest-spi.h>

namespace fl::filesystem {
namespace {

using namespace test_support;

void sweep_over_nothing()
{
    sweep([](simulated_machine &) {}, [](failing_run const &) {});
}

TEST(Sweep, FailsWhereNothingIsCalled)
{
    EXPECT_NONFATAL_FAILURE(sweep_over_nothing(), "nothing was broken");
}

TEST(Sweep, FailsEachCallOnceAndThenNone)
{
    std::vector<bool> broken;
    int const failed = sweep([](simulated_machine &machine) { machine.add_file(u"C:\\f"); },
                             [&](failing_run const &run) {
                                 ::GetFileAttributesW(L"C:\\f");
                                 ::DeleteFileW(L"C:\\f");
                                 broken.push_back(run.is_broken());
                                 EXPECT_EQ(run.machine.exists(u"C:\\f"), run.nth == 2);
                             });
    EXPECT_EQ(failed, 2);
    EXPECT_EQ(broken, (std::vector<bool>{true, true, false}));
}

void meet_no_fault()
{
    simulated_machine machine;
    sure_fault const fault = machine.fail_every_call_on("DeleteFileW", 5);
    ::GetFileAttributesW(L"C:\\f");
}

TEST(SureFault, FailsWhereNoCallMeetsIt)
{
    EXPECT_NONFATAL_FAILURE(meet_no_fault(), "no call met it");
}

} // namespace
} // namespace fl::filesystem
