#ifndef FL_FILESYSTEM_SRC_PATHNAME_FULL_PATH_NAME_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_FULL_PATH_NAME_HPP
// What the process's current drive and directories make of a pathname.

#include <string>

namespace fl::filesystem::detail {

/// Returns what `GetFullPathNameW` makes of `path`, without looking at the disk.
/// One call for a result of up to 1023 units, two for a longer one. Throws what
/// the code of a failed call stands for, naming `path`.
std::wstring full_path_name(std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
