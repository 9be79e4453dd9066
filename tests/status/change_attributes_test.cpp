// What a permission word makes of attributes, over every combination that counts.

#include "status/changed_attributes.hpp"
#include "status/permission_word.hpp"
#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr std::uint32_t read_only = 0x1;
constexpr std::uint32_t hidden = 0x2;
constexpr std::uint32_t archive = 0x20;

struct word_case
{
    std::uint32_t attributes;
    unsigned int perms;
    std::uint32_t expected;
    char const *why;
};

constexpr word_case word_cases[] = {
    {hidden, 0222, 0, "replaces, and hidden isn't named"},
    {hidden, adds | 0200, hidden, "writing was there"},
    {hidden, removes | 0002, hidden | read_only, "one write bit stands for all"},
    {hidden, 0, read_only, "no write bit"},
    {0x2027, 0, 0x1, "no bits at all"},
    {0x2027, 0200, 0, "writing alone"},
    {0x2027, 0xF200, 0x2027, "all flags and the sticky bit, and no write bit"},
    {0, 0xF000, 0x2027, "the flags, and read-only since no write bit is there"},
    {0, 0xF080, 0x2026, "the flags and writing"},
    {0, 0x1080, 0x20, "archive"},
    {0, 0x2080, 0x4, "system"},
    {0, 0x4080, 0x2, "hidden"},
    {0, 0x8080, 0x2000, "not indexed"},
    {0x2027, adds | 0200, 0x2026, "adding to write: only read-only goes"},
    {0x2027, adds | 0020, 0x2026, "for the group"},
    {0x2027, adds | 0002, 0x2026, "for the others"},
    {0x2027, adds, 0x2027, "adding nothing"},
    {0, adds, 0, "adding nothing"},
    {0x1, adds | 0x4000, 0x3, "adding a flag leaves read-only alone"},
    {0, adds | 0xF222, 0x2026, "adding all"},
    {0x2027, removes | 0xF000, 0x1, "removing flags leaves read-only alone"},
    {0x2027, removes | 0xF222, 0x1, "removing all"},
    {0, removes, 0, "removing nothing"},
    {0x2027, removes, 0x2027, "removing nothing"},
    {0x20, removes | 0004, 0x20, "a read bit has no attribute"},
    {0x21, adds | 0444, 0x21, "nor have they when added"},
    {0x20, removes | 07555, 0x20, "nor have the execute bits and those above"},
    {archive, 0555, read_only, "to read and to execute is not to write"},
};

TEST(ChangeAttributes, Table)
{
    for (word_case const &row : word_cases) {
        EXPECT_EQ(change_attributes(row.attributes, row.perms), row.expected) << row.why;
        EXPECT_EQ(changed_attributes(row.attributes, row.perms), row.expected) << row.why;
    }
}

TEST(ChangeAttributes, EveryCombination)
{
    int combinations = 0;
    for_all_attributes([&](std::uint32_t attributes) {
        for_all_words([&](unsigned int perms) {
            ++combinations;
            EXPECT_EQ(change_attributes(attributes, perms), changed_attributes(attributes, perms))
                << "attributes " << attributes << ", perms " << perms;
        });
    });
    EXPECT_EQ(combinations, 32 * 3 * 16 * 8);
}

TEST(ChangeAttributes, AttributesWithoutAFlagStay)
{
    for (std::uint32_t other = 1; other != 0; other <<= 1) {
        if ((other & changeable_attributes) != 0)
            continue;
        for_all_words([&](unsigned int perms) {
            EXPECT_EQ(change_attributes(0x25 | other, perms),
                      changed_attributes(0x25, perms) | other)
                << "attribute " << other << ", perms " << perms;
            EXPECT_EQ(change_attributes(0x2002, perms), changed_attributes(0x2002, perms));
        });
    }
    constexpr std::uint32_t others = ~changeable_attributes;
    for_all_words([&](unsigned int perms) {
        EXPECT_EQ(change_attributes(others, perms), others | changed_attributes(0, perms));
    });
}

// Reading, executing, the three bits above, and what says how to apply the word.
TEST(ChangeAttributes, BitsWithoutAnAttributeDontCount)
{
    constexpr unsigned int ignored[] = {0400,  040,         04,       0100,        010,
                                        01,    0555,        01000,    02000,       04000,
                                        07555, on_the_link, 0x80000U, 0x80000000U, 0xFFF80000U};
    for (unsigned int const bits : ignored) {
        for_all_attributes([&](std::uint32_t attributes) {
            for_all_words([&](unsigned int perms) {
                EXPECT_EQ(change_attributes(attributes, perms | bits),
                          changed_attributes(attributes, perms))
                    << "attributes " << attributes << ", perms " << (perms | bits);
            });
        });
    }
}

} // namespace
} // namespace fl::filesystem::detail
