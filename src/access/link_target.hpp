#ifndef FL_FILESYSTEM_SRC_ACCESS_LINK_TARGET_HPP
#define FL_FILESYSTEM_SRC_ACCESS_LINK_TARGET_HPP
// What a link says, as text that the walk through links can go on with.

#include <fl/filesystem/windows_types.hpp>

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

/// Returns `text` without a backslash at its end, unless the text is a root.
std::wstring_view without_trailing_separator(std::wstring_view text);

} // namespace fl::filesystem::detail

#endif
