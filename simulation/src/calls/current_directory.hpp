#ifndef FL_SIMULATION_CALLS_CURRENT_DIRECTORY_HPP
#define FL_SIMULATION_CALLS_CURRENT_DIRECTORY_HPP
// Where the process stands, for the calls and for tests.

#include "machine_state.hpp"

#include <string>

namespace fl::simulation {

/// Makes the directory with this full pathname the current one.
void change_directory(machine_state &machine, std::u16string full);

/// As GetCurrentDirectoryW tells it: only `C:\` keeps its backslash.
std::u16string shown_current_directory(machine_state const &machine);

} // namespace fl::simulation

#endif
