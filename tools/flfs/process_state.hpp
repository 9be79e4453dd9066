#ifndef FL_FLFS_PROCESS_STATE_HPP
#define FL_FLFS_PROCESS_STATE_HPP
// What the system keeps for this process, asked without the library.

#include <optional>
#include <string>

namespace flfs {

/// Its value, or nothing if it isn't set.
std::optional<std::u16string> environment_variable(std::u16string const &name);

} // namespace flfs

#endif
