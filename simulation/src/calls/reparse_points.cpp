#include "calls/call.hpp"

#include "handles.hpp"
#include "reparse_data.hpp"

#include <algorithm>
#include <winioctl.h>

namespace fl::simulation {

namespace {

constexpr std::size_t header_size = reparse_header_size;

std::string as_bytes(reparse_point const &point)
{
    std::string bytes;
    bool const has_maker = !is_of_microsoft(point.tag);
    std::size_t const ahead = has_maker ? maker_size : 0;
    std::size_t const length = point.data.size() - std::min(point.data.size(), ahead);
    append_number(bytes, point.tag, 4);
    append_number(bytes, length, 2);
    append_number(bytes, 0, 2);
    return bytes + point.data;
}

/// Fails as the system does with what it can't read; unknown tags may have any bytes.
reparse_point as_point(std::string_view bytes)
{
    if (bytes.size() < header_size || bytes.size() > MAXIMUM_REPARSE_DATA_BUFFER_SIZE)
        throw failure(ERROR_INVALID_REPARSE_DATA);
    DWORD const tag = number_at(bytes, 0, 4);
    std::size_t const maker = is_of_microsoft(tag) ? 0 : maker_size;
    if (number_at(bytes, 4, 2) + header_size + maker != bytes.size())
        throw failure(ERROR_INVALID_REPARSE_DATA);
    if (is_reserved(tag))
        throw failure(ERROR_INVALID_REPARSE_DATA);
    reparse_point point{tag, std::string(bytes.substr(header_size))};
    if (tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT)
        decode(point);
    return point;
}

void get_reparse_point(open_file const &file, char *output, std::size_t room, DWORD &returned)
{
    if (!file.target().reparse)
        throw failure(ERROR_NOT_A_REPARSE_POINT);
    std::string const bytes = as_bytes(*file.target().reparse);
    if (room < header_size)
        throw failure(ERROR_INSUFFICIENT_BUFFER);
    returned = static_cast<DWORD>(std::min(room, bytes.size()));
    std::copy_n(bytes.begin(), returned, output);
    if (returned < bytes.size())
        throw failure(ERROR_MORE_DATA);
}

void check_change(open_file const &file)
{
    if (!file.may(FILE_WRITE_DATA) && !file.may(FILE_WRITE_ATTRIBUTES))
        throw failure(ERROR_ACCESS_DENIED);
}

/// Nobody turns the reparse point of one into that of another.
void check_same_tag(node const &target, reparse_point const &point)
{
    if (!target.reparse)
        return;
    if (target.reparse->tag != point.tag)
        throw failure(ERROR_REPARSE_TAG_MISMATCH);
    std::string_view const held = target.reparse->data;
    bool const is_other_maker = held.substr(0, maker_size) != point.data.substr(0, maker_size);
    if (!is_of_microsoft(point.tag) && is_other_maker)
        throw failure(ERROR_REPARSE_ATTRIBUTE_CONFLICT);
}

void check_may_create_links(machine_state const &machine)
{
    if (!machine.may_create_links)
        throw failure(ERROR_PRIVILEGE_NOT_HELD);
}

void set_reparse_point(open_file const &file, std::string_view input, machine_state const &machine)
{
    check_change(file);
    reparse_point point = as_point(input);
    if (point.tag == IO_REPARSE_TAG_SYMLINK)
        check_may_create_links(machine);
    node &target = file.target();
    check_same_tag(target, point);
    bool const is_mount_point = point.tag == IO_REPARSE_TAG_MOUNT_POINT;
    if (is_mount_point && !target.is_directory())
        throw failure(ERROR_DIRECTORY);
    if (target.is_directory() && !target.is_empty())
        throw failure(ERROR_DIR_NOT_EMPTY);
    target.reparse = std::move(point);
}

void delete_reparse_point(open_file const &file, std::string_view input)
{
    check_change(file);
    DWORD const tag = number_at(input, 0, 4);
    if (is_reserved(tag))
        throw failure(ERROR_REPARSE_TAG_INVALID);
    std::size_t const header = header_size + (is_of_microsoft(tag) ? 0 : maker_size);
    if (input.size() != header || number_at(input, 4, 2) != 0)
        throw failure(ERROR_INVALID_REPARSE_DATA);
    node &target = file.target();
    if (!target.reparse)
        throw failure(ERROR_NOT_A_REPARSE_POINT);
    if (target.reparse->tag != tag)
        throw failure(ERROR_REPARSE_TAG_MISMATCH);
    target.reparse.reset();
}

struct control
{
    DWORD code;
    std::string_view input;
    char *output;
    std::size_t room;
};

void run(open_file const &file, control const &asked, DWORD &returned, machine_state const &machine)
{
    switch (asked.code) {
    case FSCTL_GET_REPARSE_POINT:
        return get_reparse_point(file, asked.output, asked.room, returned);
    case FSCTL_SET_REPARSE_POINT:
        return set_reparse_point(file, asked.input, machine);
    case FSCTL_DELETE_REPARSE_POINT:
        return delete_reparse_point(file, asked.input);
    default:
        throw failure(ERROR_INVALID_FUNCTION);
    }
}

void create_symbolic_link(machine_state &machine, LPCWSTR name, LPCWSTR target, DWORD flags)
{
    constexpr DWORD known =
        SYMBOLIC_LINK_FLAG_DIRECTORY | SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    if ((flags & ~known) != 0)
        throw failure(ERROR_INVALID_PARAMETER);
    std::u16string const text = from_wide(target);
    if (text.empty())
        throw failure(ERROR_INVALID_REPARSE_DATA);
    pathname const path = parse_pathname(from_wide(name), machine);
    if (path.is_device())
        throw failure(ERROR_ACCESS_DENIED);
    place const here = find_place(path, machine);
    if (here.found)
        throw collision(*here.found, ERROR_ALREADY_EXISTS);
    check_creation(here);
    check_may_create_links(machine);
    bool const is_directory = (flags & SYMBOLIC_LINK_FLAG_DIRECTORY) != 0;
    DWORD const attribute = is_directory ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    reparse_point point = make_symbolic_link(text, machine);
    create_entry(here, path.ends_in_separator, attribute)->target->reparse = std::move(point);
}

} // namespace

} // namespace fl::simulation

extern "C" BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD input_size,
                                LPVOID output, DWORD output_size, LPDWORD returned, LPOVERLAPPED)
{
    using namespace fl::simulation;
    call const made{
        .function = "DeviceIoControl", .handle = device, .flags = code, .room = output_size};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        auto const file = machine.open->file(device);
        std::string_view const bytes(static_cast<char const *>(input), input_size);
        *returned = 0;
        run(*file, {code, bytes, static_cast<char *>(output), output_size}, *returned, machine);
        return BOOL{TRUE};
    });
}

extern "C" BOOLEAN CreateSymbolicLinkW(LPCWSTR name, LPCWSTR target, DWORD flags)
{
    using namespace fl::simulation;
    call const made{.function = "CreateSymbolicLinkW",
                    .text = name,
                    .second_text = target,
                    .flags = flags,
                    .pathnames = 1};
    return perform(made, BOOLEAN{FALSE}, [&](machine_state &machine) {
        create_symbolic_link(machine, name, target, flags);
        return BOOLEAN{TRUE};
    });
}
