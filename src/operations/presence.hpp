#ifndef FL_FILESYSTEM_SRC_OPERATIONS_PRESENCE_HPP
#define FL_FILESYSTEM_SRC_OPERATIONS_PRESENCE_HPP
// Whether there is something to go on with.

#include <fl/filesystem/path.hpp>

#include "access/filesystem_form.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem::detail {

/// Whether `p` leads to something that can be looked at. Unlike `exists` it takes every
/// failure for a no.
inline bool is_present(upath const &p)
{
    std::error_code ec;
    std::filesystem::file_type const type = standard::status(make_filesystem_form(p), ec).type();
    return type != std::filesystem::file_type::none &&
           type != std::filesystem::file_type::not_found;
}

} // namespace fl::filesystem::detail

#endif
