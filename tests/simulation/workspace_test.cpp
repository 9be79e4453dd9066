#include "support/workspace_simulated.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace test_support {

namespace {

TEST(SimulatedWorkspace, HasAMachineOfItsOwn)
{
    {
        workspace space;
        space.make_file(space.path(u"dir\\file"), "text");
        EXPECT_EQ(machine().content(space.root() + u"\\dir\\file"), "text");
        EXPECT_TRUE(machine().journal().empty()) << "making it is no call";
        {
            workspace inner;
            EXPECT_TRUE(inner.entries(inner.root()).empty());
            EXPECT_FALSE(machine().exists(inner.path(u"dir")));
        }
        EXPECT_TRUE(machine().exists(space.path(u"dir")));
    }
    EXPECT_THROW(machine(), std::logic_error);
}

} // namespace

} // namespace test_support
