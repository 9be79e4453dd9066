// The parts of a machine about its program, COM and the kinds of volumes.
#include <fl/simulation/machine.hpp>

#include "failure.hpp"
#include "lookup.hpp"
#include "machine_state.hpp"
#include "names.hpp"
#include "shell_link_file.hpp"

#include <stdexcept>

namespace fl::simulation {

building &building::forget_universal_names()
{
    std::lock_guard const lock(machine_mutex());
    state_->knows_universal_names = false;
    return *this;
}

building &building::map_drive(char16_t letter, std::u16string_view server,
                              std::u16string_view share)
{
    std::lock_guard const lock(machine_mutex());
    bool is_share_there = false;
    bool is_letter_free = is_letter(letter);
    try {
        is_share_there = state_->disks.find_share(server, share) != nullptr;
        is_letter_free = is_letter_free && !state_->disks.find_drive(letter);
    } catch (failure const &) {
        is_letter_free = false;
    }
    if (!is_share_there || !is_letter_free)
        throw std::invalid_argument("a mapped drive is a free letter for a share that is there");
    state_->disks.map_drive(letter, server, share);
    return *this;
}

building &building::set_volume_space(std::u16string_view root, std::uint64_t capacity,
                                     std::uint64_t free, std::uint64_t available)
{
    std::lock_guard const lock(machine_mutex());
    try {
        pathname const path = parse_literal(root, *state_);
        if (path.is_device() || path.is_raw_volume || !path.elements.empty())
            throw failure(ERROR_INVALID_NAME);
        path.disk->space = {capacity, free, available};
    } catch (failure const &) {
        throw std::invalid_argument("there is no volume with this root");
    }
    return *this;
}

building &building::set_program_pathname(std::u16string_view pathname)
{
    std::lock_guard const lock(machine_mutex());
    state_->memory.program = pathname;
    return *this;
}

building &building::load_module(void const *base, std::size_t size, std::u16string_view pathname)
{
    std::lock_guard const lock(machine_mutex());
    if (base == nullptr || size == 0 || pathname.empty())
        throw std::invalid_argument("a module has an address, a size and a file");
    state_->memory.add({reinterpret_cast<std::uintptr_t>(base), size, std::u16string(pathname)});
    return *this;
}

building &building::reserve_memory(void const *base, std::size_t size)
{
    std::lock_guard const lock(machine_mutex());
    if (base == nullptr || size == 0)
        throw std::invalid_argument("memory has an address and a size");
    state_->memory.add({reinterpret_cast<std::uintptr_t>(base), size, {}});
    return *this;
}

building &building::add_shortcut(std::u16string_view path, std::u16string_view target)
{
    return add_file(path, write_shell_link(target));
}

std::u16string looking::shortcut_target(std::u16string_view path) const
{
    try {
        return read_shell_link(content(path));
    } catch (failure const &) {
        throw std::invalid_argument("this is no shortcut file");
    }
}

int looking::live_interfaces() const
{
    return state_->com.interfaces->live;
}

int looking::com_apartments() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->com.entered_here();
}

int looking::all_com_apartments() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->com.entered();
}

int looking::orphaned_interfaces() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->com.orphans();
}

} // namespace fl::simulation
