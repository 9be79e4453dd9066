#include "calls/call.hpp"

#include <algorithm>

namespace simulation {

DWORD hand_over(std::u16string_view text, DWORD room, LPWSTR buffer)
{
    DWORD const length = static_cast<DWORD>(text.size());
    if (buffer == nullptr || length >= room)
        return length + 1;
    wchar_t *const end = std::copy(text.begin(), text.end(), buffer);
    *end = L'\0';
    std::fill(end + 1, buffer + room, buffer_junk);
    return length;
}

} // namespace simulation
