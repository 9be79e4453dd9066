#ifndef FL_SIMULATION_LEGACY_DEVICE_HPP
#define FL_SIMULATION_LEGACY_DEVICE_HPP
// Names that have meant devices since before there were directories.

#include <fl/simulation/machine.hpp>

#include <string_view>

namespace fl::simulation {

/// Whether `name` alone is one: CON, COM1 and the like, in any case.
bool is_device_name(std::u16string_view name);

/// The device that a bare pathname means by its last element, as it was typed and
/// without anything behind the name; empty if it means none. Windows 10 looks
/// through directories, an extension, trailing blanks and a colon:
///
///     C:\dir\con.txt    con
///     nul :stream       nul
///     con\              (empty: the last element is none)
///
/// Windows 11 takes the name alone, with what is trimmed off every end and a colon, and NUL
/// in any directory:
///
///     con:, con. .      con
///     C:\dir\nul        nul
///     .\con, nul.txt    (empty: a file like any other)
std::u16string_view legacy_device(std::u16string_view text, edition runs);

} // namespace fl::simulation

#endif
