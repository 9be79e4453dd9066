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
///     C:\ and 256 units                \\?\ ahead of it: 263 units in all
///     \\server\share\ and 245 units    \\?\UNC\ for its two backslashes: 266
///     C:\ and 256 units less one       as it is: 259 units need no prefix
///     300 units without a root         as they are
FL_FILESYSTEM_API std::wstring make_access_form(std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
