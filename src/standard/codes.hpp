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

/// Runs a system call that answers whether it succeeded. Returns 0 if so, else the code of
/// the failure, which is never 0: callers would take that for success. Calls of Wine can fail
/// and leave the code that was there before; a call that succeeds leaves it here, too.
template <typename Call>
DWORD code_of(Call call)
{
    DWORD const former = ::GetLastError();
    ::SetLastError(ERROR_SUCCESS);
    if (call()) {
        ::SetLastError(former);
        return ERROR_SUCCESS;
    }
    DWORD const code = ::GetLastError();
    return code == ERROR_SUCCESS ? DWORD{ERROR_GEN_FAILURE} : code;
}

/// The same, with the code in `ec`. Returns whether the call succeeded.
template <typename Call>
bool attempt(std::error_code &ec, Call call)
{
    ec = system_code(code_of(call));
    return !ec;
}

/// Whether a failure told no reason: then none can be read out of its code.
inline bool is_unexplained(std::error_code const &ec)
{
    return ec == system_code(ERROR_GEN_FAILURE);
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
