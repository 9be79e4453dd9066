#include <fl/filesystem/operations.hpp>

#include "access/absolute.hpp"

namespace fl::filesystem {

upath absolute(upath const &p, upath const &base)
{
    return detail::make_absolute(p, base);
}

std::u16string absolute(std::u16string const &p, std::u16string const &base)
{
    return absolute(upath(p), upath(base)).u16string();
}

} // namespace fl::filesystem
