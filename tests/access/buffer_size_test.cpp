#include "access/buffer_size.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST(RoundUpTo512, IsTheNextMultiple)
{
    struct
    {
        std::size_t size, expected;
    } const cases[] = {
        {0, 0},         {1, 512},       {2, 512},           {511, 512},   {512, 512},
        {513, 1024},    {1023, 1024},   {1024, 1024},       {1025, 1536}, {32767, 32768},
        {65536, 65536}, {65537, 66048}, {1000000, 1000448},
    };
    for (auto const &row : cases)
        EXPECT_EQ(round_up_to_512(row.size), row.expected) << row.size;
}

TEST(RoundUpTo512, TakesWhatASignedIntegerHolds)
{
    EXPECT_EQ(round_up_to_512(0x7FFFFE00), 0x7FFFFE00U);
    EXPECT_EQ(round_up_to_512(0x7FFFFE01), 0x80000000U);
    EXPECT_EQ(round_up_to_512(0x7FFFFFFF), 0x80000000U);
}

TEST(RoundUpTo512, RefusesMore)
{
    test_support::failure const refusal{
        fsys_excp_system_error, "fl:filesystem:SystemError", {}, {}, 1462};
    for (std::size_t const size :
         {std::size_t{0x80000000}, std::size_t{0xFFFFFFFF}, std::size_t{0x100000000}, SIZE_MAX})
        EXPECT_FAILURE(round_up_to_512(size), refusal) << size;
}

} // namespace
} // namespace fl::filesystem::detail
