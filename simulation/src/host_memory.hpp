#ifndef FL_SIMULATION_HOST_MEMORY_HPP
#define FL_SIMULATION_HOST_MEMORY_HPP
// What this host's own process has at an address: the code under test asks about
// itself, and that is where it is.

#include <cstdint>

namespace fl::simulation {

/// The unit in which the host's memory is told of here.
inline constexpr std::uintptr_t page_size = 4096;

/// The beginning of the program or library of this host that holds the address; 0 if
/// none does.
std::uintptr_t host_image_at(std::uintptr_t address);

/// Whether there is any memory at the address.
bool is_host_memory(std::uintptr_t address);

} // namespace fl::simulation

#endif
