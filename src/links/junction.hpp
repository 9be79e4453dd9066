#ifndef FL_FILESYSTEM_SRC_LINKS_JUNCTION_HPP
#define FL_FILESYSTEM_SRC_LINKS_JUNCTION_HPP
// Making junctions, for which the system has no call of its own.

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace fl::filesystem::detail {

/// The most units of a junction's target. Its data is 16 KiB and has the target twice: as the
/// system follows it, with `\??\` ahead of it, and as it is shown; each ends in a NUL.
inline constexpr std::size_t longest_junction_target =
    (MAXIMUM_REPARSE_DATA_BUFFER_SIZE - 16) / 4 - 3;

/// What `FSCTL_SET_REPARSE_POINT` takes for a junction to `target`, an absolute pathname without
/// a long prefix of no more units than that.
std::vector<unsigned char> junction_data(std::wstring const &target);

/// Makes the empty directory `directory`, a string for the system, a junction of that data.
/// Returns whether it could; if not, `ec` holds the system's code. Allocates nothing.
bool make_junction(std::wstring const &directory, std::span<unsigned char> data,
                   std::error_code &ec);

} // namespace fl::filesystem::detail

#endif
