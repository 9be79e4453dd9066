#include <fl/filesystem/operations.hpp>

#include "status/existence.hpp"
#include "status/status.hpp"

namespace fl::filesystem {

file_status status(upath const &p)
{
    return detail::status_of(p.native());
}

file_status status(std::u16string const &p)
{
    return p.empty() ? file_status() : status(upath(p));
}

file_status symlink_status(upath const &p)
{
    return detail::symlink_status_of(p.native());
}

file_status symlink_status(std::u16string const &p)
{
    return p.empty() ? file_status() : symlink_status(upath(p));
}

file_status_light status_express_light(std::u16string const &p)
{
    return detail::express_status_of(p);
}

bool exists(upath const &p)
{
    return detail::does_exist(p);
}

bool exists(std::u16string const &p)
{
    return exists(upath(p));
}

} // namespace fl::filesystem
