#ifndef FL_FILESYSTEM_SRC_STATUS_FILE_TIME_HPP
#define FL_FILESYSTEM_SRC_STATUS_FILE_TIME_HPP
// What the system tells in two halves of 32 bits: the times and the size of a file.

#include <fl/filesystem/file_time.hpp>

#include <windows.h>

#include <cstdint>

namespace fl::filesystem::detail {

/// Returns the number whose halves these are. No value is refused.
std::uint64_t join_halves(DWORD high, DWORD low);

/// Returns `time` in UTC, cut to whole microseconds: the last digit of its count of
/// 100 nanoseconds is dropped and never rounded, so that no time moves forward.
///
/// The count is taken without a sign and every value of it is an instant: 0 is the
/// start of 1601 and not `not_a_date_time`, and the greatest lies in the year 60056.
/// Throws nothing, beyond the year 9999 neither.
boost::posix_time::ptime to_ptime(FILETIME const &time);

/// The same, exactly; a count that only fits without a sign is the greatest time.
file_time_type to_file_time(FILETIME const &time);

/// The way back. A time ahead of 1601 is its start, which the system takes for no time.
FILETIME to_filetime(file_time_type time);

} // namespace fl::filesystem::detail

#endif
