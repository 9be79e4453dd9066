#ifndef FL_FILESYSTEM_WINDOWS_TYPES_HPP
#define FL_FILESYSTEM_WINDOWS_TYPES_HPP
// Public. The types that the functions of windows.hpp take: the path types, the kinds
// of link, and room for reparse data. By themselves they need nothing of Boost, which
// the record that one of those functions returns does. Includes no system header.

#include <cstdint>

namespace fl::filesystem::detail::windows {

/// What kind of pathname a text is: a running number in the low twelve bits and
/// four flags above them.
///
///     0x1000   it has a root
///     0x2000   it names a server
///     0x4000   it carries a long prefix
///     0x8000   it names a device
enum path_type_enum : std::uint32_t
{
    PATH_TYPE_INVALID = 0,                  ///< no usable pathname: `\\server`
    PATH_TYPE_RELATIVE = 1,                 ///< no root at all: `foo\bar`
    PATH_TYPE_ROOTED = 0x1002,              ///< root of the current drive: `\foo`
    PATH_TYPE_DRIVE_ABSOLUTE = 0x1003,      ///< `C:\foo`
    PATH_TYPE_DRIVE_RELATIVE = 0x1004,      ///< `C:`, `C:foo`
    PATH_TYPE_UNC = 0x3005,                 ///< `\\server\share\foo`
    PATH_TYPE_UNC_NO_ROOT = 0x3006,         ///< no backslash behind the share
    PATH_TYPE_LONG_DRIVE_ABSOLUTE = 0x5007, ///< `\\?\C:\foo`
    PATH_TYPE_LONG_DRIVE_RELATIVE = 0x5008, ///< `\\?\C:foo`
    PATH_TYPE_LONG_UNC = 0x7009,            ///< `\\?\UNC\server\share\foo`
    PATH_TYPE_LONG_UNC_NO_ROOT = 0x700A,    ///< no backslash behind the share
    PATH_TYPE_DEVICE = 0x800B               ///< `\\.\COM1`
};

/// What kind of link a reparse point is. The values are fixed; bit 0x100 marks a link
/// whose text goes from the directory that the link is in. They are no path types,
/// though two of the numbers are the same.
enum attrib_link_type : std::uint32_t
{
    link_type_none = 0,                  ///< a tag that the library doesn't know
    link_type_volume_mount = 4,          ///< a volume shown in a directory
    link_type_dedup_file = 5,            ///< a deduplicated file, no link
    link_type_dfs_directory = 6,         ///< a directory of a distributed file system, no link
    link_type_symlink_absolute = 0x1002, ///< a symbolic link
    link_type_symlink_relative = 0x1102, ///< a symbolic link with relative text
    link_type_mount_point = 0x1003       ///< a junction
};

/// Room for the reparse data of one name: the system's `REPARSE_DATA_BUFFER`, as
/// `DeviceIoControl` with `FSCTL_GET_REPARSE_POINT` fills it. Zero it first.
union reparse_data_context {
    unsigned char buffer[16392]; ///< tag, length and data, as the system lays them out
    std::uint32_t alignment;     ///< of the system's structure; never read
};

} // namespace fl::filesystem::detail::windows

#endif
