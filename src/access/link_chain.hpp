#ifndef FL_FILESYSTEM_SRC_ACCESS_LINK_CHAIN_HPP
#define FL_FILESYSTEM_SRC_ACCESS_LINK_CHAIN_HPP
// The walk through a pathname, element by element, as it is on disk.

#include <fl/filesystem/links.hpp>
#include <fl/filesystem/windows_types.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace fl::filesystem::detail {

/// Returns `path` with a long prefix, every link in it replaced by where it leads, and
/// `.` and `..` applied to the directories that it really passes. Symbolic links,
/// junctions and shortcut files (`.lnk`) are links here. `path_type` is that of `path`;
/// 0 has it classified.
///
///     \\?\C:\dir\..\x     \\?\C:\x
///     \\?\C:\link\..\x    \\?\D:\p\x, with `link` to D:\p\q
///     C:\                 \\?\C:\ as it is
///
/// A link on a network that names a drive means one of the server's: it isn't followed,
/// and the walk ends as if it were an ordinary element. A missing element is only told
/// if it is the last one, or if a `.` or `..` stands behind it.
///
/// Each link that the walk comes to is put into `hops` if there is one, which then holds
/// them also where the walk throws.
///
/// Asks `GetFileAttributesExW` for each element and reads its reparse data or shortcut.
/// Throws `PathNotFound` and `InvalidArgument` "Invalid Path Type" without a pathname
/// where `path` or a link leads nowhere, `SystemError` 8246 with the way so far on the
/// 101st link, and what the code of a failed query stands for, naming the text asked for.
std::wstring resolve_link_chain(std::wstring_view path, windows::path_type_enum path_type,
                                std::vector<link_hop> *hops = nullptr);

} // namespace fl::filesystem::detail

#endif
