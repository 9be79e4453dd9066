#include "calls/call.hpp"

#include "full_path.hpp"
#include "lookup.hpp"
#include "reparse_data.hpp"

namespace fl::simulation {

namespace {

void store(std::uint64_t bytes, PULARGE_INTEGER where)
{
    if (where != nullptr)
        where->QuadPart = bytes;
}

/// The space around a directory. No text means the volume of the current one.
volume_space space_at(machine_state &machine, LPCWSTR directory)
{
    pathname path = parse_pathname(directory == nullptr ? u"\\" : from_wide(directory), machine);
    path.wants_directory = true;
    if (path.is_device())
        throw failure(ERROR_DIRECTORY);
    place const here = find_existing(path, machine, last_link::follow);
    if (!here.found->target->is_directory())
        throw failure(path.ends_in_separator ? ERROR_INVALID_NAME : ERROR_DIRECTORY);
    return here.disk->space;
}

/// The index behind the next backslash at or after `from`, or the size of the text.
std::size_t end_of_name(std::u16string_view text, std::size_t from)
{
    std::size_t const end = text.find(u'\\', from);
    return end == std::u16string_view::npos ? text.size() : end + 1;
}

/// The name that ends there, without the backslash.
std::u16string_view name_between(std::u16string_view text, std::size_t begin, std::size_t end)
{
    std::u16string_view const name = text.substr(begin, end - begin);
    return name.substr(0, name.find(u'\\'));
}

/// How much of a full pathname is the root of its drive or share.
std::size_t root_length(machine_state const &machine, std::u16string_view full)
{
    std::size_t begin = is_literal(full) || form_of(full) == path_form::device ? 4 : 0;
    bool const is_long_network = begin != 0 && upcase(full.substr(begin, 4)) == u"UNC\\";
    if (is_long_network || form_of(full) == path_form::unc) {
        begin = is_long_network ? begin + 4 : 2;
        return end_of_name(full, end_of_name(full, begin));
    }
    std::u16string const object = begin == 0 ? std::u16string() : upcase(full.substr(begin));
    if (object.starts_with(u"VOLUME{"))
        return end_of_name(full, begin);
    if (std::u16string_view const disks = u"GLOBALROOT\\DEVICE\\"; object.starts_with(disks))
        return end_of_name(full, begin + disks.size());
    if (!is_drive_at(full, begin))
        throw failure(ERROR_INVALID_NAME); // a device
    if (!machine.disks.find_drive(full[begin]))
        throw failure(ERROR_FILE_NOT_FOUND);
    return end_of_name(full, begin);
}

/// Whether another volume is shown at this place.
bool is_volume_mounted_at(std::u16string_view text, machine_state const &machine)
{
    try {
        place const here = find_place(parse_literal(text, machine), machine);
        if (!here.found || !here.found->target->reparse)
            return false;
        reparse_point const &point = *here.found->target->reparse;
        return point.tag == IO_REPARSE_TAG_MOUNT_POINT &&
               decode(point).target.starts_with(u"\\??\\Volume{");
    } catch (failure const &) {
        return false; // what isn't there is on the volume of what is
    }
}

std::u16string volume_path(machine_state &machine, std::u16string_view name)
{
    std::u16string const full = is_literal(name) ? std::u16string(name) : full_path(name, machine);
    std::size_t length = root_length(machine, full);
    pathname const parsed = parse_literal(full.substr(0, length), machine); // it has to be there
    if (parsed.is_raw_volume)
        throw failure(ERROR_INVALID_PARAMETER);
    auto here = parsed.disk->root;
    bool is_plain = true; // until the first link, which may lead anywhere
    for (std::size_t end = length; end < full.size() && here;) {
        std::size_t const begin = end;
        end = end_of_name(full, begin);
        if (is_plain) {
            here = here->target->find(name_between(full, begin, end));
            is_plain = here && !here->target->reparse;
        }
        if (!is_plain && is_volume_mounted_at(full.substr(0, end), machine))
            length = end;
    }
    std::u16string const root = full.substr(0, length);
    return root.ends_with(u'\\') ? root : root + u'\\';
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

} // namespace fl::simulation

extern "C" BOOL GetDiskFreeSpaceExW(LPCWSTR directory, PULARGE_INTEGER available,
                                    PULARGE_INTEGER capacity, PULARGE_INTEGER free)
{
    using namespace fl::simulation;
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
    using namespace fl::simulation;
    call const made{.function = "GetVolumePathNameW", .text = name, .room = room};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        get_volume_path_name(machine, name, buffer, room);
        return BOOL{TRUE};
    });
}
