#ifndef FL_FLFS_LINK_READING_HPP
#define FL_FLFS_LINK_READING_HPP
// What a name on a disk is as a link, and where it says that it leads.

#include <cstdint>
#include <optional>
#include <string>

namespace flfs {

enum class link_kind
{
    symbolic_link_relative,
    symbolic_link_absolute,
    junction,
    volume_mount_point,
    deduplicated_file,
    dfs_directory,
    other_reparse_point, ///< of a kind that the library doesn't know
    shortcut
};

/// For people: "symbolic link, relative".
char const *description(link_kind kind);

/// For programs: "symbolic_link_relative".
char const *identifier(link_kind kind);

struct link
{
    std::u16string pathname; ///< in native form
    link_kind kind;
    /// Of the kinds that lead somewhere. That of a shortcut is as it is stored, the
    /// others are in native form.
    std::optional<std::u16string> text;
    std::optional<std::uint32_t> tag; ///< none of a shortcut
    /// What a walk through it goes on with, as the library reads it: unlike `text`, never
    /// with the system's own prefix. Empty if no walk follows a link of this kind.
    std::u16string target;
};

/// Reads one link without following it, or a shortcut file, whose name ends in `.lnk`.
/// Throws exceptions of the library, also if the name is neither.
link read_link(std::u16string const &pathname);

} // namespace flfs

#endif
