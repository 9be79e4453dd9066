#include <fl/filesystem/operations.hpp>

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "platform/code_units.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem {

upath read_symlink(upath const &p)
{
    if (p.empty())
        return upath();
    std::error_code ec;
    std::wstring const text = detail::standard::read_symlink(detail::make_filesystem_form(p), ec);
    detail::throw_on_filesystem_error(ec, p);
    return upath(detail::narrow(text));
}

std::u16string read_symlink(std::u16string const &p)
{
    return read_symlink(upath(p)).u16string();
}

} // namespace fl::filesystem
