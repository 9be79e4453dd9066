#ifndef FL_FLFS_STATUS_REPORT_HPP
#define FL_FLFS_STATUS_REPORT_HPP
// Status records on the terminal and for programs.

#include "flfs/commands.hpp"

#include <string>
#include <vector>

namespace flfs {

struct status_options
{
    // at most one of them
    bool links = false;   ///< ask about names themselves, not about what they lead to
    bool target = false;  ///< ask about what names lead to, which must be links
    bool express = false; ///< ask for type, last write and size only
    bool as_json = false;
};

/// Asks for the record of each of `pathnames` and prints it, for people or as one JSON
/// array. A failure doesn't stop it; returns the exit code, which is 1 after one and also
/// if a name isn't there.
int report_status(session &session, std::vector<std::u16string> const &pathnames,
                  status_options const &options);

} // namespace flfs

#endif
