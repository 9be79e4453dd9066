#include "calls/call.hpp"

#include "lookup.hpp"

namespace simulation {

namespace {

DWORD attributes_of(machine_state &machine, std::u16string_view text)
{
    pathname const path = parse_pathname(text, machine);
    // the system answers for its legacy devices without asking them
    if (path.is_device())
        return FILE_ATTRIBUTE_ARCHIVE;
    place const here = find_existing(path);
    if (path.ends_in_separator && !here.found->is_directory())
        throw failure(ERROR_INVALID_NAME);
    return here.found->attributes();
}

} // namespace

} // namespace simulation

extern "C" DWORD GetFileAttributesW(LPCWSTR name)
{
    using namespace simulation;
    return perform("GetFileAttributesW", name, INVALID_FILE_ATTRIBUTES,
                   [&](machine_state &machine) { return attributes_of(machine, from_wide(name)); });
}
