#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "failure/throw.hpp"
#include "standard/filesystem.hpp"
#include "status/existence.hpp"

namespace fl::filesystem {

bool equivalent(upath const &p1, upath const &p2)
{
    std::error_code ec;
    std::wstring const first = detail::make_filesystem_form(p1);
    std::wstring const second = detail::make_filesystem_form(p2);
    bool const is_same = detail::standard::equivalent(first, second, ec);
    if (!ec)
        return is_same;
    bool const has_first = detail::is_present(p1);
    bool const has_second = detail::is_present(p2);
    if (!has_first && !has_second)
        detail::throw_exception(PathNotFound(p1.native()));
    if (has_first && has_second)
        detail::throw_on_filesystem_error(ec, p1, p2);
    return false;
}

bool equivalent(std::u16string const &p1, std::u16string const &p2)
{
    return equivalent(upath(p1), upath(p2));
}

} // namespace fl::filesystem
