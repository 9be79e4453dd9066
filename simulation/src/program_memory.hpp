#ifndef FL_SIMULATION_PROGRAM_MEMORY_HPP
#define FL_SIMULATION_PROGRAM_MEMORY_HPP
// The addresses of the running process: its modules, other memory in use, and what
// is free.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fl::simulation {

/// What stands around an address. `base` is 0 where the memory is free.
struct memory_region
{
    std::uintptr_t base = 0;
    std::size_t size = 0;
    std::u16string module; ///< its file; empty if the memory belongs to none
};

class program_memory
{
public:
    /// What is said here comes before what this host has at the same addresses.
    void add(memory_region region);
    memory_region find(std::uintptr_t address) const;

    /// The file of the module that begins at `base`, 0 for the program itself.
    std::optional<std::u16string> module_at(std::uintptr_t base) const;

    std::u16string program = u"C:\\program\\program.exe";

private:
    std::vector<memory_region> regions_; // the last one counts
};

} // namespace fl::simulation

#endif
