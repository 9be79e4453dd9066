#ifndef FL_FILESYSTEM_SRC_LINKS_SHORTCUT_HPP
#define FL_FILESYSTEM_SRC_LINKS_SHORTCUT_HPP
// Shortcut files, which are links to the shell and files to the system. Only the walk
// through a pathname follows them.

#include <string>

namespace fl::filesystem::detail {

/// Whether `path` ends in `.lnk`, in just these letters, and has a unit ahead of it.
bool is_shortcut_path(std::wstring const &path) noexcept;

} // namespace fl::filesystem::detail

#endif
