#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/windows.hpp>

#include "access/filesystem_form.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "operations/removal_calls.hpp"
#include "platform/attribute_query.hpp"
#include "platform/code_units.hpp"
#include "standard/filesystem.hpp"

#include <windows.h>

namespace fl::filesystem {

void remove(upath const &p)
{
    std::error_code ec;
    std::wstring const form = detail::make_filesystem_form(p);
    if (detail::standard::remove(form, ec) || p.empty())
        return;
    if (ec)
        detail::throw_win32_exception(static_cast<unsigned int>(ec.value()), p.wstring());
    detail::throw_exception(PathNotFound(p.native()));
}

void remove(std::u16string const &p)
{
    remove(upath(p));
}

void remove_file(upath const &p)
{
    if (p.empty())
        return;
    std::wstring const form = detail::windows::make_native_access_form_bridge(p.native());
    if (::DeleteFileW(form.c_str()))
        return;
    DWORD const code = ::GetLastError();
    // the system tells of no right where the name is that of a directory
    if (code == ERROR_ACCESS_DENIED) {
        detail::attribute_query const query(form);
        if ((query.data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            detail::throw_exception(FileIsDirectory(detail::narrow(form)));
    }
    detail::throw_win32_exception(code, form);
}

void remove_file(std::u16string const &p)
{
    remove_file(upath(p));
}

void remove_directory(upath const &p)
{
    if (!p.empty())
        detail::remove_directory_at(detail::windows::make_native_access_form_bridge(p.native()));
}

void remove_directory(std::u16string const &p)
{
    remove_directory(upath(p));
}

} // namespace fl::filesystem
