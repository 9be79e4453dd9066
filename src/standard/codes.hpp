#ifndef FL_FILESYSTEM_SRC_STANDARD_CODES_HPP
#define FL_FILESYSTEM_SRC_STANDARD_CODES_HPP
// What the files of the standard facility share about codes.

#include <windows.h>

#include <algorithm>
#include <iterator>
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

/// The codes for a name that can't be reached, on a disk or on a network.
inline bool is_not_found(DWORD code)
{
    constexpr DWORD codes[] = {ERROR_FILE_NOT_FOUND,  ERROR_PATH_NOT_FOUND, ERROR_BAD_NETPATH,
                               ERROR_NETNAME_DELETED, ERROR_INVALID_NAME,   ERROR_DIRECTORY};
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

inline bool is_not_found(std::error_code const &ec)
{
    return is_not_found(static_cast<DWORD>(ec.value()));
}

/// One of the facility's own refusals. The numbers are a contract: a host's `errc` may
/// have others.
inline std::error_code generic_code(int number)
{
    return {number, std::generic_category()};
}

inline constexpr int generic_file_exists = 17;
inline constexpr int generic_is_a_directory = 21;
inline constexpr int generic_not_supported = 130;

} // namespace fl::filesystem::detail::standard

#endif
