#ifndef FL_SIMULATION_WHOLE_FILE_HPP
#define FL_SIMULATION_WHOLE_FILE_HPP
// Files that a part of the system reads or writes in one go, by the pathname that its
// caller handed over. They fail with the codes of CreateFileW.

#include "machine_state.hpp"

#include <string>
#include <string_view>

namespace fl::simulation {

/// A device has no content, and of very large files only the beginning is read.
std::string read_whole_file(machine_state &machine, std::u16string_view text);

/// Makes the file, or replaces the content of the one that is there.
void write_whole_file(machine_state &machine, std::u16string_view text, std::string_view content);

} // namespace fl::simulation

#endif
