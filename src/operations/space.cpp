#include <fl/filesystem/operations.hpp>

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "failure/throw.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem {

space_info space(upath const &p)
{
    if (p.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    std::error_code ec;
    space_info const info = detail::standard::space(detail::make_filesystem_form(p), ec);
    detail::throw_on_filesystem_error(ec, p);
    return info;
}

} // namespace fl::filesystem
