#include "status/file_time.hpp"

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_duration.hpp>

namespace fl::filesystem::detail {
namespace {

constexpr std::uint64_t ticks_per_microsecond = 10;
constexpr std::uint64_t ticks_per_day = std::uint64_t{10'000'000} * 86'400;

} // namespace

std::uint64_t join_halves(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

boost::posix_time::ptime to_ptime(FILETIME const &time)
{
    std::uint64_t const ticks = join_halves(time.dwHighDateTime, time.dwLowDateTime);
    auto const days = static_cast<long>(ticks / ticks_per_day); // at most 21,350,398
    auto const microseconds =
        static_cast<std::int64_t>(ticks % ticks_per_day / ticks_per_microsecond);

    // Boost tests the year where a date is made of year, month and day, and where
    // it is asked for them, but not where days are added.
    boost::gregorian::date const day =
        boost::gregorian::date(1601, 1, 1) + boost::gregorian::date_duration(days);
    return boost::posix_time::ptime(day, boost::posix_time::microseconds(microseconds));
}

} // namespace fl::filesystem::detail
