#ifndef FL_SIMULATION_LOOKUP_HPP
#define FL_SIMULATION_LOOKUP_HPP
// Walking down a volume, name by name, and through links to other places.

#include "pathname.hpp"

#include <memory>
#include <string_view>

namespace fl::simulation {

/// What to do with a link that is the last name of a pathname. Those before it are
/// always followed.
enum class last_link
{
    follow,
    keep
};

/// Who looks. A test sees all, whatever is denied to the caller.
enum class looker
{
    caller,
    test
};

/// A place for a name: there may be something by it or not.
struct place
{
    std::shared_ptr<volume> disk;
    std::shared_ptr<node> parent; ///< null for the root of a volume
    std::u16string name;          ///< as the pathname has it, not as the disk does
    std::shared_ptr<entry> found; ///< null if there is nothing by that name
    /// The last name was a link, and this is where it led.
    bool is_behind_link = false;
    /// That link was one to a directory.
    bool is_behind_directory_link = false;

    bool is_root() const noexcept { return parent == nullptr; }
};

/// Finds the place that a pathname means. Each name is checked when its turn
/// comes: behind a directory that is missing a name may be as wrong as it likes.
place find_place(pathname const &path, machine_state const &machine,
                 last_link last = last_link::keep, looker who = looker::caller);

/// Like `find_place`, but there has to be something.
place find_existing(pathname const &path, machine_state const &machine,
                    last_link last = last_link::keep, looker who = looker::caller);

/// Whether an absolute text, taken as it stands, leads to a directory.
bool is_directory_at(std::u16string_view text, machine_state const &machine);

} // namespace fl::simulation

#endif
