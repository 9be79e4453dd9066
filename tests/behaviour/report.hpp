#ifndef FL_FILESYSTEM_TESTS_BEHAVIOUR_REPORT_HPP
#define FL_FILESYSTEM_TESTS_BEHAVIOUR_REPORT_HPP
// docs/behaviour.md, found out anew.

#include <string>

namespace behaviour {

/// Tries every operation on every kind of name, each on a fresh machine, and returns what
/// came of it as a page of Markdown.
std::string report();

} // namespace behaviour

#endif
