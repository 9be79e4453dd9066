#ifndef FL_FILESYSTEM_SRC_FAILURE_WIN32_ERROR_HPP
#define FL_FILESYSTEM_SRC_FAILURE_WIN32_ERROR_HPP
// The one translation of a Win32 code into an exception.

#include <string>

namespace fl::filesystem::detail {

/// Throws what `error_code` stands for. Call it with the very string that the
/// system was handed and the code that `GetLastError()` gave right after the
/// call: pathnames go into the exception as they are, long prefix included.
/// `second_path` is empty for an operation with one pathname.
[[noreturn]] void throw_win32_exception(unsigned int error_code, std::wstring const &path,
                                        std::wstring const &second_path);
[[noreturn]] void throw_win32_exception(unsigned int error_code, std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
