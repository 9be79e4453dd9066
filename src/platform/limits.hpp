#ifndef FL_FILESYSTEM_SRC_PLATFORM_LIMITS_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_LIMITS_HPP
// How long a pathname may be, in UTF-16 code units without the NUL.

#include <cstddef>

namespace fl::filesystem::detail {

/// The longest bare pathname of a directory to create: the system keeps room for
/// an 8.3 name behind it (260 less 13).
inline constexpr std::size_t longest_bare_directory = 247;

/// The longest bare pathname of anything else (260 less the NUL).
inline constexpr std::size_t longest_bare_pathname = 259;

/// The longest pathname that the wide Win32 functions take, with a long prefix.
inline constexpr std::size_t longest_pathname = 32767;

} // namespace fl::filesystem::detail

#endif
