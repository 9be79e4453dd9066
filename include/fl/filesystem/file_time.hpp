#ifndef FL_FILESYSTEM_FILE_TIME_HPP
#define FL_FILESYSTEM_FILE_TIME_HPP
// Public. Times of files as points in time of `<chrono>`, to the last digit that a disk
// keeps, and the way to and from the times of `file_status`. Asks the system nothing.

#include <fl/filesystem/config.hpp>

#include <boost/date_time/posix_time/ptime.hpp>

#include <chrono>
#include <cstdint>
#include <ratio>

namespace fl::filesystem {

/// A time of a file in UTC, counted in units of 100 nanoseconds as the system counts it.
/// Its clock is that of the system, so it compares with `std::chrono::system_clock::now()`
/// and converts to a `std::time_t` by way of `time_point_cast`.
using file_time_type =
    std::chrono::time_point<std::chrono::system_clock,
                            std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>>;

/// Returns `time`, which is in UTC, exactly. Positive infinity and what lies beyond the year
/// 31197 is the greatest time, negative infinity the least. Throws `InvalidArgument` "Time not
/// valid", without a pathname, for `not_a_date_time`.
FL_FILESYSTEM_API file_time_type to_file_time(boost::posix_time::ptime const &time);

/// Returns `time` as `file_status` has it: cut to whole microseconds, the last digit dropped
/// and never rounded, so that no time moves forward. A time beyond the year 9999 compares and
/// subtracts as any other, but Boost throws where its date or text is asked for. Throws
/// nothing.
FL_FILESYSTEM_API boost::posix_time::ptime to_ptime(file_time_type time);

} // namespace fl::filesystem

#endif
