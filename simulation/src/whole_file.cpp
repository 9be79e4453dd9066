#include "whole_file.hpp"

#include "failure.hpp"
#include "lookup.hpp"

namespace simulation {

namespace {

void check_is_file(pathname const &path, place const &here)
{
    bool const is_directory = !here.parent || (here.found && here.found->is_directory());
    if (path.ends_in_separator && !is_directory)
        throw failure(ERROR_INVALID_NAME);
    if (is_directory)
        throw failure(ERROR_ACCESS_DENIED);
}

} // namespace

std::string read_whole_file(machine_state &machine, std::u16string_view text)
{
    pathname const path = parse_pathname(text, machine);
    if (path.is_device())
        return {};
    place const here = find_existing(path);
    check_is_file(path, here);
    return here.found->content;
}

void write_whole_file(machine_state &machine, std::u16string_view text, std::string_view content)
{
    pathname const path = parse_pathname(text, machine);
    if (path.is_device())
        return;
    place here = find_place(path);
    check_is_file(path, here);
    if (here.found && (here.found->attributes() & FILE_ATTRIBUTE_READONLY) != 0)
        throw failure(ERROR_ACCESS_DENIED);
    if (!here.found) {
        if (here.parent->denied.contains(right::create_entries))
            throw failure(ERROR_ACCESS_DENIED);
        here.found = here.parent->add(here.name, FILE_ATTRIBUTE_ARCHIVE);
    }
    here.found->content = content;
}

} // namespace simulation
