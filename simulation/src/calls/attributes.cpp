#include "calls/attributes.hpp"
#include "calls/call.hpp"

#include "opening.hpp"

namespace fl::simulation {

namespace {

/// The file or directory, or null for a device.
std::shared_ptr<open_file> open_for_attributes(machine_state &machine, LPCWSTR name,
                                               DWORD access = FILE_READ_ATTRIBUTES)
{
    pathname const path = parse_pathname(from_wide(name), machine);
    return path.is_device() ? nullptr : open_existing(machine, path, terms{.access = access});
}

WIN32_FILE_ATTRIBUTE_DATA data_of(open_file const *file)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (file == nullptr) {
        // the system answers for its legacy devices without asking them
        data.dwFileAttributes = FILE_ATTRIBUTE_ARCHIVE;
        return data;
    }
    node const &target = file->target();
    fill_record(data, target.attributes(), target.times, target.content.size());
    return data;
}

void set_attributes(machine_state &machine, LPCWSTR name, DWORD attributes)
{
    auto const file = open_for_attributes(machine, name, FILE_WRITE_ATTRIBUTES);
    if (!file)
        throw failure(ERROR_INVALID_FUNCTION);
    change_attributes(*file, attributes);
}

} // namespace

FILETIME as_file_time(std::uint64_t ticks)
{
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

void change_attributes(open_file const &file, DWORD attributes)
{
    node &target = file.target();
    if ((attributes & FILE_ATTRIBUTE_TEMPORARY) != 0 && target.is_directory())
        throw failure(ERROR_INVALID_PARAMETER);
    DWORD const kept = target.attributes() & ~settable_attributes;
    target.set_attributes(kept | (attributes & settable_attributes));
}

} // namespace fl::simulation

extern "C" DWORD GetFileAttributesW(LPCWSTR name)
{
    using namespace fl::simulation;
    return perform("GetFileAttributesW", name, INVALID_FILE_ATTRIBUTES,
                   [&](machine_state &machine) {
                       return data_of(open_for_attributes(machine, name).get()).dwFileAttributes;
                   });
}

extern "C" BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    using namespace fl::simulation;
    return perform("GetFileAttributesExW", name, BOOL{FALSE}, [&](machine_state &machine) {
        if (level != GetFileExInfoStandard)
            throw failure(ERROR_INVALID_PARAMETER);
        *static_cast<WIN32_FILE_ATTRIBUTE_DATA *>(data) =
            data_of(open_for_attributes(machine, name).get());
        return BOOL{TRUE};
    });
}

extern "C" BOOL SetFileAttributesW(LPCWSTR name, DWORD attributes)
{
    using namespace fl::simulation;
    call const made{.function = "SetFileAttributesW", .text = name, .flags = attributes};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        set_attributes(machine, name, attributes);
        return BOOL{TRUE};
    });
}
