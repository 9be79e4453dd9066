#ifndef FL_FLFS_CHANGES_HPP
#define FL_FLFS_CHANGES_HPP
// Changes of the disk, told one by one.

#include "flfs/report.hpp"

#include <functional>
#include <string>
#include <vector>

namespace flfs {

struct change
{
    /// Makes the change and returns what has happened to its names: "removed".
    std::function<std::string(arguments const &)> make;
    /// Replaces the sentence where the command knows more than the class of the failure, and
    /// the arguments that are shown where the library names no pathname.
    std::function<void(failure &, arguments &blamed)> advise;
    bool stops_at_failure = false;
};

/// Makes the change for each of `rounds` and tells so, two names with an arrow between them.
/// Returns the exit code, which is 1 after a failure.
int make_changes(session &session, std::vector<arguments> const &rounds, change const &what);

/// Replaces the sentence of a failure of this class.
void advise(failure &what_failed, fl::filesystem::fsys_excp_id id, char const *sentence);

/// Replaces that of the missing right to make symbolic links.
void advise_on_links(failure &what_failed);

} // namespace flfs

#endif
