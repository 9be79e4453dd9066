#ifndef FL_FLFS_ARGUMENT_GUARD_HPP
#define FL_FLFS_ARGUMENT_GUARD_HPP
// How pathnames come through CLI11 unchanged. It reads some words as its own
// notation: one in brackets as a list, `++` as the end of a command. As a pathname
// either may be meant.

#include <string>
#include <string_view>
#include <vector>

namespace flfs {

/// Returns `arguments` so that CLI11 takes pathnames for plain words, and in the
/// order that it wants: last one first. Everything behind the first `--` is a
/// pathname, which CLI11 only grants to a command that has none yet. The word of `chmod`
/// may begin with a hyphen, as `-w` does. A value behind `=` may be a pathname, too.
std::vector<std::string> protect(std::vector<std::string> const &arguments);

/// Takes out of a message what `protect` has put in.
std::string unprotected(std::string_view message);

/// One word that `protect` has let through, as the user wrote it.
std::string_view without_guard(std::string_view word);

} // namespace flfs

#endif
