#ifndef FL_FILESYSTEM_SRC_ACCESS_LINK_TARGET_HPP
#define FL_FILESYSTEM_SRC_ACCESS_LINK_TARGET_HPP
// What a link says, as text that the walk through links can go on with.

#include <fl/filesystem/windows_types.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Rewrites `target` with single backslashes between its elements, makes it full where
/// it leans on a drive's current directory, and returns its type. What can't be a target,
/// such as a server without a share, becomes empty and is `PATH_TYPE_INVALID`.
///
///     C:\a//b           C:\a\b                 drive
///     C:a               C:\current\a           drive
///     \\server\share    the same               server
///     \\server          (empty)                invalid
///     \\?\C:a           C:\current\a           long drive, although the prefix is gone
///     a/b               a\b                    relative
windows::path_type_enum normalise_link_target(std::wstring &target);

/// Whether `type`, that of an absolute pathname, names a server and a share.
bool is_server(windows::path_type_enum type);

/// Where the root of `target` ends, which `normalise_link_target` found to be absolute; of an
/// expansion without its prefix, where that of a long drive would end, even behind it. Throws
/// `InvalidArgument` "UNC root path length can not be zero" where dots stand for a server or a
/// share behind a long prefix.
std::size_t target_root_size(std::wstring_view target, windows::path_type_enum type);

/// The first `size` units of `text`, its root, with the long prefix that they need.
std::wstring long_root(std::wstring_view text, std::size_t size, windows::path_type_enum type);

/// Returns `text` without a backslash at its end, unless the text is a root.
std::wstring_view without_trailing_separator(std::wstring_view text);

} // namespace fl::filesystem::detail

#endif
