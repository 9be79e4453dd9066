#include <fl/filesystem/operations.hpp>

#include "access/filesystem_form.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem {

namespace {

/// Reports a creation that didn't happen. Always names `p`, never the level that
/// failed or the string that went to the system.
[[noreturn]] void check_directory_created(std::error_code ec, upath const &p)
{
    if (p.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    if (ec)
        detail::throw_win32_exception(static_cast<unsigned int>(ec.value()), p.wstring());
    detail::throw_exception(FileExistsError(p.native()));
}

} // namespace

void create_directory(upath const &p)
{
    std::error_code ec;
    if (!detail::standard::create_directory(detail::make_filesystem_form(p), ec))
        check_directory_created(ec, p);
}

void create_directory(std::u16string const &p)
{
    create_directory(upath(p));
}

void create_directories(upath const &p)
{
    std::error_code ec;
    if (!detail::standard::create_directories(detail::make_filesystem_form(p), ec))
        check_directory_created(ec, p);
}

void create_directories(std::u16string const &p)
{
    create_directories(upath(p));
}

} // namespace fl::filesystem
