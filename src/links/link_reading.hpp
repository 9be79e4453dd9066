#ifndef FL_FILESYSTEM_SRC_LINKS_LINK_READING_HPP
#define FL_FILESYSTEM_SRC_LINKS_LINK_READING_HPP
// Links as the walk through a pathname reads them. The only way from there up to the links.

#include <fl/filesystem/links.hpp>

#include <optional>
#include <string>

namespace fl::filesystem::detail {

/// What a link says, which is never nothing, and how it says it.
struct found_link
{
    std::wstring text;
    link_kind kind;
};

/// Reads the symbolic link, the junction or the shortcut file at `path`; none if there is no
/// link or none that can be read. The code of a name that can't be asked for, and of a shortcut
/// file that can't be loaded, is then in `error`, which is otherwise left alone. A name that
/// `must_be_there` and can't be asked for isn't loaded as a shortcut file, either.
std::optional<found_link> read_link(std::wstring const &path, bool must_be_there,
                                    unsigned int &error);

} // namespace fl::filesystem::detail

#endif
