#ifndef FL_FLFS_SUGGESTION_HPP
#define FL_FLFS_SUGGESTION_HPP
// What somebody may have meant who wrote a word that there isn't.

#include <string>
#include <string_view>
#include <vector>

namespace flfs {

/// The word out of `known` that takes the fewest changes, up to two, of one letter each or of two
/// that changed places; empty if all are farther, or if nothing of `word` would be left.
std::string nearest(std::string_view word, std::vector<std::string> const &known);

} // namespace flfs

#endif
