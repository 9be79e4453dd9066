#ifndef FL_SIMULATION_LOOKUP_HPP
#define FL_SIMULATION_LOOKUP_HPP
// Walking down a volume, name by name.

#include "pathname.hpp"

#include <memory>
#include <string_view>

namespace simulation {

/// A place for a name: there may be something by it or not.
struct place
{
    std::shared_ptr<node> parent; ///< null for the root of a volume
    std::u16string name;
    std::shared_ptr<node> found; ///< null if there is nothing by that name
};

/// Finds the place that a pathname means. Each name is checked when its turn
/// comes: behind a directory that is missing a name may be as wrong as it likes.
place find_place(pathname const &path);

/// Like `find_place`, but there has to be something.
place find_existing(pathname const &path);

/// Whether an absolute text, taken as it stands, leads to a directory.
bool is_directory_at(std::u16string_view text, machine_state const &machine);

} // namespace simulation

#endif
