#ifndef FL_FILESYSTEM_SRC_PATHNAME_EXPANDED_PATH_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_EXPANDED_PATH_HPP
// Pathnames that lean on a drive's own current directory, in full. Asks
// `GetFullPathNameW` and throws what its failure stands for, naming the text of the call.

#include <string>

namespace fl::filesystem::detail {

/// `C:` is the current directory of that drive, and `C:foo` is below it. Only the
/// drive goes to the system: what stands behind it is kept as it is written.
std::wstring expand_drive_relative(std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
