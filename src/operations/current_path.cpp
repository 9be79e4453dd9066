#include <fl/filesystem/operations.hpp>

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "platform/code_units.hpp"
#include "platform/filled_buffer.hpp"
#include "standard/filesystem.hpp"

#include <windows.h>

#include <filesystem>
#include <mutex>
#include <type_traits>

namespace fl::filesystem {

namespace {

/// Keeps the current directory and the variable that goes with it from being changed by
/// two threads at odds.
std::mutex current_path_mutex;

/// Where the standard's path has the system's text it takes any; elsewhere it converts, from
/// `char16_t` what `wchar_t` there doesn't mean.
using path_unit = std::conditional_t<std::is_same_v<std::filesystem::path::value_type, wchar_t>,
                                     wchar_t, char16_t>;

/// Tells `=X:` where drive X: stands, which the system doesn't do by itself: pathnames such
/// as `X:name` and programs that are started go by it.
void update_drive_variable(std::wstring const &path)
{
    std::error_code ec;
    std::wstring const full = detail::standard::absolute(path, ec);
    if (ec)
        detail::throw_exception(std::filesystem::filesystem_error(
            "absolute", detail::copy_units<path_unit, wchar_t>(path), ec));
    if (full.starts_with(L"\\\\")) // a server has no drive
        return;
    std::wstring const name = L"=" + full.substr(0, 2);
    if (::SetEnvironmentVariableW(name.c_str(), full.c_str()))
        return;
    DWORD const code = ::GetLastError();
    detail::throw_win32_exception(code, path);
}

} // namespace

std::u16string get_current_path()
{
    DWORD code = ERROR_SUCCESS;
    auto const path =
        detail::filled_buffer(260, detail::growth::until_it_fits, [&](wchar_t *buffer, DWORD room) {
            DWORD const answer = ::GetCurrentDirectoryW(room, buffer);
            code = ::GetLastError(); // 0 if the system tells none
            return answer;
        });
    if (!path)
        detail::throw_win32_exception(code, std::wstring());
    return detail::narrow(*path);
}

bool change_current_path(upath const &p)
{
    if (p.empty())
        return false;
    std::lock_guard const lock(current_path_mutex);
    std::error_code ec;
    detail::standard::current_path(detail::make_filesystem_form(p), ec);
    detail::throw_on_filesystem_error(ec, p);
    update_drive_variable(p.wstring());
    return true;
}

bool change_current_path(std::u16string const &p)
{
    return change_current_path(upath(p));
}

} // namespace fl::filesystem
