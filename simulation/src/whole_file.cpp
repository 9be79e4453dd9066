#include "whole_file.hpp"

#include "opening.hpp"

#include <algorithm>
#include <cstdint>

namespace fl::simulation {

namespace {

/// Sparse files are larger than any memory. What parts of the system read is small.
constexpr std::uint64_t most_bytes_read = 1 << 20;

} // namespace

std::string read_whole_file(machine_state &machine, std::u16string_view text)
{
    pathname const path = parse_pathname(text, machine);
    if (path.is_device())
        return {}; // it has no content
    terms how;
    how.access = GENERIC_READ;
    how.wanted = kind::file;
    how.last = last_link::follow;
    auto const file = open_existing(machine, path, how);
    byte_store const &content = file->target().content;
    std::string bytes(static_cast<std::size_t>(std::min(content.size(), most_bytes_read)), '\0');
    content.read(0, bytes.data(), bytes.size());
    return bytes;
}

void write_whole_file(machine_state &machine, std::u16string_view text, std::string_view content)
{
    pathname const path = parse_pathname(text, machine);
    if (path.is_device())
        return;
    place here = find_place(path, machine, last_link::follow);
    if (!here.found) {
        here.found = create_entry(here, path.ends_in_separator, FILE_ATTRIBUTE_ARCHIVE);
    }
    terms how;
    how.access = GENERIC_WRITE;
    how.share = FILE_SHARE_READ;
    how.wanted = kind::file;
    auto const file = open_found(here, path.ends_in_separator, how);
    file->target().content = byte_store(content);
    file->target().times.write = machine.now();
}

} // namespace fl::simulation
