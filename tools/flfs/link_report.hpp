#ifndef FL_FLFS_LINK_REPORT_HPP
#define FL_FLFS_LINK_REPORT_HPP
// Links on the terminal and for programs.

#include "flfs/commands.hpp"

#include <string>
#include <vector>

namespace flfs {

/// Reads each of `pathnames` and prints what it is, for people or as one JSON array. A
/// failure doesn't stop it; returns the exit code, which is 1 after one.
int report_links(session &session, std::vector<std::u16string> const &pathnames, bool as_json);

} // namespace flfs

#endif
