#include "status/file_time.hpp"

#include <boost/date_time/posix_time/posix_time_duration.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace fl::filesystem::detail {
namespace {

using boost::gregorian::date;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

constexpr std::uint64_t ticks_per_day = 864'000'000'000;
constexpr std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();

FILETIME file_time(std::uint64_t ticks)
{
    FILETIME time;
    time.dwLowDateTime = static_cast<DWORD>(ticks & 0xFFFFFFFF);
    time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    return time;
}

ptime start_of_1601()
{
    return ptime(date(1601, 1, 1), time_duration());
}

TEST(FileTime, Instants)
{
    struct
    {
        std::uint64_t ticks;
        ptime expected;
        char const *why;
    } const cases[] = {
        {0, start_of_1601(), "a real instant, not the absence of one"},
        {9, start_of_1601(), "below a microsecond"},
        {10, ptime(date(1601, 1, 1), time_duration(0, 0, 0, 1)), "one microsecond"},
        {9'999'999, ptime(date(1601, 1, 1), time_duration(0, 0, 0, 999'999)),
         "one tick below a second"},
        {10'000'000, ptime(date(1601, 1, 1), time_duration(0, 0, 1, 0)), "one second"},
        {0xFFFFFFFF, ptime(date(1601, 1, 1), time_duration(0, 7, 9, 496'729)),
         "all of the lower half"},
        {0x1'0000'0004, ptime(date(1601, 1, 1), time_duration(0, 7, 9, 496'730)),
         "the upper half begins"},
        {ticks_per_day - 1, ptime(date(1601, 1, 1), time_duration(23, 59, 59, 999'999)),
         "one tick below a day"},
        {ticks_per_day, ptime(date(1601, 1, 2), time_duration()), "one day"},
        {116'444'736'000'000'000, ptime(date(1970, 1, 1), time_duration()), "where Unix begins"},
        {125'963'423'999'999'999, ptime(date(2000, 2, 29), time_duration(23, 59, 59, 999'999)),
         "the last tick of a leap day"},
        {132'536'736'000'000'000, ptime(date(2020, 12, 29), time_duration()),
         "midnight in UTC, in whichever zone the machine stands"},
        {2'650'467'743'999'999'999, ptime(date(9999, 12, 31), time_duration(23, 59, 59, 999'999)),
         "the last tick that Boost knows a date for"},
    };
    for (auto const &row : cases) {
        ptime const time = to_ptime(file_time(row.ticks));
        EXPECT_FALSE(time.is_special()) << row.why;
        EXPECT_TRUE(time == row.expected) << row.why;
        EXPECT_TRUE(time.date() == row.expected.date()) << row.why;
        EXPECT_EQ(time.time_of_day().ticks(), row.expected.time_of_day().ticks()) << row.why;
    }
}

TEST(FileTime, TicksPastAMicrosecondVanish)
{
    std::uint64_t const wholes[] = {0, 10, 116'444'736'000'000'000, ticks_per_day - 10,
                                    greatest - 15};
    for (std::uint64_t const whole : wholes) {
        ptime const expected = to_ptime(file_time(whole));
        for (std::uint64_t past = 1; past <= 9; ++past)
            EXPECT_TRUE(to_ptime(file_time(whole + past)) == expected) << whole << " + " << past;
        EXPECT_EQ((to_ptime(file_time(whole + 10)) - expected).ticks(), 1) << whole;
    }
}

TEST(FileTime, TimesBeyondTheYear9999)
{
    struct
    {
        std::uint64_t ticks;
        std::int64_t microseconds; // since the start of 1601
        char const *why;
    } const cases[] = {
        {2'650'467'744'000'000'000, 265'046'774'400'000'000, "the start of the year 10000"},
        {greatest / 2, 922'337'203'685'477'580, "the last without the highest bit"},
        {greatest / 2 + 3, 922'337'203'685'477'581, "with the highest bit: no sign"},
        {greatest - 5, 1'844'674'407'370'955'161, "the first of the last microsecond"},
        {greatest, 1'844'674'407'370'955'161, "the greatest"},
    };
    ptime const last_with_a_date(date(9999, 12, 31), time_duration(23, 59, 59, 999'999));
    for (auto const &row : cases) {
        ptime time;
        EXPECT_NO_THROW(time = to_ptime(file_time(row.ticks))) << row.why;
        EXPECT_FALSE(time.is_special()) << row.why;
        EXPECT_EQ((time - start_of_1601()).ticks(), row.microseconds) << row.why;
        EXPECT_TRUE(last_with_a_date < time) << row.why;
        EXPECT_THROW((void)time.date(), std::out_of_range) << "as callers are told: " << row.why;
    }
}

TEST(FileTime, CountsSince1970AsFarAsTheyGo)
{
    constexpr std::uint64_t to_1970 = 116'444'736'000'000'000;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    struct
    {
        std::uint64_t ticks;
        std::int64_t expected;
        char const *why;
    } const cases[] = {
        {0, -static_cast<std::int64_t>(to_1970), "the start of 1601"},
        {to_1970 - 1, -1, "the last tick of 1969"},
        {to_1970, 0, "where the clock begins"},
        {to_1970 + static_cast<std::uint64_t>(most) - 1, most - 1, "the last but one"},
        {to_1970 + static_cast<std::uint64_t>(most), most, "the last that fits"},
        {to_1970 + static_cast<std::uint64_t>(most) + 1, most, "one more"},
        {greatest, most, "the greatest"},
    };
    for (auto const &row : cases)
        EXPECT_EQ(to_file_time(file_time(row.ticks)).time_since_epoch().count(), row.expected)
            << row.why;
}

TEST(FileTime, EveryDayFollowsTheOneBefore)
{
    // up to the year 3000: the rules of leap years come round every 400 years
    date const first(1601, 1, 1);
    for (long day = 0; day < 511'000; ++day) {
        ptime const time = to_ptime(file_time(static_cast<std::uint64_t>(day) * ticks_per_day));
        ASSERT_EQ((time.date() - first).days(), day);
        ASSERT_EQ(time.time_of_day().ticks(), 0) << day;
    }
}

struct halves_case
{
    DWORD high, low;
    std::uint64_t expected;
    char const *why;
};

constexpr halves_case halves_cases[] = {
    {0, 0, 0, "nothing"},
    {0, 1, 1, "a byte"},
    {0, 0x7FFFFFFF, 0x7FFFFFFF, "2 GiB less one"},
    {0, 0x80000000, 0x80000000, "a lower half is never negative"},
    {0, 0xFFFFFFFF, 0xFFFFFFFF, "4 GiB less one"},
    {1, 0, 0x100000000, "4 GiB"},
    {1, 0xFFFFFFFF, 0x1FFFFFFFF, "8 GiB less one"},
    {0x80000000, 0, 0x8000000000000000, "the highest bit"},
    {0x12345678, 0x9ABCDEF0, 0x123456789ABCDEF0, "each half in its place"},
    {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF, "no value is refused"},
};

TEST(FileTime, JoinedHalves)
{
    for (auto const &row : halves_cases)
        EXPECT_EQ(join_halves(row.high, row.low), row.expected) << row.why;
}

} // namespace
} // namespace fl::filesystem::detail
