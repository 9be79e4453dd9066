#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/windows.hpp>

#include "failure/win32_error.hpp"
#include "platform/code_units.hpp"

#include <windows.h>

#include <winnetwk.h>

#include <cerrno>
#include <optional>
#include <vector>

namespace fl::filesystem {

namespace {

/// Room for a record with the text behind it, aligned for the record.
std::vector<UNIVERSAL_NAME_INFOW> room_of(DWORD bytes)
{
    return std::vector<UNIVERSAL_NAME_INFOW>(bytes / sizeof(UNIVERSAL_NAME_INFOW) + 1);
}

/// The universal name of `form`, which takes `bytes`. Empty if it is there no longer.
std::optional<std::wstring> read_universal_name(std::wstring const &form, DWORD bytes)
{
    std::vector<UNIVERSAL_NAME_INFOW> room = room_of(bytes);
    DWORD const code =
        ::WNetGetUniversalNameW(form.c_str(), UNIVERSAL_NAME_INFO_LEVEL, room.data(), &bytes);
    // a provider may leave anything in the room when it fails, and no name when it doesn't
    if (code != NO_ERROR || room.front().lpUniversalName == nullptr)
        return std::nullopt;
    return room.front().lpUniversalName;
}

} // namespace

std::u16string get_unc_path(std::u16string const &p, bool tolerant)
{
    std::wstring const form = detail::windows::make_native_access_form_bridge(p);
    UNIVERSAL_NAME_INFOW small_room = {};
    DWORD bytes = 0; // none of it, so that a network pathname tells what it needs
    errno = 0;
    DWORD const code =
        ::WNetGetUniversalNameW(form.c_str(), UNIVERSAL_NAME_INFO_LEVEL, &small_room, &bytes);
    if (code == ERROR_MORE_DATA)
        return detail::narrow(read_universal_name(form, bytes).value_or(form));
    // the code is that of the C library, which providers don't set: callers know it as 0
    if (!tolerant)
        detail::throw_win32_exception(static_cast<unsigned int>(errno), form, std::wstring());
    return detail::narrow(form);
}

upath get_unc_path(upath const &p, bool tolerant)
{
    return upath(get_unc_path(p.native(), tolerant));
}

} // namespace fl::filesystem
