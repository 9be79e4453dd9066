#ifndef FL_FILESYSTEM_SRC_LINKS_LINK_READING_HPP
#define FL_FILESYSTEM_SRC_LINKS_LINK_READING_HPP
// What the walk through a pathname asks of each name: whether it is a link, and its text.
// The only way from there up to the links.

#include <string>

namespace fl::filesystem::detail {

/// Returns the target's text if `path` is a symbolic link or a mount point, and else the
/// empty text; a reparse point that can't be read is taken for none. Where a name is missing
/// the code is in `error`, which is otherwise left alone. Throws
/// `foundation::ustring::CtypeInvalidCharacter` as `get_target_path_bridge` does.
std::wstring read_link_text(std::wstring const &path, unsigned int &error);

/// Returns the target of the shortcut file `path` as it is stored, cut to the 259
/// units that the shell hands over. Empty if `path` isn't named like a shortcut, which
/// asks nobody, or if a step fails: then its code is in `error`, which is otherwise left
/// alone. Initialises COM on the calling thread and uninitialises it again.
std::wstring read_shortcut_target(std::wstring const &path, unsigned int &error);

} // namespace fl::filesystem::detail

#endif
