#ifndef FL_FILESYSTEM_SRC_FAILURE_BLAME_HPP
#define FL_FILESYSTEM_SRC_FAILURE_BLAME_HPP
// Which of two pathnames a failure is about. The system tells one code for both, so
// the disk is asked afterwards.

#include <string>

namespace fl::filesystem::detail {

/// Throws what `error_code` stands for, out of an operation that took `first_path` as
/// its source and `second_path` as its target, naming the one to blame:
///
///     code                            blamed
///     5, the source a symbolic link   source
///     2 or 3, the source missing      source
///     any, the source too long        source
///     5                               source if it can't be read, else target
///     2, 3, 80, 145, 183, 206, 267    target
///     any other                       source, the target beside it
///
/// Behind the first row `exists` is asked about the source, whatever the code, and `access`
/// for code 5; what they throw travels in place of the report. Ahead of them the last error
/// is put back to what it was on entry.
[[noreturn]] void throw_win32_exception_for_pair(unsigned int error_code,
                                                 std::wstring const &first_path,
                                                 std::wstring const &second_path);

} // namespace fl::filesystem::detail

#endif
