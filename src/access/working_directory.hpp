#ifndef FL_FILESYSTEM_SRC_ACCESS_WORKING_DIRECTORY_HPP
#define FL_FILESYSTEM_SRC_ACCESS_WORKING_DIRECTORY_HPP
// Where the process stands.

#include <string>

namespace fl::filesystem::detail {

/// Returns the process's current directory as `GetCurrentDirectoryW` tells it. Throws
/// `std::filesystem::filesystem_error` "current_path()", which is none of this library's
/// exceptions.
std::wstring current_path_wide();

} // namespace fl::filesystem::detail

#endif
