#ifndef FL_FLFS_RESOLUTION_REPORT_HPP
#define FL_FLFS_RESOLUTION_REPORT_HPP
// The way through links on the terminal and for programs.

#include "flfs/commands.hpp"

#include <string>
#include <vector>

namespace flfs {

/// Resolves each of `pathnames` and prints the way, for people or as one JSON array. A
/// failure doesn't stop it; returns the exit code, which is 1 after one.
int report_resolutions(session &session, std::vector<std::u16string> const &pathnames,
                       bool as_json);

} // namespace flfs

#endif
