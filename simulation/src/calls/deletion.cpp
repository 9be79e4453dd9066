#include "calls/call.hpp"

#include "opening.hpp"

namespace simulation {

namespace {

/// Both calls open what they delete and let it go at once. While others have it open,
/// the name stays and nobody new gets in.
void delete_name(machine_state &machine, LPCWSTR name, kind wanted)
{
    terms how;
    how.access = DELETE | FILE_READ_ATTRIBUTES;
    how.wanted = wanted;
    auto const file = open_existing(machine, from_wide(name), how);
    mark_for_deletion(*file);
}

} // namespace

} // namespace simulation

extern "C" BOOL DeleteFileW(LPCWSTR name)
{
    using namespace simulation;
    return perform("DeleteFileW", name, BOOL{FALSE}, [&](machine_state &machine) {
        delete_name(machine, name, kind::file);
        return BOOL{TRUE};
    });
}

extern "C" BOOL RemoveDirectoryW(LPCWSTR name)
{
    using namespace simulation;
    return perform("RemoveDirectoryW", name, BOOL{FALSE}, [&](machine_state &machine) {
        delete_name(machine, name, kind::directory);
        return BOOL{TRUE};
    });
}
