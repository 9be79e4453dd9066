#ifndef FL_SIMULATION_FULL_PATH_HPP
#define FL_SIMULATION_FULL_PATH_HPP
// The treatment that the system gives to every pathname without a long prefix:
// it is made full, its dots are resolved, its end is trimmed.

#include "machine_state.hpp"

#include <string>
#include <string_view>

namespace fl::simulation {

/// The forms of a pathname, told apart by its beginning.
enum class path_form
{
    device,         // \\?\ or \\.\ with either separator
    unc,            // \\server\share
    drive_absolute, // C:\ with either separator
    drive_relative, // C:
    rooted,         // \dir
    relative
};

path_form form_of(std::u16string_view text);

/// Whether the system takes `text` as it stands, without any treatment.
bool is_literal(std::u16string_view text);

/// The result of GetFullPathNameW. Asks nothing of the disks, with one exception:
/// `X:name` checks what `=X:` in the environment says against the disk, and puts
/// it right.
std::u16string full_path(std::u16string_view text, machine_state &machine);

} // namespace fl::simulation

#endif
