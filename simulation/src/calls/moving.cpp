#include "calls/call.hpp"
#include "calls/copying.hpp"

#include "opening.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

/// Whether `place` is the directory or anywhere below it.
bool is_below(std::shared_ptr<node> place, node const &directory)
{
    while (place && place.get() != &directory) {
        auto const own = place->own_entry.lock();
        place = own ? own->parent.lock() : nullptr;
    }
    return place != nullptr;
}

/// Whether anything below a directory is open, which keeps it where it is.
bool holds_open_files(volume const &disk, node const &directory)
{
    return std::any_of(disk.open_files.begin(), disk.open_files.end(), [&](open_file const *file) {
        return is_below(file->name->parent.lock(), directory);
    });
}

/// A directory can't go into itself. Right below, its own opening has been in the way before.
void check_no_loop(node const &moved, place const &to)
{
    if (moved.is_directory() && is_below(to.parent, moved))
        throw failure(ERROR_ACCESS_DENIED);
}

/// What is replaced may be another name of the same file. Then that name stays, and the
/// file is no obstacle to itself.
void check_replacement(place const &to, node const &moved, DWORD flags)
{
    if ((flags & MOVEFILE_REPLACE_EXISTING) == 0)
        throw collision(*to.found, ERROR_ALREADY_EXISTS);
    if (to.found->target.get() == &moved)
        return;
    node const &replaced = *to.found->target;
    bool const is_held = !replaced.open_files.empty() || to.found->is_delete_pending;
    if (replaced.is_directory() || replaced.is_read_only() || is_held ||
        replaced.denied.contains(right::remove))
        throw failure(ERROR_ACCESS_DENIED);
}

/// Onto another volume a file goes as a copy.
void move_across(machine_state &machine, std::shared_ptr<open_file> const &source, LPCWSTR from,
                 LPCWSTR to, DWORD flags)
{
    if ((flags & MOVEFILE_COPY_ALLOWED) == 0)
        throw failure(ERROR_NOT_SAME_DEVICE);
    if (source->target().is_directory())
        throw failure(ERROR_ACCESS_DENIED);
    bool const fails_if_there = (flags & MOVEFILE_REPLACE_EXISTING) == 0;
    copy_file(machine, from_wide(from), from_wide(to), fails_if_there, last_link::keep);
    mark_for_deletion(*source, true);
}

void move_within(machine_state &machine, open_file const &source, place const &to, DWORD flags)
{
    bool const is_itself = to.found == source.name;
    node &moved = source.target();
    auto const directory = open_directory_of(to);
    check_no_loop(moved, to);
    if (to.found && !is_itself)
        check_replacement(to, moved, flags);
    if (moved.is_directory() && holds_open_files(*source.disk, moved))
        throw failure(ERROR_ACCESS_DENIED);
    node::move(source.name, to.parent, to.name, machine.now());
}

void move_file(machine_state &machine, LPCWSTR from, LPCWSTR to, DWORD flags)
{
    terms how;
    how.access = DELETE | FILE_READ_ATTRIBUTES;
    auto const source = open_existing(machine, from_wide(from), how);
    pathname const target_path = parse_pathname(from_wide(to), machine);
    if (target_path.is_device())
        throw failure(ERROR_ALREADY_EXISTS);
    place const target = find_new_place(target_path, machine);
    if (target.is_root() || source->name == source->disk->root)
        throw failure(ERROR_ACCESS_DENIED);
    if (target.disk == source->disk)
        move_within(machine, *source, target, flags);
    else
        move_across(machine, source, from, to, flags);
}

} // namespace

} // namespace fl::simulation

extern "C" BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags)
{
    using namespace fl::simulation;
    call const made{.function = "MoveFileExW", .text = from, .second_text = to, .flags = flags};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        move_file(machine, from, to, flags);
        return BOOL{TRUE};
    });
}
