#ifndef FL_FILESYSTEM_TESTS_PLATFORM_ATTRIBUTE_CASES_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_ATTRIBUTE_CASES_HPP
// Names that calls on attributes are asked about, and what all of them say.

#include "platform/contract.hpp"

namespace contract {

/// The same for asking and for setting, beside those of `names_of_file` and `missing_names`. What
/// differs stands with the tests of each call.
inline constexpr call_row common_attribute_cases[] = {
    {LR"(@\dir)", success, "a directory"},
    {LR"(@\DIR\)", success, "with a separator, in another case"},
    {LR"(@\a<b\c)", ERROR_INVALID_NAME, "nor the one above"},
    {LR"(Q:\)", ERROR_PATH_NOT_FOUND, "no such drive"},
    {LR"(\\fl-dead-server\share)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
};

} // namespace contract

#endif
