// What the kit looks at on Windows, tried where the simulated machine shows the same.

#include "kit/library_verbs.hpp"
#include "kit/playing.hpp"
#include "kit/probe.hpp"

#include <gtest/gtest.h>

namespace {

bool holds(kit::pathnames which)
{
    bool const long_ones = test_support::takes_long_pathnames();
    return which == kit::pathnames::any || (which == kit::pathnames::long_ones) == long_ones;
}

TEST(Sights, AreThoseOfTheMachine)
{
    contract::facts::verb_table verbs = kit::library_verbs();
    verbs.merge(kit::system_verbs());
    int tried = 0;
    for (kit::probe const &row : kit::sights()) {
        if (!row.is_simulated || !holds(row.holds_for))
            continue;
        kit::played const told = kit::play(row.script, verbs);
        EXPECT_EQ(told.obstacle, "") << row.subject << " " << row.claim;
        EXPECT_TRUE(told.agrees) << row.subject << " " << row.claim << "\n  " << row.script
                                 << "\n  " << told.seen;
        ++tried;
    }
    EXPECT_GT(tried, 10);
}

} // namespace
