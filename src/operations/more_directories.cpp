#include <fl/filesystem/queries.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/absolute.hpp"
#include "access/filesystem_form.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "platform/code_units.hpp"
#include "platform/filled_buffer.hpp"
#include "standard/codes.hpp"
#include "standard/filesystem.hpp"
#include "status/file_information.hpp"

#include <windows.h>

#include <optional>

namespace fl::filesystem {

namespace {

void demand_directory(BY_HANDLE_FILE_INFORMATION const &info, upath const &p)
{
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        detail::throw_exception(NotDirectoryError(p.native()));
}

/// Nothing if it isn't set, or is empty.
std::optional<std::wstring> variable(wchar_t const *name)
{
    return detail::filled_buffer(260, detail::growth::until_it_fits,
                                 [name](wchar_t *buffer, DWORD room) {
                                     return ::GetEnvironmentVariableW(name, buffer, room);
                                 });
}

std::wstring temporary_folder()
{
    for (wchar_t const *name : {L"TMP", L"TEMP", L"USERPROFILE"}) {
        if (std::optional<std::wstring> folder = variable(name))
            return *std::move(folder);
    }
    detail::throw_exception(TempEnvNotSpecified());
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

upath temp_directory_path()
{
    upath const folder = detail::make_absolute(upath(detail::narrow(temporary_folder())));
    file_status const found = status(folder);
    if (!file_status::exists(found))
        detail::throw_exception(PathNotFound(folder.native()));
    if (!file_status::is_directory(found))
        detail::throw_exception(NotDirectoryError(folder.native()));
    return folder;
}

void create_directory(upath const &p, upath const &existing)
{
    if (p.empty() || existing.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    auto const info =
        detail::demand_file_information(detail::make_filesystem_form(existing), existing.native());
    demand_directory(info, existing);
    std::wstring const form = detail::make_filesystem_form(p);
    create_directory(p);
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
