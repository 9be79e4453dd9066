#include "status/existence.hpp"

#include <fl/filesystem/exceptions.hpp>

#include "access/filesystem_form.hpp"
#include "failure/win32_error.hpp"
#include "standard/filesystem.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

using std::filesystem::file_type;

/// Throws what a failed query stands for, unless that only says that there is nothing to
/// be seen.
void report(std::error_code const &ec, upath const &p)
{
    try {
        throw_win32_exception(static_cast<unsigned int>(ec.value()), p.wstring());
    } catch (PathNotFound const &) {
    } catch (InvalidArgument const &) {
    } catch (AccessDenied const &) {
        // behind such a reparse point nobody can look; a name that is closed to this
        // caller alone may be there
        if (ec.value() != ERROR_CANT_ACCESS_FILE)
            throw;
    }
}

bool is_something(file_type type)
{
    return type != file_type::none && type != file_type::not_found;
}

} // namespace

bool does_exist(upath const &p)
{
    std::error_code ec;
    file_type const type = standard::status(make_filesystem_form(p), ec).type();
    if (type == file_type::none)
        report(ec, p);
    return is_something(type);
}

bool is_present(upath const &p)
{
    std::error_code ec;
    return is_something(standard::status(make_filesystem_form(p), ec).type());
}

} // namespace fl::filesystem::detail
