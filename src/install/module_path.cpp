#include <fl/filesystem/install_path.hpp>

#include "platform/code_units.hpp"

#include <windows.h>

#include <optional>

namespace fl::filesystem::detail {

namespace {

constexpr DWORD step = 1024; // in units, also the first room
constexpr DWORD most_room = 32767;

/// A module's pathname as far as `room` takes it.
struct module_name
{
    std::wstring text;
    bool is_cut = false;
};

/// None if there is no such module. A text that was cut is told by the last error alone: the
/// call answers the same for one that just fits.
std::optional<module_name> read_module_name(HMODULE module, DWORD room)
{
    std::wstring buffer(room, L'\0');
    DWORD const length = ::GetModuleFileNameW(module, buffer.data(), room);
    DWORD const code = ::GetLastError();
    if (length == 0)
        return std::nullopt;
    return module_name{buffer.substr(0, buffer.find(L'\0')), code != ERROR_SUCCESS};
}

std::wstring query_module_file_name(void *address)
{
    MEMORY_BASIC_INFORMATION info = {};
    ::VirtualQuery(address, &info, sizeof info); // a failure leaves the base null
    if (info.AllocationBase == nullptr)
        return {};
    HMODULE const module = static_cast<HMODULE>(info.AllocationBase);
    std::optional<module_name> const first = read_module_name(module, step);
    if (!first || !first->is_cut)
        return first.value_or(module_name()).text;
    for (DWORD room = 2 * step; room <= most_room; room += step) {
        std::optional<module_name> const whole = read_module_name(module, room);
        if (!whole)
            return {};
        if (!whole->is_cut)
            return whole->text;
    }
    return first->text;
}

} // namespace

std::u16string get_module_path_from_address(void *address)
{
    if (address == nullptr)
        return {};
    return narrow(query_module_file_name(address));
}

} // namespace fl::filesystem::detail
