#include "differential/shrinking.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace differential {

namespace {

/// Steps that are told apart by a number.
sequence numbered(std::initializer_list<std::uint32_t> numbers)
{
    sequence steps;
    for (std::uint32_t const number : numbers)
        steps.push_back({function::close_handle, {}, {number}});
    return steps;
}

bool has(sequence const &steps, std::uint32_t number)
{
    return std::find(steps.begin(), steps.end(), numbered({number})[0]) != steps.end();
}

TEST(DifferentialShrinking, LeavesTheOneStepThatMatters)
{
    sequence const found = shrunk(numbered({1, 2, 3, 4, 5, 6, 7}),
                                  [](sequence const &steps) { return has(steps, 6); });
    EXPECT_EQ(found, numbered({6}));
}

TEST(DifferentialShrinking, KeepsStepsThatNeedEachOther)
{
    sequence const found = shrunk(numbered({1, 2, 3, 4, 5, 6, 7, 8, 9}), [](sequence const &steps) {
        return has(steps, 1) && has(steps, 5) && has(steps, 9);
    });
    EXPECT_EQ(found, numbered({1, 5, 9}));
}

// One step less is shown only after another has gone.
TEST(DifferentialShrinking, TriesAgainAfterEachSuccess)
{
    sequence const found = shrunk(numbered({1, 2, 3}), [](sequence const &steps) {
        return has(steps, 3) && (has(steps, 1) || !has(steps, 2));
    });
    EXPECT_EQ(found, numbered({3}));
}

TEST(DifferentialShrinking, LeavesNothingIfNothingMatters)
{
    EXPECT_EQ(shrunk(numbered({1, 2}), [](sequence const &) { return true; }), sequence());
}

} // namespace

} // namespace differential
