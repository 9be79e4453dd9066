#ifndef FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_HPP
// A place on a disk for one test. Natively it is on a simulated machine of its
// own; for a Windows target it is a fresh folder on the real system.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// What the system follows differs by this, whatever stands at the target.
enum class link_to
{
    file,
    directory
};

/// What a caller can be denied of one file or directory.
enum class access_right
{
    read_attributes, ///< and with it every opening
    read,            ///< a file's content
    write,           ///< a file's content; attributes and times of either
    execute,         ///< a file; passing through a directory
    remove,          ///< deleting and moving it
    list,            ///< the names in a directory
    create_entries   ///< files and directories in a directory
};

/// Pathnames here are absolute, of any length and without a long prefix. They are taken
/// as they stand: names may end in dots and blanks, and a link at the end of one means
/// the link itself. What can't be done throws an exception of the standard library.
class workspace
{
public:
    /// Makes a fresh empty folder on a drive; natively also a fresh machine.
    workspace();
    /// Removes it all, links without what they lead to, and restores the process's
    /// current directory.
    ~workspace();
    workspace(workspace const &) = delete;
    workspace &operator=(workspace const &) = delete;

    /// The folder as an absolute drive pathname without a backslash at its end, at
    /// most 60 units long.
    std::u16string const &root() const;
    /// `root()`, a backslash and `relative`.
    std::u16string path(std::u16string_view relative) const;

    /// Whether there is a network share to use. Natively always.
    bool has_share() const;
    /// A fresh folder on the share: `\\fl-server\share\name`.
    std::u16string share_root() const;

    /// With its parents. Fine if it is there already.
    void make_directory(std::u16string const &path);
    /// With its parents. Replaces a former file.
    void make_file(std::u16string const &path, std::string const &content = "");

    /// Whether symbolic links can be made. Natively always. Wine 8 says that it made one,
    /// and made none; on Windows the caller may lack the right.
    bool has_symbolic_links() const;
    /// With its parents, where nothing is yet. The link keeps `target` as it stands.
    void make_symbolic_link(std::u16string const &path, std::u16string const &target,
                            link_to what = link_to::file);
    /// Whether junctions can be made. Natively always; Wine 8 knows no reparse data.
    bool has_junctions() const;
    /// With its parents, where nothing is yet. `target` is absolute.
    void make_junction(std::u16string const &path, std::u16string const &target);
    /// With its parents, as the shell link object saves it. Replaces a former file.
    /// `target` is absolute, of less than 260 units, and needn't be there; Wine keeps
    /// only what the code page of its host can write.
    void make_shortcut(std::u16string const &path, std::u16string const &target);

    bool exists(std::u16string const &path) const;
    bool is_directory(std::u16string const &path) const;
    bool is_file(std::u16string const &path) const;
    /// The names in a directory, sorted by their units.
    std::vector<std::u16string> entries(std::u16string const &path) const;
    /// All bytes of a file that is no link.
    std::string content(std::u16string const &path) const;
    /// Whether it is there and a reparse point of any kind.
    bool is_link(std::u16string const &path) const;
    /// The target that a symbolic link or a junction shows to people or, if it shows none,
    /// the name that the system follows.
    std::u16string link_text(std::u16string const &path) const;
    /// The target in a shortcut file, as the shell link object has stored it.
    std::u16string shortcut_target(std::u16string const &path) const;

    /// As GetFileAttributesW has them: FILE_ATTRIBUTE_HIDDEN and its kin.
    std::uint32_t attributes(std::u16string const &path) const;
    /// Those that SetFileAttributesW can set. Wine keeps few of them.
    void set_attributes(std::u16string const &path, std::uint32_t attributes);

    /// Changes the process's current directory.
    void change_directory(std::u16string const &path);

    /// Whether `deny` and `deny_creation` work. Natively always; Wine knows no rights.
    bool can_deny_rights() const;
    /// Denies the caller one right on this file or directory. What this workspace tells
    /// and makes by itself isn't hindered.
    void deny(std::u16string const &path, access_right right);
    /// Denies the caller to make anything in this directory.
    void deny_creation(std::u16string const &path);

private:
    struct state;
    std::unique_ptr<state> state_;
};

/// Whether the test runs on Wine, which differs from Windows here and there.
bool runs_under_wine();
/// The first number of Wine's version, 0 elsewhere.
int wine_version();

/// The Windows that a test runs on, by what it does differently.
enum class windows_edition
{
    windows_10_1809, ///< the name of a deleted file stays until its last handle closes
    windows_10_22h2, ///< names of deleted files are free at once (since 1903)
    windows_11       ///< and of legacy devices only NUL is found in directories
};

/// Natively what FL_WINDOWS_EDITION in the environment says, with names as above, and Windows
/// 11 if it says nothing. Wine passes for the oldest: rows say what else it does.
windows_edition running_edition();

/// Whether pathnames without a long prefix may be longer than 259 units. Natively if
/// FL_LONG_PATHNAMES is in the environment.
bool takes_long_pathnames();

} // namespace test_support

#endif
