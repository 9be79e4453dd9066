// Whom a failing expansion names.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

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
