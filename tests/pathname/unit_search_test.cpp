#include "pathname/unit_search.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace fl::filesystem::detail {
namespace {

/// Around each size at which the search goes on in another way.
constexpr std::size_t sizes[] = {1, 31, 32, 33, 63, 64, 65, 127, 128, 129, 160, 191, 300};

// What stands beside the text belongs to somebody else.
TEST(UnitSearch, AsksAboutEachIndexAndNoOther)
{
    for (std::size_t const size : sizes) {
        std::vector<int> asked(size);
        bool const is_found = has_hit<unsigned char>(0, size, [&](std::size_t at) {
            EXPECT_LT(at, size);
            if (at < size)
                ++asked[at];
            return static_cast<unsigned char>(0);
        });
        EXPECT_FALSE(is_found) << size;
        for (std::size_t at = 0; at < size; ++at)
            EXPECT_GT(asked[at], 0) << at << " of " << size;
    }
}

TEST(UnitSearch, AsksAboutNothingAheadOfItsBeginning)
{
    for (std::size_t const size : sizes)
        has_hit<unsigned char>(40, 40 + size, [&](std::size_t at) {
            EXPECT_TRUE(at >= 40 && at < 40 + size) << at << " of " << size;
            return static_cast<unsigned char>(0);
        });
}

TEST(UnitSearch, FindsAHitWhereverItIs)
{
    for (std::size_t const size : sizes)
        for (std::size_t hit = 0; hit < size; ++hit)
            EXPECT_TRUE(has_hit<unsigned char>(
                0, size,
                [&](std::size_t at) { return static_cast<unsigned char>(at == hit ? 1 : 0); }))
                << hit << " of " << size;
}

} // namespace
} // namespace fl::filesystem::detail
