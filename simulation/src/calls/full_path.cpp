#include "full_path.hpp"

#include "calls/call.hpp"

#include <cwchar>

namespace fl::simulation {

namespace {

/// Points at the last element of what was handed over, or nowhere.
wchar_t *last_element(wchar_t *text)
{
    wchar_t *const separator = std::wcsrchr(text, L'\\');
    return separator == nullptr || separator[1] == L'\0' ? nullptr : separator + 1;
}

DWORD get_full_path_name(machine_state &machine, LPCWSTR name, DWORD room, LPWSTR buffer,
                         LPWSTR *file_part)
{
    if (auto const forced = machine.broken.full_path_name(room, buffer)) {
        if (*forced == 0)
            throw failure(GetLastError());
        return *forced;
    }
    std::u16string const full = full_path(from_wide(name), machine);
    DWORD const answer = hand_over(full, room, buffer);
    if (file_part != nullptr && answer == full.size())
        *file_part = full.starts_with(u"\\\\.\\") ? nullptr : last_element(buffer);
    return answer;
}

} // namespace

} // namespace fl::simulation

extern "C" DWORD GetFullPathNameW(LPCWSTR name, DWORD room, LPWSTR buffer, LPWSTR *file_part)
{
    using namespace fl::simulation;
    call const made{.function = "GetFullPathNameW", .text = name, .room = room};
    return perform(made, DWORD{0}, [&](machine_state &machine) {
        return get_full_path_name(machine, name, room, buffer, file_part);
    });
}
