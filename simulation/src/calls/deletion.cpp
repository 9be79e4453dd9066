#include "calls/call.hpp"

#include "opening.hpp"

namespace fl::simulation {

namespace {

/// Since Windows 10 version 1903 names on the machine's own disks are deleted as POSIX has it.
/// Servers aren't asked for that.
bool frees_names_at_once(machine_state const &machine, volume const &disk)
{
    return machine.runs >= edition::windows_10_22h2 && !disk.is_remote;
}

/// Both calls open what they delete and let it go at once. Where names aren't free at once,
/// the name stays while others have it open, and nobody new gets in.
void delete_name(machine_state &machine, LPCWSTR name, kind wanted)
{
    terms how;
    how.access = DELETE | FILE_READ_ATTRIBUTES;
    how.wanted = wanted;
    auto const file = open_existing(machine, from_wide(name), how);
    mark_for_deletion(*file);
    file->is_posix_deletion = frees_names_at_once(machine, *file->disk);
}

} // namespace

} // namespace fl::simulation

extern "C" BOOL DeleteFileW(LPCWSTR name)
{
    using namespace fl::simulation;
    return perform("DeleteFileW", name, BOOL{FALSE}, [&](machine_state &machine) {
        delete_name(machine, name, kind::file);
        return BOOL{TRUE};
    });
}

extern "C" BOOL RemoveDirectoryW(LPCWSTR name)
{
    using namespace fl::simulation;
    return perform("RemoveDirectoryW", name, BOOL{FALSE}, [&](machine_state &machine) {
        delete_name(machine, name, kind::directory);
        return BOOL{TRUE};
    });
}
