#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/filesystem_form.hpp"
#include "failure/win32_error.hpp"
#include "standard/filesystem.hpp"

#include <windows.h>

namespace fl::filesystem {

namespace {

/// Throws what a failed query stands for, unless that only says that there is nothing to
/// be seen.
void report(std::error_code const &ec, upath const &p)
{
    try {
        detail::throw_win32_exception(static_cast<unsigned int>(ec.value()), p.wstring());
    } catch (PathNotFound const &) {
    } catch (InvalidArgument const &) {
    } catch (AccessDenied const &) {
        // behind such a reparse point nobody can look; a name that is closed to this
        // caller alone may be there
        if (ec.value() != ERROR_CANT_ACCESS_FILE)
            throw;
    }
}

} // namespace

bool exists(upath const &p)
{
    std::error_code ec;
    std::filesystem::file_type const type =
        detail::standard::status(detail::make_filesystem_form(p), ec).type();
    if (type == std::filesystem::file_type::none && ec)
        report(ec, p);
    return type != std::filesystem::file_type::none &&
           type != std::filesystem::file_type::not_found;
}

bool exists(std::u16string const &p)
{
    return exists(upath(p));
}

} // namespace fl::filesystem
