#include "pathname/full_path_name.hpp"

#include "failure/win32_error.hpp"
#include "platform/filled_buffer.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

std::wstring full_path_name(std::wstring const &path)
{
    DWORD code = ERROR_SUCCESS;
    auto const full = filled_buffer(1024, growth::once, [&](wchar_t *buffer, DWORD room) {
        DWORD const answer = ::GetFullPathNameW(path.c_str(), room, buffer, nullptr);
        code = ::GetLastError();
        return answer;
    });
    if (!full)
        throw_win32_exception(code, path);
    return *full;
}

} // namespace fl::filesystem::detail
