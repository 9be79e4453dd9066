#ifndef FL_FILESYSTEM_SRC_ACCESS_PATH_CLEANING_HPP
#define FL_FILESYSTEM_SRC_ACCESS_PATH_CLEANING_HPP
// Pathnames on the way to the system, by text alone. Behind a long prefix the system
// takes `.` and `..` for names, so whoever adds the prefix has to deal with them. Which
// directory a `..` leads to is asked on the disk, elsewhere (link_chain.hpp).

#include <fl/filesystem/windows_types.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Returns `path` as an absolute pathname with a long prefix, and sets `path_type` to
/// its type. A relative one goes below `base`, or below the current directory if `base`
/// is empty. No element is looked at. Throws `InvalidArgument` "The path type of the
/// given path is not valid", naming `path`, where there is no such pathname.
///
///     C:\x                  \\?\C:\x
///     \\server\share\x      \\?\UNC\server\share\x
///     \\?\C:\x              as it is
///     ..\x below C:\a       \\?\C:\a\..\x
std::wstring clean_pathname(std::wstring_view path, windows::path_type_enum &path_type,
                            std::wstring_view base);

/// Whether an element of `path` is exactly `..`. Only backslashes separate.
bool has_parent_component(std::wstring_view path);

/// Returns `path`, which has a long prefix and is of this type, without its elements `.`
/// and without a backslash at its end. A doubled backslash stays. Throws
/// `InvalidArgument` "UNC root path length can not be zero" on a server without a share.
///
///     \\?\C:\a\.\b\      \\?\C:\a\b
///     \\?\C:\.           \\?\C:\, the root itself
///     \\?\C:\.\          \\?\C:       (the rule for the end meets the root)
std::wstring remove_dot_components(std::wstring path, windows::path_type_enum path_type);

/// Whether the first `length` units hold no element that is empty, `.` or `..`, so that
/// a link with this target needs no walk. Only backslashes separate. Elements within are
/// looked for in all of `path`, also behind `length`.
bool is_path_clean(std::wstring_view path, std::size_t length);

} // namespace fl::filesystem::detail

#endif
