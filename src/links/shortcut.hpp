#ifndef FL_FILESYSTEM_SRC_LINKS_SHORTCUT_HPP
#define FL_FILESYSTEM_SRC_LINKS_SHORTCUT_HPP
// Shortcut files, which are links to the shell and files to the system. Only the walk
// through a pathname follows them.

#include <windows.h>

#include <objbase.h>

#include <string>

namespace fl::filesystem::detail {

/// Whether `path` ends in `.lnk`, in just these letters, and has a unit ahead of it.
bool is_shortcut_path(std::wstring const &path) noexcept;

/// Loads the shortcut file `path` and sets `target` to what it stores, cut to the 259 units
/// that the shell hands over. Returns how that went; after a failure `target` is what had been
/// handed over by then. Initialises COM on the calling thread and uninitialises it again.
HRESULT read_stored_target(std::wstring const &path, std::wstring &target);

/// Returns the target of the shortcut file `path` as it is stored, cut to the 259
/// units that the shell hands over. Empty if `path` isn't named like a shortcut, which
/// asks nobody, or if a step fails: then its code is in `error`, which is otherwise left
/// alone. Initialises COM on the calling thread and uninitialises it again.
std::wstring read_shortcut_target(std::wstring const &path, unsigned int &error);

} // namespace fl::filesystem::detail

#endif
