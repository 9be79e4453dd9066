#ifndef FL_FLFS_DRAWING_HPP
#define FL_FLFS_DRAWING_HPP
// A pathname with marks under the units of its parts:
//
//     C:\data\report.tar.gz
//     ^^^                     root       C:\ (its backslash included)
//     ^^^^^^^                 parent     C:\data
//             ^^^^^^^^^^      stem       report.tar
//                        ^^   extension  gz

#include <string>
#include <vector>

namespace flfs {

/// The lines of the drawing, without line ends or blanks at theirs. A mark stands
/// under each column that a terminal draws; empty parts are left out.
/// A pathname too wide for a line is drawn in pieces, one below the other. None for
/// an empty pathname.
std::vector<std::string> draw(std::u16string const &native);

} // namespace flfs

#endif
