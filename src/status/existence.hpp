#ifndef FL_FILESYSTEM_SRC_STATUS_EXISTENCE_HPP
#define FL_FILESYSTEM_SRC_STATUS_EXISTENCE_HPP
// Whether there is something at a name. Two answers are meant.

#include <fl/filesystem/path.hpp>

namespace fl::filesystem::detail {

/// The operation `exists`: a failure that doesn't say that the name is missing is thrown,
/// naming `p`.
bool does_exist(upath const &p);

/// Whether `p` leads to something to go on with. Every failure of the query is a no.
bool is_present(upath const &p);

} // namespace fl::filesystem::detail

#endif
