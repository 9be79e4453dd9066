#ifndef FL_FILESYSTEM_LINKS_HPP
#define FL_FILESYSTEM_LINKS_HPP
// Public, an addition to the interface. The links that a pathname leads through, as values.
// Reading, making and copying links is in operations.hpp.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/path.hpp>

#include <optional>
#include <string>
#include <vector>

namespace fl::filesystem {

/// What a link is.
enum class link_kind
{
    symbolic_link,          ///< its text says by itself where it leads
    relative_symbolic_link, ///< is marked as relative, which a text such as `\dir` is, too
    junction,               ///< leads to a directory of a drive
    shortcut                ///< a `.lnk` file, which is a link to `canonical` and to the shell only
};

/// One link on the way of a pathname.
struct link_hop
{
    /// Where the link stands, with every link ahead of it followed. Absolute, and without a
    /// long prefix however long it is.
    std::u16string link;
    link_kind kind = link_kind::symbolic_link;
    /// What the link says, with backslashes only. Of a junction without a name for people
    /// it is the system's name without its `\??\`; of a shortcut, as it is stored, cut to
    /// 259 units.
    std::u16string text;
    /// The pathname that the way goes on with, whole and without a long prefix: where the link
    /// leads, and behind that what is left of the pathname. A `.` or `..` in it is still to
    /// come, and is applied to where the links ahead of it lead. None if the text can't be
    /// followed, such as a server without a share, and of a link that is kept.
    std::optional<std::u16string> leads_to;
    /// Whether the link is kept as an ordinary name: one on a network that names a drive, which
    /// is a drive of the server.
    bool is_kept = false;

    /// That all fields are equal.
    friend bool operator==(link_hop const &left, link_hop const &right)
    {
        return left.link == right.link && left.kind == right.kind && left.text == right.text &&
               left.leads_to == right.leads_to && left.is_kept == right.is_kept;
    }
    /// That not all of them are.
    friend bool operator!=(link_hop const &left, link_hop const &right) { return !(left == right); }
};

/// Returns the links on the way of `canonical(p)`, in the order in which it follows them: those
/// in `p` and those that other links lead through. Where links go round, each is there as often
/// as the way comes to it, up to the 100 that one way may have. The way begins at `absolute(p)`,
/// which drops `.` and `..` of `p` itself by text. Mount points of volumes and reparse points of
/// other kinds are names like others.
///
///     C:\link\file, where C:\link says `dir`, and C:\dir is a junction to D:\real:
///     C:\link    relative_symbolic_link    dir        C:\dir\file
///     C:\dir     junction                  D:\real    D:\real\file
///
/// A way that fails ends the list: where the links end, something isn't there or can't be gone
/// through. `canonical(p)` throws what it is; nothing of it is thrown here. What is thrown fails
/// ahead of the way: that of `absolute(p)`, with its pathname, and of a pathname without a root
/// to begin with, such as `\\.\COM1`, `InvalidArgument` "The path type of the given path is not
/// valid", naming it in full. The empty `p` has no links.
///
/// Asks `GetFileAttributesExW` for each element on the way, reads reparse data with
/// `FSCTL_GET_REPARSE_POINT`, and loads `.lnk` files by the shell link object, between
/// `CoInitialize` and `CoUninitialize` on the calling thread.
FL_FILESYSTEM_API std::vector<link_hop> link_hops(upath const &p);
FL_FILESYSTEM_API std::vector<link_hop> link_hops(std::u16string const &p);

} // namespace fl::filesystem

#endif
