#ifndef FL_FLFS_CHANGES_HPP
#define FL_FLFS_CHANGES_HPP
// Changes of the disk that are made to names one by one.

#include "flfs/commands.hpp"
#include "flfs/failure_report.hpp"

#include <functional>
#include <string>
#include <vector>

namespace flfs {

struct change
{
    /// Makes the change and returns what has happened to the name: "removed".
    std::function<char const *(std::u16string const &pathname)> make;
    /// Replaces the sentence where the command knows more than the class of the failure.
    std::function<void(failure &)> advise;
};

/// Makes the change to each of `pathnames` and tells so. A failure doesn't stop it;
/// returns the exit code, which is 1 after one.
int make_changes(session &session, std::vector<std::u16string> const &pathnames,
                 change const &what);

} // namespace flfs

#endif
