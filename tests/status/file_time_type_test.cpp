// Times of files as points in time of <chrono>, and as those of `file_status`.

#include <fl/filesystem/file_time.hpp>

#include "support/names.hpp"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <type_traits>

namespace fl::filesystem::tests {
namespace {

using boost::gregorian::date;
using boost::posix_time::microseconds;
using boost::posix_time::ptime;

static_assert(std::is_same_v<file_time_type::clock, std::chrono::system_clock>);

file_time_type ticks(std::int64_t count)
{
    return file_time_type(file_time_type::duration(count));
}

constexpr std::int64_t start_of_1601 = -116'444'736'000'000'000;

struct time_case
{
    std::int64_t ticks; ///< since 1970
    ptime time;
    char const *why;
};

time_case const time_cases[] = {
    {0, ptime(date(1970, 1, 1)), "the start of the clock"},
    {10, ptime(date(1970, 1, 1), microseconds(1)), "ten ticks a microsecond"},
    {-10, ptime(date(1969, 12, 31), microseconds(86'399'999'999)), "ahead of it"},
    {start_of_1601, ptime(date(1601, 1, 1)), "the system's own start"},
    {17'040'672'000'000'000, ptime(date(2024, 1, 1)), "a year of ours"},
    {2'534'023'007'999'999'990, ptime(date(9999, 12, 31), microseconds(86'399'999'999)),
     "the last that Boost shows"},
};

TEST(FileTime, IsTheSameInstantBothWays)
{
    for (time_case const &row : time_cases) {
        EXPECT_EQ(to_ptime(ticks(row.ticks)), row.time) << row.why;
        EXPECT_EQ(to_file_time(row.time), ticks(row.ticks)) << row.why;
    }
    EXPECT_EQ(to_ptime(ticks(19)), to_ptime(ticks(10))) << "the last digit is dropped";
    EXPECT_EQ(to_ptime(ticks(-1)), to_ptime(ticks(-10))) << "and no time moves forward";
}

TEST(FileTime, OfTimesThatAreNoInstants)
{
    EXPECT_EQ(to_file_time(ptime(boost::posix_time::pos_infin)), file_time_type::max());
    EXPECT_EQ(to_file_time(ptime(boost::posix_time::neg_infin)), file_time_type::min());
    EXPECT_FAILURE(to_file_time(ptime()), invalid_argument("Time not valid"));
}

TEST(FileTime, BeyondWhatASystemKeeps)
{
    EXPECT_EQ(to_ptime(ticks(start_of_1601 - 1)), ptime(date(1601, 1, 1)));
    EXPECT_EQ(to_ptime(file_time_type::min()), ptime(date(1601, 1, 1)));
    ptime const last = to_ptime(file_time_type::max());
    EXPECT_GT(last, ptime(date(9999, 12, 31)));
    EXPECT_EQ(to_file_time(last), ticks(INT64_MAX / 10 * 10));
    EXPECT_EQ(to_file_time(last + microseconds(1)), file_time_type::max());
}

TEST(FileTime, ComparesWithTheClock)
{
    EXPECT_LT(to_file_time(ptime(date(2020, 1, 1))), std::chrono::system_clock::now());
    EXPECT_EQ(std::chrono::system_clock::to_time_t(
                  std::chrono::time_point_cast<std::chrono::system_clock::duration>(
                      to_file_time(ptime(date(1970, 1, 2))))),
              86'400);
}

} // namespace
} // namespace fl::filesystem::tests
