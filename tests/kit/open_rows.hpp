#ifndef FL_FILESYSTEM_TESTS_KIT_OPEN_ROWS_HPP
#define FL_FILESYSTEM_TESTS_KIT_OPEN_ROWS_HPP
// The rows of docs/simulation.md that nobody has confirmed: for each, a script of system calls
// that settles it on Windows. `windows_probe` plays them there and tells what it saw.

#include <span>

namespace kit {

struct open_row
{
    char const *call;   ///< the row's first column
    char const *claim;  ///< its second, to the letter
    char const *script; ///< as in tests/platform/facts/script.hpp, with what the page claims
    bool short_pathnames_only = false; ///< without the opt-in to long ones
};

/// In the order of the page.
std::span<open_row const> open_rows();

} // namespace kit

#endif
