#include "calls/current_directory.hpp"
#include "calls/call.hpp"

#include "full_path.hpp"
#include "lookup.hpp"

namespace fl::simulation {

namespace {

/// The longest current directory with the backslash that the system adds.
constexpr std::size_t longest_current_directory = MAX_PATH - 2;

} // namespace

void change_directory(machine_state &machine, std::u16string full)
{
    pathname path = parse_literal(full, machine);
    path.wants_directory = true;
    if (path.is_device())
        throw failure(ERROR_DIRECTORY);
    place const here = find_existing(path, machine, last_link::follow);
    if (!here.found->target->is_directory())
        throw failure(ERROR_DIRECTORY);
    if (here.found->is_delete_pending)
        throw failure(ERROR_ACCESS_DENIED);
    if (!full.ends_with(u'\\'))
        full += u'\\';
    machine.running.stand_in(here.disk, here.found);
    machine.running.current_directory = std::move(full);
}

std::u16string shown_current_directory(machine_state const &machine)
{
    std::u16string text = machine.running.current_directory;
    if (!text.ends_with(u":\\"))
        text.pop_back();
    return text;
}

} // namespace fl::simulation

extern "C" DWORD GetCurrentDirectoryW(DWORD room, LPWSTR buffer)
{
    using namespace fl::simulation;
    call const made{.function = "GetCurrentDirectoryW", .room = room};
    return perform(made, DWORD{0}, [&](machine_state &machine) {
        return hand_over(shown_current_directory(machine), room, buffer);
    });
}

extern "C" BOOL SetCurrentDirectoryW(LPCWSTR name)
{
    using namespace fl::simulation;
    return perform("SetCurrentDirectoryW", name, BOOL{FALSE}, [&](machine_state &machine) {
        std::u16string full = full_path(from_wide(name), machine);
        std::size_t const added = full.ends_with(u'\\') ? 0 : 1;
        bool const is_too_long = full.size() + added > longest_current_directory;
        if (is_too_long && !machine.takes_long_pathnames)
            throw failure(ERROR_FILENAME_EXCED_RANGE);
        change_directory(machine, std::move(full));
        return BOOL{TRUE};
    });
}
