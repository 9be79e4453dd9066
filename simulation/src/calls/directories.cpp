#include "calls/call.hpp"

#include "full_path.hpp"
#include "opening.hpp"

namespace fl::simulation {

namespace {

/// From this length on, a directory could hold no file with an 8.3 name: 12 units
/// are kept for it.
constexpr std::size_t too_long_for_a_directory = MAX_PATH - 12;

void check_directory_length(machine_state &machine, std::u16string_view text)
{
    bool const is_blank = text.find_first_not_of(u' ') == std::u16string_view::npos;
    if (is_blank || is_literal(text) || machine.takes_long_pathnames)
        return;
    if (full_path(text, machine).size() >= too_long_for_a_directory)
        throw failure(ERROR_FILENAME_EXCED_RANGE);
}

void create_directory(machine_state &machine, std::u16string_view text)
{
    check_directory_length(machine, text);
    pathname path = parse_pathname(text, machine);
    path.wants_directory = true;
    if (path.is_device())
        throw failure(ERROR_DIRECTORY);
    place const here = find_place(path, machine);
    // Nobody makes the root of a drive. A share is some directory of its server.
    if (here.is_root() && !here.disk->is_remote)
        throw failure(ERROR_ACCESS_DENIED);
    if (here.found)
        throw collision(*here.found, ERROR_ALREADY_EXISTS);
    create_entry(here, path.ends_in_separator, FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

} // namespace fl::simulation

extern "C" BOOL CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES)
{
    using namespace fl::simulation;
    return perform("CreateDirectoryW", name, BOOL{FALSE}, [&](machine_state &machine) {
        create_directory(machine, from_wide(name));
        return BOOL{TRUE};
    });
}
