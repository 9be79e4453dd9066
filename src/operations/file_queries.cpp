#include <fl/filesystem/queries.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/filesystem_form.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "standard/filesystem.hpp"
#include "standard/opening.hpp"
#include "status/file_information.hpp"
#include "status/file_time.hpp"

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

namespace fl::filesystem {

namespace {

std::wstring form_of(upath const &p)
{
    if (p.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    return detail::make_filesystem_form(p);
}

BY_HANDLE_FILE_INFORMATION information_of(upath const &p)
{
    return detail::demand_file_information(form_of(p), p.native());
}

/// Opens what `p` leads to for a change. Throws as `file_size` does.
detail::file_handle open_to_change(std::wstring const &form, DWORD access, DWORD flags,
                                   upath const &p)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    auto [file, code] = detail::standard::opened_by([&] {
        return ::CreateFileW(form.c_str(), access, share, nullptr, OPEN_EXISTING, flags, nullptr);
    });
    if (file)
        return std::move(file);
    // the system tells of no right where the name is that of a directory, and of no name
    // where it is that of a volume
    bool const may_be_directory = code == ERROR_ACCESS_DENIED || code == ERROR_PATH_NOT_FOUND;
    if (may_be_directory && (access & FILE_WRITE_DATA) != 0) {
        std::error_code ec; // links followed: what one leads to that leads nowhere is no directory
        if (detail::standard::status(form, ec).type() == std::filesystem::file_type::directory)
            detail::throw_exception(FileIsDirectory(p.native()));
    }
    detail::throw_win32_exception(code, p.wstring());
}

template <typename Information>
void set_information(detail::file_handle const &file, FILE_INFO_BY_HANDLE_CLASS kind,
                     Information info, upath const &p)
{
    DWORD const code = detail::standard::code_of(
        [&] { return ::SetFileInformationByHandle(file.get(), kind, &info, sizeof info); });
    if (code != ERROR_SUCCESS)
        detail::throw_win32_exception(code, p.wstring());
}

/// The time for the system, which takes 0 for one that stays as it is, and whatever has the
/// sign set for something else.
LONGLONG ticks_of(file_time_type time)
{
    FILETIME const told = detail::to_filetime(time);
    std::uint64_t const ticks = detail::join_halves(told.dwHighDateTime, told.dwLowDateTime);
    if (ticks == 0 || ticks > static_cast<std::uint64_t>(INT64_MAX))
        detail::throw_invalid_argument("Time not valid");
    return static_cast<LONGLONG>(ticks);
}

} // namespace

std::uint64_t file_size(upath const &p)
{
    return detail::demand_size(information_of(p), p.native());
}

std::uint64_t file_size(std::u16string const &p)
{
    return file_size(upath(p));
}

std::uint64_t hard_link_count(upath const &p)
{
    return information_of(p).nNumberOfLinks;
}

std::uint64_t hard_link_count(std::u16string const &p)
{
    return hard_link_count(upath(p));
}

file_time_type last_write_time(upath const &p)
{
    return detail::to_file_time(information_of(p).ftLastWriteTime);
}

file_time_type last_write_time(std::u16string const &p)
{
    return last_write_time(upath(p));
}

void last_write_time(upath const &p, file_time_type time)
{
    std::wstring const form = form_of(p);
    FILE_BASIC_INFO changed = {}; // what is 0 stays as it is
    changed.LastWriteTime.QuadPart = ticks_of(time);
    detail::file_handle const file =
        open_to_change(form, FILE_WRITE_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS, p);
    set_information(file, FileBasicInfo, changed, p);
}

void last_write_time(std::u16string const &p, file_time_type time)
{
    last_write_time(upath(p), time);
}

void resize_file(upath const &p, std::uint64_t size)
{
    FILE_END_OF_FILE_INFO changed = {};
    changed.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
    detail::file_handle const file = open_to_change(form_of(p), FILE_WRITE_DATA, 0, p);
    set_information(file, FileEndOfFileInfo, changed, p);
}

void resize_file(std::u16string const &p, std::uint64_t size)
{
    resize_file(upath(p), size);
}

} // namespace fl::filesystem
