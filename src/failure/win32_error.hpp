#ifndef FL_FILESYSTEM_SRC_FAILURE_WIN32_ERROR_HPP
#define FL_FILESYSTEM_SRC_FAILURE_WIN32_ERROR_HPP
// The one translation of a Win32 code into an exception.

#include <string>

namespace fl::filesystem::detail {

/// Throws what `error_code` stands for, which `GetLastError()` gave right after the
/// call. Pathnames go into the exception as they are: a routine near the system
/// hands over the very string that it called with, long prefix included, and an
/// operation of the standard filesystem facility what its caller wrote.
/// `second_path` is empty where there is one pathname.
[[noreturn]] void throw_win32_exception(unsigned int error_code, std::wstring const &path,
                                        std::wstring const &second_path);
[[noreturn]] void throw_win32_exception(unsigned int error_code, std::wstring const &path);

/// Returns if a failed query of `path` with this code means that there is no such name, on
/// a disk or on a network, and else throws what it stands for, naming `path`. Code 3 on a
/// pathname beyond 32,767 units says that it is too long.
void throw_unless_missing(unsigned int error_code, std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
