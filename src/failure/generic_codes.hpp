#ifndef FL_FILESYSTEM_SRC_FAILURE_GENERIC_CODES_HPP
#define FL_FILESYSTEM_SRC_FAILURE_GENERIC_CODES_HPP
// What the standard facility refuses itself. The numbers are a contract: a host's `errc` may
// have others.

#include <system_error>

namespace fl::filesystem::detail {

inline constexpr int generic_file_exists = 17;
inline constexpr int generic_is_a_directory = 21;
inline constexpr int generic_not_supported = 130;

inline std::error_code generic_code(int number)
{
    return {number, std::generic_category()};
}

} // namespace fl::filesystem::detail

#endif
