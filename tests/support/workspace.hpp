#ifndef FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_HPP
// A place on a disk for one test. Natively it is on a simulated machine of its
// own; for a Windows target it is a fresh folder on the real system.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// Pathnames here are absolute, of any length and without a long prefix. What
/// can't be done throws an exception of the standard library.
class workspace
{
public:
    /// Makes a fresh empty folder on a drive; natively also a fresh machine.
    workspace();
    /// Removes it all and restores the process's current directory.
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

    bool exists(std::u16string const &path) const;
    bool is_directory(std::u16string const &path) const;
    bool is_file(std::u16string const &path) const;
    /// The names in a directory, sorted by their units.
    std::vector<std::u16string> entries(std::u16string const &path) const;

    /// Changes the process's current directory.
    void change_directory(std::u16string const &path);

    /// Whether `deny_creation` works. Natively always; Wine knows no rights.
    bool can_deny_rights() const;
    /// Denies the caller to make anything in this directory.
    void deny_creation(std::u16string const &path);

private:
    struct state;
    std::unique_ptr<state> state_;
};

/// Whether the test runs on Wine, which differs from Windows here and there.
bool runs_under_wine();

} // namespace test_support

#endif
