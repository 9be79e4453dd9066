#ifndef FL_FILESYSTEM_SRC_ACCESS_FILESYSTEM_FORM_HPP
#define FL_FILESYSTEM_SRC_ACCESS_FILESYSTEM_FORM_HPP
// The string for operations that go through the standard filesystem facility.

#include <fl/filesystem/path.hpp>

#include <string>

namespace fl::filesystem::detail {

/// Returns `p` made absolute, with a long prefix beyond the 247 units that the
/// system takes for a new directory without one. Throws what `absolute` does, and
/// `InvalidArgument` "Long UNC path without root not permitted" if a pathname that
/// needs the prefix is of a type that can't have it.
std::wstring make_filesystem_form(upath const &p);

} // namespace fl::filesystem::detail

#endif
