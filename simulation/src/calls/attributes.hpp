#ifndef FL_SIMULATION_CALLS_ATTRIBUTES_HPP
#define FL_SIMULATION_CALLS_ATTRIBUTES_HPP
// Attributes and times, for calls by name and by handle.

#include "opening.hpp"

#include <cstdint>

namespace simulation {

FILETIME as_file_time(std::uint64_t ticks);

/// Sets those attributes that a caller can set, and leaves the others.
void change_attributes(open_file const &file, DWORD attributes);

} // namespace simulation

#endif
