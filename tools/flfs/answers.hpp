#ifndef FL_FLFS_ANSWERS_HPP
#define FL_FLFS_ANSWERS_HPP
// Questions that are put to pathnames one by one and answered by a pathname, or by yes
// or no, on the terminal and for programs.

#include "flfs/commands.hpp"

#include <functional>
#include <string>
#include <vector>

namespace flfs {

/// Prints the answer to each of `pathnames`, a line each, or all as one JSON array. A
/// failure doesn't stop it; returns the exit code, which is 1 after one.
int report_pathnames(session &session, std::vector<std::u16string> const &pathnames, bool as_json,
                     std::function<std::u16string(std::u16string const &)> const &answer);

/// The same where the answer is yes or no, called `key` in JSON. The exit code is 1 after a
/// no, too.
int report_truths(session &session, std::vector<std::u16string> const &pathnames, bool as_json,
                  char const *key, std::function<bool(std::u16string const &)> const &answer);

} // namespace flfs

#endif
