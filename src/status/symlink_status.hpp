#ifndef FL_FILESYSTEM_SRC_STATUS_SYMLINK_STATUS_HPP
#define FL_FILESYSTEM_SRC_STATUS_SYMLINK_STATUS_HPP
// The status of a name itself, for operations that act on links.

#include <fl/filesystem/file_status.hpp>

#include <string>

namespace fl::filesystem::detail {

/// As `symlink_status` of a pathname that has the form for the system already, but a
/// name that isn't there throws what the code stands for.
file_status symlink_status_at(std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
