#include "calls/copying.hpp"
#include "calls/call.hpp"

#include "opening.hpp"

namespace fl::simulation {

namespace {

/// The most names that NTFS gives one file.
constexpr DWORD most_hard_links = 1024;

/// A file that is there gives way unless it is protected by what it is.
void check_replaceable(node const &there, node const &source, bool fails_if_there)
{
    if (fails_if_there)
        throw failure(ERROR_FILE_EXISTS);
    constexpr DWORD protecting = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
    if (there.is_directory() || (there.attributes() & protecting) != 0)
        throw failure(ERROR_ACCESS_DENIED);
    // the source is open, and not for anybody's writing
    if (&there == &source)
        throw failure(ERROR_SHARING_VIOLATION);
}

/// What the copy is written to.
std::shared_ptr<open_file> open_target(machine_state &machine, pathname const &path,
                                       node const &source, bool fails_if_there)
{
    if (path.is_device())
        throw failure(ERROR_ACCESS_DENIED);
    place here = find_place(path, machine, last_link::follow);
    check_separator(here, path.ends_in_separator);
    if (!here.found) {
        // it would be a file behind a link to a directory
        if (here.is_behind_directory_link)
            throw failure(ERROR_ACCESS_DENIED);
        here.found = create_entry(here, path.ends_in_separator, FILE_ATTRIBUTE_ARCHIVE);
    } else {
        check_replaceable(*here.found->target, source, fails_if_there);
    }
    terms how;
    how.access = GENERIC_WRITE | FILE_READ_ATTRIBUTES;
    how.share = FILE_SHARE_READ | FILE_SHARE_WRITE;
    how.wanted = kind::file;
    return open_found(here, path.ends_in_separator, how);
}

void create_hard_link(machine_state &machine, LPCWSTR name, LPCWSTR existing)
{
    // both names are read before either is looked for
    if (from_wide(name).find_first_not_of(u' ') == std::u16string::npos)
        throw failure(ERROR_PATH_NOT_FOUND);
    terms how;
    how.access = FILE_WRITE_ATTRIBUTES;
    auto const source = open_existing(machine, from_wide(existing), how);
    pathname const path = parse_pathname(from_wide(name), machine);
    if (path.is_device())
        throw failure(ERROR_ALREADY_EXISTS);
    place const here = find_new_place(path, machine);
    // the system has found the place of the new name before the disk is asked
    auto const directory = here.is_root() ? nullptr : open_directory_of(here);
    if (source->target().is_directory())
        throw failure(ERROR_ACCESS_DENIED);
    if (here.disk != source->disk)
        throw failure(ERROR_NOT_SAME_DEVICE);
    if (path.ends_in_separator && !here.is_root())
        throw failure(ERROR_INVALID_NAME);
    if (here.found)
        throw collision(*here.found, ERROR_ALREADY_EXISTS);
    if (source->target().link_count == most_hard_links)
        throw failure(ERROR_TOO_MANY_LINKS);
    node::add(here.parent, here.name, source->name->target, machine.now());
}

} // namespace

void copy_file(machine_state &machine, std::u16string_view from, std::u16string_view to,
               bool fails_if_there, last_link source_link)
{
    terms reading;
    reading.access = FILE_GENERIC_READ;
    reading.wanted = kind::file;
    reading.last = source_link;
    auto const source = open_existing(machine, from, reading);
    auto const target =
        open_target(machine, parse_pathname(to, machine), source->target(), fails_if_there);
    node const &read = source->target();
    node &written = target->target();
    written.content = read.content;
    if (source_link == last_link::keep)
        written.reparse = read.reparse; // a link stays one
    written.set_attributes((read.attributes() & settable_attributes) | FILE_ATTRIBUTE_ARCHIVE);
    written.times.write = read.times.write;
}

} // namespace fl::simulation

extern "C" BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL fail_if_there)
{
    using namespace fl::simulation;
    call const made{.function = "CopyFileW",
                    .text = from,
                    .second_text = to,
                    .flags = static_cast<DWORD>(fail_if_there)};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        copy_file(machine, from_wide(from), from_wide(to), fail_if_there != FALSE);
        return BOOL{TRUE};
    });
}

extern "C" BOOL CreateHardLinkW(LPCWSTR name, LPCWSTR existing, LPSECURITY_ATTRIBUTES)
{
    using namespace fl::simulation;
    call const made{.function = "CreateHardLinkW", .text = name, .second_text = existing};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        create_hard_link(machine, name, existing);
        return BOOL{TRUE};
    });
}
