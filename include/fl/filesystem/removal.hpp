#ifndef FL_FILESYSTEM_REMOVAL_HPP
#define FL_FILESYSTEM_REMOVAL_HPP
// Public. Removing trees as programs do that clean up after others: counted, shown while it
// goes on, read-only files included, and all failures told instead of the first.
//
//     auto const report = remove_all(p, removal_options().clear_read_only().keep_going());
//     for (failure const &left : report.failures())
//         log(left.describe());

#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/config.hpp>
#include <fl/filesystem/path.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fl::filesystem {

namespace detail {
struct removal_record;
struct removal_settings;
} // namespace detail

/// What a callback is told each time when a name has been removed.
struct removal_progress
{
    /// The pathname of it: what was given, and the names below it, exactly as they were.
    std::u16string const &path_name;
    std::uint64_t removed; ///< how many there were, this one included
};

/// How a tree is removed. A value; each member changes one thing and returns the options.
class FL_FILESYSTEM_API removal_options
{
public:
    /// As `remove_all` without options: read-only names are a failure, and the first failure
    /// ends it.
    removal_options();

    /// Remove names that are read-only, too.
    removal_options &clear_read_only(bool clears = true);

    /// Go on after a failure with what follows. A directory stays if something in it does, and
    /// that isn't told a second time.
    removal_options &keep_going(bool keeps = true);

    /// Keep others from renaming and deleting a directory while it is emptied; so it is from the
    /// start. Turned off, a directory that another program holds open for deletion is no failure,
    /// and one that others move out of the tree meanwhile goes all the same if it is empty by
    /// then. Nothing else outside is lost in either case.
    removal_options &hold(bool holds = true);
    /// Tell `callback` of each name when it is gone. If it returns false, the removal stops. What
    /// it throws ends the removal, and passes.
    removal_options &on_progress(std::function<bool(removal_progress const &)> callback);

    /// For the library itself.
    detail::removal_settings const &settings() const noexcept { return *settings_; }

private:
    std::shared_ptr<detail::removal_settings const> settings_;
};

/// What came of a removal.
class FL_FILESYSTEM_API removal_report
{
public:
    /// For the library itself.
    explicit removal_report(std::shared_ptr<detail::removal_record const> record) noexcept;

    /// Returns how many files, links and directories were removed.
    [[nodiscard]] std::uint64_t removed() const noexcept;

    /// Returns why each name that is left is there, in the order in which they were met; empty
    /// unless `keep_going`. Each has its pathname, also where an exception would have none.
    [[nodiscard]] std::vector<failure> const &failures() const noexcept;

    /// Returns whether the callback stopped it.
    [[nodiscard]] bool was_stopped() const noexcept;

    /// Returns whether nothing is left: neither a failure nor a stop.
    [[nodiscard]] bool is_complete() const noexcept { return failures().empty() && !was_stopped(); }

private:
    std::shared_ptr<detail::removal_record const> record_;
};

/// Removes `p` with all that is in it, links themselves and never what they lead to, a directory
/// after its contents, and says how many names that were. Pathnames of any length, and names
/// that end in a full stop or blank. The empty path is passed over.
///
/// Loses nothing outside the tree, whatever others do to it meanwhile: each directory is opened
/// without leave to delete or rename it while it is emptied (`hold`), it is looked at whether it is
/// a link by then, and each name is removed by the handle that was opened on it. So a directory
/// that another program holds open for deletion, or without leave for it, is a failure. A directory
/// that is another kind of reparse point is not emptied; it goes if it is empty. What has gone
/// by itself when its turn comes isn't counted and is no failure. Two handles for each level.
///
/// Names are free at once where the disk can do that (POSIX semantics of
/// `SetFileInformationByHandle`). Wine 8 lists no directory that is open for deletion:
/// there a directory is `SystemError` 32, and nothing is removed.
///
/// Throws the first failure, unless `keep_going`; it names the pathname that was given with the
/// names below it, and is `PathNotFound` if `p` is missing, `AccessDenied` for a read-only name
/// or one without the right to remove it, `SystemError` 32 for one that is in use, and what
/// other codes stand for. With `keep_going` only what makes the pathname's form is thrown: see
/// `create_directory`.
FL_FILESYSTEM_API removal_report remove_all(upath const &p, removal_options const &options);
FL_FILESYSTEM_API removal_report remove_all(std::u16string const &p,
                                            removal_options const &options);

} // namespace fl::filesystem

#endif
