#ifndef FL_FLFS_PATH_TYPE_NAME_HPP
#define FL_FLFS_PATH_TYPE_NAME_HPP
// The path types by the names that the library's headers give them.

#include <fl/filesystem/windows_types.hpp>

#include <string>

namespace flfs {

/// The enumerator's name, such as `PATH_TYPE_UNC`.
char const *path_type_name(fl::filesystem::detail::windows::path_type_enum type);

/// Its value as the headers write it, four digits at least: `0x3005`. The first
/// digit holds the flags.
std::string path_type_hex(fl::filesystem::detail::windows::path_type_enum type);

} // namespace flfs

#endif
