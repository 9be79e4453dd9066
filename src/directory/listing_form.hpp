#ifndef FL_FILESYSTEM_SRC_DIRECTORY_LISTING_FORM_HPP
#define FL_FILESYSTEM_SRC_DIRECTORY_LISTING_FORM_HPP
// The strings for the system that stand for a directory and what is found in it.

#include <fl/filesystem/path.hpp>

#include <string>

namespace fl::filesystem::detail {

/// Returns `p` made absolute, with a long prefix if it is of a type that can have it: names
/// found on a disk can be joined to it as they are, whatever they end in and however long
/// they get. Throws `InvalidArgument` "Empty Path not permitted" without a pathname, and what
/// `absolute` does.
///
///     C:\dir             \\?\C:\dir
///     \\server\share     \\?\UNC\server\share
///     dir                \\?\C:\work\dir
///     \\.\C:\dir         as it is
std::wstring make_listing_form(upath const &p);

} // namespace fl::filesystem::detail

#endif
