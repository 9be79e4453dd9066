#include "calls/call.hpp"

#include "full_path.hpp"
#include "lookup.hpp"

namespace simulation {

namespace {

void store(std::uint64_t bytes, PULARGE_INTEGER where)
{
    if (where != nullptr)
        where->QuadPart = bytes;
}

/// The space around a directory. No text means the volume of the current one.
volume_space space_at(machine_state &machine, LPCWSTR directory)
{
    pathname const path =
        parse_pathname(directory == nullptr ? u"\\" : from_wide(directory), machine);
    if (path.is_device())
        throw failure(ERROR_DIRECTORY);
    place const here = find_existing(path);
    if (!here.found->is_directory())
        throw failure(path.ends_in_separator ? ERROR_INVALID_NAME : ERROR_DIRECTORY);
    return machine.spaces.find(path.root);
}

/// Takes the text up to the end of the next name, with the backslash behind it.
std::size_t end_of_name(std::u16string_view text, std::size_t from)
{
    std::size_t const end = text.find(u'\\', from);
    return end == std::u16string_view::npos ? text.size() : end + 1;
}

/// How much of a full pathname is the root of its volume. No volume is mounted in a
/// directory here.
std::size_t volume_length(machine_state const &machine, std::u16string_view full)
{
    std::size_t begin = is_literal(full) || form_of(full) == path_form::device ? 4 : 0;
    bool const is_long_network = begin != 0 && upcase(full.substr(begin, 4)) == u"UNC\\";
    if (is_long_network || form_of(full) == path_form::unc) {
        begin = is_long_network ? begin + 4 : 2;
        return end_of_name(full, end_of_name(full, begin));
    }
    if (!is_drive_at(full, begin))
        throw failure(ERROR_INVALID_NAME); // a device
    if (!machine.disks.find_drive(full[begin]))
        throw failure(ERROR_FILE_NOT_FOUND);
    return end_of_name(full, begin);
}

std::u16string volume_path(machine_state &machine, std::u16string_view name)
{
    std::u16string const full = is_literal(name) ? std::u16string(name) : full_path(name, machine);
    std::u16string root = full.substr(0, volume_length(machine, full));
    if (!root.ends_with(u'\\'))
        root += u'\\';
    parse_literal(root, machine); // it has to be there; what is below it hasn't
    return root;
}

void get_volume_path_name(machine_state &machine, LPCWSTR name, LPWSTR buffer, DWORD room)
{
    std::u16string const text = from_wide(name);
    if (text.empty() || buffer == nullptr || room == 0)
        throw failure(ERROR_INVALID_PARAMETER);
    std::u16string const root = volume_path(machine, text);
    if (root.size() >= room)
        throw failure(ERROR_FILENAME_EXCED_RANGE);
    hand_over(root, room, buffer);
}

} // namespace

} // namespace simulation

extern "C" BOOL GetDiskFreeSpaceExW(LPCWSTR directory, PULARGE_INTEGER available,
                                    PULARGE_INTEGER capacity, PULARGE_INTEGER free)
{
    using namespace simulation;
    return perform("GetDiskFreeSpaceExW", directory, BOOL{FALSE}, [&](machine_state &machine) {
        volume_space const space = space_at(machine, directory);
        store(space.available, available);
        store(space.capacity, capacity);
        store(space.free, free);
        return BOOL{TRUE};
    });
}

extern "C" BOOL GetVolumePathNameW(LPCWSTR name, LPWSTR buffer, DWORD room)
{
    using namespace simulation;
    return perform("GetVolumePathNameW", name, BOOL{FALSE}, [&](machine_state &machine) {
        get_volume_path_name(machine, name, buffer, room);
        return BOOL{TRUE};
    });
}
