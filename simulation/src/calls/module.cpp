#include "calls/call.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

/// Behind it, addresses are the system's own.
constexpr std::uintptr_t end_of_user_addresses = 0x7FFFFFFF0000;

constexpr std::uintptr_t page = 4096;

std::uintptr_t number_of(void const *pointer)
{
    return reinterpret_cast<std::uintptr_t>(pointer);
}

MEMORY_BASIC_INFORMATION describe(memory_region const &region, std::uintptr_t address)
{
    MEMORY_BASIC_INFORMATION info{};
    std::uintptr_t const begin = address / page * page;
    info.BaseAddress = reinterpret_cast<void *>(begin);
    if (region.base == 0) {
        info.RegionSize = region.size;
        info.State = MEM_FREE;
        info.Protect = PAGE_NOACCESS;
        return info;
    }
    info.AllocationBase = reinterpret_cast<void *>(region.base);
    info.RegionSize = region.base + region.size - begin;
    info.State = MEM_COMMIT;
    bool const is_module = !region.module.empty();
    info.Type = is_module ? MEM_IMAGE : MEM_PRIVATE;
    info.AllocationProtect = is_module ? PAGE_EXECUTE_WRITECOPY : PAGE_READWRITE;
    info.Protect = is_module ? PAGE_EXECUTE_READ : PAGE_READWRITE;
    return info;
}

SIZE_T query(machine_state &machine, std::uintptr_t address, PMEMORY_BASIC_INFORMATION info,
             SIZE_T size)
{
    if (size < sizeof *info)
        throw failure(ERROR_BAD_LENGTH);
    if (address >= end_of_user_addresses)
        throw failure(ERROR_INVALID_PARAMETER);
    *info = describe(machine.memory.find(address), address);
    return sizeof *info;
}

/// Cuts a text that doesn't fit, and then answers with the room.
DWORD hand_over_cut(std::u16string_view text, DWORD room, LPWSTR buffer)
{
    if (text.size() < room)
        return hand_over(text, room, buffer);
    if (room != 0)
        *std::copy_n(text.begin(), room - 1, buffer) = L'\0';
    return room;
}

} // namespace

} // namespace fl::simulation

extern "C" SIZE_T VirtualQuery(LPCVOID address, PMEMORY_BASIC_INFORMATION info, SIZE_T size)
{
    using namespace fl::simulation;
    call const made{.function = "VirtualQuery", .room = size};
    return perform(made, SIZE_T{0}, [&](machine_state &machine) {
        return query(machine, number_of(address), info, size);
    });
}

extern "C" DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD room)
{
    using namespace fl::simulation;
    call const made{.function = "GetModuleFileNameW", .room = room};
    return perform(made, DWORD{0}, [&](machine_state &machine, DWORD &left_behind) {
        auto const pathname = machine.memory.module_at(number_of(module));
        if (!pathname)
            throw failure(ERROR_MOD_NOT_FOUND);
        DWORD const answer = hand_over_cut(*pathname, room, buffer);
        // callers tell a cut text from a whole one by the last error: it is set in each case
        left_behind = answer < room ? ERROR_SUCCESS : ERROR_INSUFFICIENT_BUFFER;
        return answer;
    });
}
