#ifndef FL_FILESYSTEM_SRC_INSTALL_INSTALL_ROOT_HPP
#define FL_FILESYSTEM_SRC_INSTALL_INSTALL_ROOT_HPP
// The layout of an installation.

#include <string>

namespace fl::filesystem::detail {

/// Returns what stands above the last `bin\win64` in `path`, matched in any case, or the
/// empty text if there is none. An element above a `win64` is taken for its `bin` or dropped,
/// and isn't looked at as a `win64` itself.
///
///     C:\a\bin\win64\x                   C:\a
///     C:\a\bin\win64\bin\win64\x         C:\a\bin\win64
///     C:\bin\win64\win64\x               (empty)
std::wstring find_install_root(std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
