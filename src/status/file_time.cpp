#include "status/file_time.hpp"

#include "failure/throw.hpp"

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_duration.hpp>

#include <limits>

namespace fl::filesystem::detail {
namespace {

constexpr std::uint64_t ticks_per_microsecond = 10;
constexpr std::uint64_t ticks_per_day = std::uint64_t{10'000'000} * 86'400;

/// The start of 1970, at which the clock of <chrono> begins, in ticks since that of 1601.
constexpr std::uint64_t chrono_begins = 134'774 * ticks_per_day;

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

file_time_type to_file_time(FILETIME const &time)
{
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    std::uint64_t const ticks = join_halves(time.dwHighDateTime, time.dwLowDateTime);
    if (ticks > most + chrono_begins)
        return file_time_type::max();
    return file_time_type(
        file_time_type::duration(static_cast<std::int64_t>(ticks - chrono_begins)));
}

FILETIME to_filetime(file_time_type time)
{
    auto const since_1970 = static_cast<std::uint64_t>(time.time_since_epoch().count());
    std::uint64_t const ticks = since_1970 + chrono_begins;
    bool const is_too_early =
        time.time_since_epoch().count() < -static_cast<std::int64_t>(chrono_begins);
    std::uint64_t const kept = is_too_early ? 0 : ticks;
    return {static_cast<DWORD>(kept), static_cast<DWORD>(kept >> 32)};
}

} // namespace fl::filesystem::detail

namespace fl::filesystem {

file_time_type to_file_time(boost::posix_time::ptime const &time)
{
    if (time.is_not_a_date_time())
        detail::throw_invalid_argument("Time not valid");
    if (time.is_pos_infinity())
        return file_time_type::max();
    if (time.is_neg_infinity())
        return file_time_type::min();
    using boost::gregorian::date;
    using boost::posix_time::ptime;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / 10;
    std::int64_t const microseconds = (time - ptime(date(1970, 1, 1))).total_microseconds();
    if (microseconds > most)
        return file_time_type::max();
    return file_time_type(file_time_type::duration(microseconds * 10));
}

boost::posix_time::ptime to_ptime(file_time_type time)
{
    return detail::to_ptime(detail::to_filetime(time));
}

} // namespace fl::filesystem
