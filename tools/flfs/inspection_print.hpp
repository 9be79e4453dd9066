#ifndef FL_FLFS_INSPECTION_PRINT_HPP
#define FL_FLFS_INSPECTION_PRINT_HPP
// An inspection for people.

#include "flfs/inspection.hpp"

#include <iosfwd>

namespace flfs {

/// Prints the text and, under headings, what the library makes of it.
void print_inspection(std::ostream &out, inspection const &one);

/// Prints the text, the type of its native form, and the drawing.
void print_brief_inspection(std::ostream &out, inspection const &one);

} // namespace flfs

#endif
