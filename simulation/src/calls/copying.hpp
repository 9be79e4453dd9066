#ifndef FL_SIMULATION_CALLS_COPYING_HPP
#define FL_SIMULATION_CALLS_COPYING_HPP
// Copies of files, for the call itself and for moves between volumes.

#include "lookup.hpp"

#include <string_view>

namespace fl::simulation {

/// Copies content, the attributes that calls can set, and the time of the last write.
void copy_file(machine_state &machine, std::u16string_view from, std::u16string_view to,
               bool fails_if_there, last_link source = last_link::follow);

} // namespace fl::simulation

#endif
