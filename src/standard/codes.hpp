#ifndef FL_FILESYSTEM_SRC_STANDARD_CODES_HPP
#define FL_FILESYSTEM_SRC_STANDARD_CODES_HPP
// What the files of the standard facility share about codes.

#include "failure/generic_codes.hpp"
#include "failure/missing_codes.hpp"

#include <windows.h>

#include <system_error>

namespace fl::filesystem::detail::standard {

inline std::error_code system_code(DWORD code)
{
    return {static_cast<int>(code), std::system_category()};
}

/// Puts the code of a failed call into `ec`. Returns false.
inline bool fail(DWORD code, std::error_code &ec)
{
    ec = system_code(code);
    return false;
}

/// Whether a name can't be reached, on a disk or on a network.
inline bool is_not_found(std::error_code const &ec)
{
    return is_missing_for_standard(static_cast<DWORD>(ec.value()));
}

} // namespace fl::filesystem::detail::standard

#endif
