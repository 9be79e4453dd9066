#ifndef FL_FILESYSTEM_ACCESS_FORMS_HPP
#define FL_FILESYSTEM_ACCESS_FORMS_HPP
// Public. Pathnames as they go to the system, for callers that make their own
// system calls. The library's operations form these strings by themselves.

#include <fl/filesystem/config.hpp>

#include <string>

namespace fl::filesystem::detail {

/// Returns `text` in the system's character type, code unit for code unit.
/// Checks nothing: unpaired surrogates and NULs pass through.
FL_FILESYSTEM_API std::wstring to_filesystem(std::u16string const &text);

/// The way back: returns `text` code unit for code unit. Checks nothing.
FL_FILESYSTEM_API std::u16string from_filesystem(std::wstring const &text);

/// Returns `path` with a long prefix if it has 260 units or more and a root
/// longer than one backslash, else a copy. Neither cleans the pathname nor looks
/// at the disk, and doesn't look for a prefix either: a long pathname that has
/// one gets a second.
///
///     C:\ and 256 units more           as it is: 259 units need no prefix
///     C:\ and 257 units more           \\?\ ahead of it: 264 in all
///     \\server\share\, 260 in all      \\?\UNC\ for its two backslashes: 266
///     300 units without a root         as they are
FL_FILESYSTEM_API std::wstring make_access_form(std::wstring const &path);

/// Returns `path` as the library's own operations hand it to a Win32 call (see
/// `windows::make_native_access_form_bridge`), or unit for unit as it is if that can't be
/// done. Never reports a failure.
///
///     C:\a\.\b       C:\a\b
///     \\server       as it is: it has no share
FL_FILESYSTEM_API std::wstring make_native_access_form(std::u16string const &path);

/// The same for text as users write it: brings it to native form first.
///
///     C:/a//b       C:\a\b
FL_FILESYSTEM_API std::wstring make_native_access_form_with_cleanup(std::u16string const &path);

} // namespace fl::filesystem::detail

#endif
