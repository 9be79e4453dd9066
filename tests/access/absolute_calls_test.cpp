// Whom a failing expansion names.

#include <fl/filesystem/operations.hpp>

#include "support/failure.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

namespace fl::filesystem {
namespace {

using simulation::simulated_machine;
using test_support::denied;
using test_support::failure_of;
using test_support::not_found;
using test_support::system_error;

TEST(AbsoluteCalls, AFailedExpansionNamesWhatWasGivenAndNotWhatIsJoined)
{
    simulated_machine machine;
    auto fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_EQ(failure_of([] { absolute(u"f", u"C:\\d"); }), denied(u"f"));
    fault = machine.fail_every_call_on("GetFullPathNameW", 2);
    EXPECT_EQ(failure_of([] { absolute(u"f", u"C:\\d"); }), not_found(u"f"));
    fault = machine.fail_every_call_on("GetFullPathNameW", 1117);
    EXPECT_EQ(failure_of([] { absolute(u"f", u"C:\\d"); }), system_error(1117, u"f"));
    EXPECT_EQ(failure_of([] { absolute(u"", u"C:\\d"); }), system_error(1117, u""));
    EXPECT_TRUE(fault.fired());
}

} // namespace
} // namespace fl::filesystem
