#include "whole_file.hpp"

#include "opening.hpp"

namespace simulation {

std::string read_whole_file(machine_state &machine, std::u16string_view text)
{
    pathname const path = parse_pathname(text, machine);
    if (path.is_device())
        return {}; // it has no content
    terms how;
    how.access = GENERIC_READ;
    how.wanted = kind::file;
    how.last = last_link::follow;
    return open_existing(machine, path, how)->target().content.text();
}

void write_whole_file(machine_state &machine, std::u16string_view text, std::string_view content)
{
    pathname const path = parse_pathname(text, machine);
    if (path.is_device())
        return;
    place here = find_place(path, machine, last_link::follow);
    if (!here.found) {
        if (path.ends_in_separator)
            throw failure(ERROR_INVALID_NAME);
        check_creation(here);
        auto made = std::make_shared<node>(DWORD{FILE_ATTRIBUTE_ARCHIVE}, machine.now());
        here.found = node::add(here.parent, here.name, std::move(made), machine.now());
    }
    terms how;
    how.access = GENERIC_WRITE;
    how.share = FILE_SHARE_READ;
    how.wanted = kind::file;
    auto const file = open_found(here, path.ends_in_separator, how);
    file->target().content = byte_store(content);
    file->target().times.write = machine.now();
}

} // namespace simulation
