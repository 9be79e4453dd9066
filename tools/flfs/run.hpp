#ifndef FL_FLFS_RUN_HPP
#define FL_FLFS_RUN_HPP
// The whole program, but for the process around it.

#include <iosfwd>
#include <string>
#include <vector>

namespace flfs {

struct session;

/// Runs the command that `utf8_arguments` name, without the program's own name, and
/// returns the exit code: 0, 1 if the library reported a failure, or 2 for wrong
/// usage. Results and help go to `out`, everything else to `err`.
int run(std::vector<std::string> const &utf8_arguments, std::ostream &out, std::ostream &err);

/// The same in a session of the caller's own, whose exit code counts for nothing.
int run(std::vector<std::string> const &utf8_arguments, session &session);

} // namespace flfs

#endif
