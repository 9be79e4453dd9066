#ifndef FL_SIMULATION_PATHNAME_HPP
#define FL_SIMULATION_PATHNAME_HPP
// From the text of a pathname to a volume and the names below its root.

#include "machine_state.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fl::simulation {

struct pathname
{
    std::shared_ptr<volume> disk;              ///< null if the pathname means a device
    std::vector<std::u16string_view> elements; ///< of `texts`, or for ever
    /// What the elements are parts of: there are thousands of them at times.
    std::vector<std::shared_ptr<std::u16string const>> texts;
    bool ends_in_separator = false;
    /// `\\?\C:`, the volume below its file system and no directory on it.
    bool is_raw_volume = false;
    /// The call is for directories only.
    bool wants_directory = false;

    bool is_device() const noexcept { return disk == nullptr; }
};

/// What a call makes of the text that it is handed: treated first (full_path.hpp),
/// unless a long prefix says to take it as it stands. Names are not checked here:
/// the disk meets them one by one.
pathname parse_pathname(std::u16string_view text, machine_state &machine);

/// The same for an absolute text of any length that is taken as it stands, with or
/// without a long prefix.
pathname parse_literal(std::u16string_view text, machine_state const &machine);

/// Takes a name as the object manager knows it, without the prefix: `C:\dir`,
/// `UNC\server\share\dir`, `Volume{...}\dir`.
pathname parse_object(std::u16string_view text, machine_state const &machine);

/// Splits at backslashes only and keeps empty names: they are wrong, and the disk
/// will say so. One backslash at the end is fine.
void split(std::u16string_view text, pathname &parsed);

} // namespace fl::simulation

#endif
