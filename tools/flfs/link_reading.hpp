#ifndef FL_FLFS_LINK_READING_HPP
#define FL_FLFS_LINK_READING_HPP
// What a name on a disk is as a link, and what it says.

#include <fl/filesystem/links.hpp>

#include "flfs/status_text.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace flfs {

/// The kind of a link that a walk goes through: "symbolic link, relative".
term kind_of(fl::filesystem::link_hop const &hop);

struct link
{
    std::u16string pathname; ///< in native form
    term kind;
    /// Of the kinds that lead somewhere. That of a shortcut is as it is stored, the
    /// others are in native form.
    std::optional<std::u16string> text;
    std::optional<std::uint32_t> tag; ///< none of a shortcut
    /// Where it leads, as the library reads its bytes: unlike `text`, never with the system's
    /// own prefix. Empty for a shortcut, and if no walk follows a link of this kind.
    // Else GCC warns of rows that leave it out: NOLINTNEXTLINE(readability-redundant-string-init)
    std::u16string target = u"";
};

/// Reads one link without following it, or a shortcut file, whose name ends in `.lnk`.
/// Throws exceptions of the library, also if the name is neither.
link read_link(std::u16string const &pathname);

} // namespace flfs

#endif
