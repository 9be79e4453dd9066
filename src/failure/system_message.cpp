#include <fl/filesystem/text.hpp>

#include "platform/code_units.hpp"

#include <windows.h>

#include <string>
#include <string_view>

namespace fl::filesystem {

std::u16string system_message(unsigned int code)
{
    // one line; and what stands for a name in a text stays as it is
    constexpr DWORD flags =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    constexpr DWORD enough_for_most = 512;
    constexpr DWORD most = 32767; // more than 64 KiB are refused
    for (DWORD const room : {enough_for_most, most}) {
        std::wstring buffer(room, L'\0');
        DWORD const size = ::FormatMessageW(flags, nullptr, code, 0, buffer.data(), room, nullptr);
        if (size == 0 && ::GetLastError() == ERROR_INSUFFICIENT_BUFFER)
            continue;
        std::wstring_view const text(buffer.data(), size);
        return detail::narrow(text.substr(0, text.find_last_not_of(L" \r\n") + 1));
    }
    return {};
}

} // namespace fl::filesystem
