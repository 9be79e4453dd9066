#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>

#include "access/filesystem_form.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "standard/codes.hpp"
#include "standard/filesystem.hpp"
#include "status/file_information.hpp"

#include <windows.h>

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

void demand_directory(BY_HANDLE_FILE_INFORMATION const &info, upath const &p)
{
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        detail::throw_exception(NotDirectoryError(p.native()));
}

/// Of a directory that was just made. Without its attributes it goes again.
void set_attributes(std::wstring const &form, DWORD attributes, upath const &p)
{
    DWORD const code =
        detail::standard::code_of([&] { return ::SetFileAttributesW(form.c_str(), attributes); });
    if (code == ERROR_SUCCESS)
        return;
    ::RemoveDirectoryW(form.c_str());
    detail::throw_win32_exception(code, p.wstring());
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

void create_directory(upath const &p, upath const &existing)
{
    if (p.empty() || existing.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    auto const info =
        detail::demand_file_information(detail::make_filesystem_form(existing), existing.native());
    demand_directory(info, existing);
    std::wstring const form = detail::make_filesystem_form(p);
    std::error_code ec;
    if (!detail::standard::create_directory(form, ec))
        check_directory_created(ec, p);
    constexpr DWORD taken_over = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                 FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                 FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    if (DWORD const attributes = info.dwFileAttributes & taken_over; attributes != 0)
        set_attributes(form, attributes, p);
}

void create_directory(std::u16string const &p, std::u16string const &existing)
{
    create_directory(upath(p), upath(existing));
}

bool ensure_directories(upath const &p)
{
    if (p.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    std::error_code ec;
    bool const is_created =
        detail::standard::create_directories(detail::make_filesystem_form(p), ec);
    if (ec)
        detail::throw_win32_exception(static_cast<unsigned int>(ec.value()), p.wstring());
    return is_created;
}

bool ensure_directories(std::u16string const &p)
{
    return ensure_directories(upath(p));
}

} // namespace fl::filesystem
