#ifndef FL_FLFS_STATUS_REPORT_HPP
#define FL_FLFS_STATUS_REPORT_HPP
// Status records on the terminal and for programs.

#include "flfs/commands.hpp"

#include <string>
#include <vector>

namespace flfs {

struct status_options
{
    bool links = false; ///< ask about names themselves, not about what they lead to
    bool as_json = false;
};

/// Asks for the record of each of `pathnames` and prints it, for people or as one JSON
/// array. A failure doesn't stop it; returns the exit code, which is 1 after one and also
/// if a name isn't there.
int report_status(session &session, std::vector<std::u16string> const &pathnames,
                  status_options const &options);

} // namespace flfs

#endif
