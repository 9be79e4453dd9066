#ifndef FL_FILESYSTEM_WINDOWS_HPP
#define FL_FILESYSTEM_WINDOWS_HPP
// Public. What code compiled into callers needs of the Windows side of the
// library: the path types, and the functions whose names end in `_bridge`.
// Includes no system header.

#include <fl/filesystem/config.hpp>

#include <cstdint>
#include <string>

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

/// Returns the first `length` units of `path` behind a long prefix: `\\?\UNC\` in
/// place of the two leading backslashes if `path_type` has the server flag, else
/// `\\?\` ahead of everything. Doesn't look at the text, so a pathname that has a
/// long prefix already gets a second one.
FL_FILESYSTEM_API std::wstring add_long_path_prefix_bridge(std::wstring const &path,
                                                           std::uint64_t length,
                                                           path_type_enum path_type);

} // namespace fl::filesystem::detail::windows

#endif
