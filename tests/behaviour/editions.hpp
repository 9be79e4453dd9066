#ifndef FL_FILESYSTEM_TESTS_BEHAVIOUR_EDITIONS_HPP
#define FL_FILESYSTEM_TESTS_BEHAVIOUR_EDITIONS_HPP
// What operations do differently on one Windows or another.

#include <iosfwd>

namespace behaviour {

/// A part of the table: the situations that don't end alike everywhere.
void write_editions(std::ostream &page);

} // namespace behaviour

#endif
