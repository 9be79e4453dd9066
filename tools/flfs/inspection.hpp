#ifndef FL_FLFS_INSPECTION_HPP
#define FL_FLFS_INSPECTION_HPP
// Everything that the library makes of one text. Fails on no text: where the library throws,
// the failure is the answer.

#include "flfs/report.hpp"

#include <string>

namespace flfs {

/// What is told of one text, once for programs and twice for people.
json inspect_for_programs(std::u16string const &text);
std::string inspect(std::u16string const &text);
/// The type and the drawing.
std::string inspect_briefly(std::u16string const &text);

} // namespace flfs

#endif
