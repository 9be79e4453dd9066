#ifndef FL_FILESYSTEM_TESTS_STANDARD_ERROR_CODES_HPP
#define FL_FILESYSTEM_TESTS_STANDARD_ERROR_CODES_HPP
// Codes to compare with those that the standard facility tells.

#include <system_error>

namespace test_support {

/// What stands in a code ahead of a call, so that one that is left alone shows.
inline std::error_code const stale(77, std::generic_category());

template <typename Number>
std::error_code system_code(Number number)
{
    return {static_cast<int>(number), std::system_category()};
}

} // namespace test_support

#endif
