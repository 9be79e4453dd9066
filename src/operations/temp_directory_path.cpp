#include <fl/filesystem/queries.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/absolute.hpp"
#include "failure/throw.hpp"
#include "platform/code_units.hpp"
#include "platform/filled_buffer.hpp"

#include <windows.h>

#include <optional>

namespace fl::filesystem {

namespace {

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

} // namespace

upath temp_directory_path()
{
    upath folder = detail::make_absolute(upath(detail::narrow(temporary_folder())));
    file_status const found = status(folder);
    if (!file_status::exists(found))
        detail::throw_exception(PathNotFound(folder.native()));
    if (!file_status::is_directory(found))
        detail::throw_exception(NotDirectoryError(folder.native()));
    return folder;
}

} // namespace fl::filesystem
