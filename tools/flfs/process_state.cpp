#include "flfs/process_state.hpp"

#include <windows.h>

namespace flfs {

std::optional<std::u16string> environment_variable(std::u16string const &name)
{
    std::wstring const wide_name(name.begin(), name.end());
    std::wstring value;
    for (;;) {
        auto const room = static_cast<DWORD>(value.size());
        DWORD const length = ::GetEnvironmentVariableW(wide_name.c_str(), value.data(), room);
        if (length == 0)
            return std::nullopt; // an empty value is none, on Windows
        if (length < room) {
            value.resize(length);
            return std::u16string(value.begin(), value.end());
        }
        value.resize(length);
    }
}

} // namespace flfs
