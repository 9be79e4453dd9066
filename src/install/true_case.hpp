#ifndef FL_FILESYSTEM_SRC_INSTALL_TRUE_CASE_HPP
#define FL_FILESYSTEM_SRC_INSTALL_TRUE_CASE_HPP
// Pathnames as the file system writes them.

#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Returns `text` with a long prefix, its drive letter in upper case and every element as
/// `FindFirstFileExW` tells its name. What can't be listed comes out in lower case, so that
/// the result doesn't depend on how the caller wrote it.
///
///     c:\PROGRAM FILES\tool      \\?\C:\Program Files\Tool
///     \\server\share\DIR         \\?\UNC\server\share\dir
///
/// Throws `InvalidArgument` "Long UNC path without root not permitted" on an empty or
/// relative text; what the code stands for if the last element can't be found, naming the
/// long form; and without a pathname if `FindClose` fails.
std::wstring restore_true_case(std::wstring_view text);

} // namespace fl::filesystem::detail

#endif
