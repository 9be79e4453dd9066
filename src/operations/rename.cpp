#include <fl/filesystem/operations.hpp>

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "platform/standard_filesystem.hpp"

namespace fl::filesystem {

void rename(upath const &from, upath const &to)
{
    std::wstring const to_form = detail::make_filesystem_form(to);
    std::wstring const from_form = detail::make_filesystem_form(from);
    std::error_code ec;
    detail::standard::rename(from_form, to_form, ec);
    detail::throw_on_filesystem_error(ec, from, to);
}

void rename(std::u16string const &from, std::u16string const &to)
{
    rename(upath(from), upath(to));
}

} // namespace fl::filesystem
