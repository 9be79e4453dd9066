#include "calls/call.hpp"

#include "handles.hpp"
#include "opening.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

struct creation
{
    DWORD access;
    DWORD share;
    DWORD disposition;
    DWORD flags; ///< attributes among them
};

bool has(DWORD flags, DWORD one)
{
    return (flags & one) != 0;
}

void check_arguments(creation const &asked)
{
    bool const is_known = asked.disposition >= CREATE_NEW && asked.disposition <= TRUNCATE_EXISTING;
    if (!is_known || has(asked.share, ~share_all))
        throw failure(ERROR_INVALID_PARAMETER);
    if (asked.disposition == TRUNCATE_EXISTING &&
        !has(asked.access, GENERIC_WRITE | FILE_WRITE_DATA))
        throw failure(ERROR_INVALID_PARAMETER);
}

DWORD access_of(creation const &asked)
{
    DWORD access = specific_access(asked.access) | FILE_READ_ATTRIBUTES;
    if (has(asked.flags, FILE_FLAG_DELETE_ON_CLOSE))
        access |= DELETE;
    return access;
}

bool overwrites(creation const &asked)
{
    return asked.disposition == CREATE_ALWAYS || asked.disposition == TRUNCATE_EXISTING;
}

/// A file that is replaced keeps what it is only if the caller knows of it.
void check_overwriting(node const &target, creation const &asked)
{
    if (target.is_directory())
        throw failure(ERROR_FILE_EXISTS); // a directory that was opened as any file would be
    if (target.is_read_only())
        throw failure(ERROR_ACCESS_DENIED);
    constexpr DWORD shy = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    bool const names_all = (target.attributes() & shy & ~asked.flags) == 0;
    if (asked.disposition == CREATE_ALWAYS && !names_all)
        throw failure(ERROR_ACCESS_DENIED);
}

void overwrite(node &target, creation const &asked, std::uint64_t now)
{
    target.content.resize(0);
    target.times.write = now;
    if (asked.disposition == CREATE_ALWAYS)
        target.set_attributes((asked.flags & settable_attributes) | FILE_ATTRIBUTE_ARCHIVE);
}

/// A directory, where a file was asked for, is told by another code if the pathname
/// itself says that it means one.
void check_directory(place const &here, pathname const &path, creation const &asked)
{
    bool const is_plain_directory =
        here.found->target->is_directory() && !has(asked.flags, FILE_FLAG_BACKUP_SEMANTICS);
    if (is_plain_directory)
        throw failure(path.ends_in_separator || here.is_root() ? ERROR_PATH_NOT_FOUND
                                                               : ERROR_ACCESS_DENIED);
}

std::shared_ptr<open_file> open_it(place const &here, pathname const &path, creation const &asked,
                                   machine_state &machine)
{
    check_separator(here, path.ends_in_separator);
    check_directory(here, path, asked);
    if (asked.disposition == CREATE_NEW)
        throw collision(*here.found, ERROR_FILE_EXISTS);
    terms how;
    how.access = access_of(asked);
    how.share = asked.share;
    how.wanted = has(asked.flags, FILE_FLAG_BACKUP_SEMANTICS) ? kind::any : kind::file;
    // Windows 10 opened whatever was there for who asks for directories, too
    how.minds_kind_of_link = how.wanted != kind::any || machine.runs >= edition::windows_11;
    if (overwrites(asked)) {
        check_overwriting(*here.found->target, asked);
        terms writing = how;
        writing.access |= FILE_WRITE_DATA; // whatever the caller will do with it
        open_found(here, path.ends_in_separator, writing);
    }
    auto file = open_found(here, path.ends_in_separator, how);
    if (has(asked.flags, FILE_FLAG_DELETE_ON_CLOSE) && file->target().is_read_only())
        throw failure(ERROR_ACCESS_DENIED);
    if (overwrites(asked))
        overwrite(file->target(), asked, machine.now());
    return file;
}

std::shared_ptr<open_file> make_it(place const &here, pathname const &path, creation const &asked)
{
    if (asked.disposition == OPEN_EXISTING || asked.disposition == TRUNCATE_EXISTING)
        throw failure(ERROR_FILE_NOT_FOUND);
    DWORD const attributes = (asked.flags & settable_attributes) | FILE_ATTRIBUTE_ARCHIVE;
    auto const name = create_entry(here, path.ends_in_separator, attributes);
    return std::make_shared<open_file>(here.disk, name, access_of(asked), asked.share);
}

/// A device is there already, and nothing about it is created or cut.
std::shared_ptr<open_file> open_device(creation const &asked, machine_state &machine)
{
    if (asked.disposition == CREATE_NEW)
        throw failure(ERROR_FILE_EXISTS);
    auto const device = machine.disks.device();
    return std::make_shared<open_file>(device, device->root, access_of(asked), share_all);
}

/// A volume below its file system is there for whoever asks nothing of its content. The rest
/// takes an administrator.
std::shared_ptr<open_file> open_raw_volume(creation const &asked, machine_state &machine)
{
    constexpr DWORD harmless = FILE_READ_ATTRIBUTES | FILE_READ_EA | READ_CONTROL | SYNCHRONIZE;
    bool const opens = asked.disposition == OPEN_EXISTING || asked.disposition == OPEN_ALWAYS;
    if (!opens || (access_of(asked) & ~harmless) != 0)
        throw failure(ERROR_ACCESS_DENIED);
    auto const raw = machine.disks.raw_volume();
    return std::make_shared<open_file>(raw, raw->root, access_of(asked), share_all);
}

std::shared_ptr<open_file> open_or_make(pathname const &path, creation const &asked,
                                        machine_state &machine, DWORD &last_error)
{
    if (path.is_device())
        return open_device(asked, machine);
    if (path.is_raw_volume)
        return open_raw_volume(asked, machine);
    bool const keeps = has(asked.flags, FILE_FLAG_OPEN_REPARSE_POINT);
    place const here = find_place(path, machine, keeps ? last_link::keep : last_link::follow);
    auto file = here.found ? open_it(here, path, asked, machine) : make_it(here, path, asked);
    file->deletes_on_close = has(asked.flags, FILE_FLAG_DELETE_ON_CLOSE);
    if (asked.disposition == CREATE_ALWAYS || asked.disposition == OPEN_ALWAYS)
        last_error = here.found ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS;
    return file;
}

HANDLE create_file(machine_state &machine, LPCWSTR name, creation const &asked, DWORD &last_error)
{
    check_arguments(asked);
    std::u16string const text = from_wide(name);
    auto const file = open_or_make(parse_pathname(text, machine), asked, machine, last_error);
    if (machine.keeps_journal)
        file->text = text;
    return machine.open->add(file);
}

/// Opens what is open already, whatever its name says by now.
HANDLE reopen(machine_state &machine, HANDLE original, creation const &asked)
{
    auto const file = machine.open->file(original);
    place here;
    here.disk = file->disk;
    here.found = file->name;
    terms how;
    how.access = access_of(asked);
    how.share = asked.share;
    how.wanted = has(asked.flags, FILE_FLAG_BACKUP_SEMANTICS) ? kind::any : kind::file;
    auto const again = open_found(here, false, how);
    again->text = file->text;
    return machine.open->add(again);
}

void check_content(open_file const &file)
{
    if (file.target().is_directory())
        throw failure(ERROR_INVALID_FUNCTION);
}

DWORD read_file(open_file &file, char *buffer, DWORD size)
{
    file.demand(FILE_READ_DATA);
    check_content(file);
    std::size_t const count = file.target().content.read(file.position, buffer, size);
    file.position += count;
    return static_cast<DWORD>(count);
}

DWORD write_file(open_file &file, std::string_view bytes, machine_state &machine)
{
    bool const appends = !file.may(FILE_WRITE_DATA);
    if (appends)
        file.demand(FILE_APPEND_DATA);
    check_content(file);
    if (file.disk->is_device)
        return static_cast<DWORD>(bytes.size());
    node &target = file.target();
    if (appends)
        file.position = target.content.size();
    target.content.write(file.position, bytes);
    target.set_attributes(target.attributes() | FILE_ATTRIBUTE_ARCHIVE);
    target.times.write = machine.now();
    file.position += bytes.size();
    return static_cast<DWORD>(bytes.size());
}

} // namespace

} // namespace fl::simulation

extern "C" HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES,
                              DWORD disposition, DWORD flags, HANDLE)
{
    using namespace fl::simulation;
    call const made{.function = "CreateFileW",
                    .text = name,
                    .flags = flags,
                    .access = access,
                    .share = share,
                    .disposition = disposition};
    return perform(made, INVALID_HANDLE_VALUE, [&](machine_state &machine, DWORD &last_error) {
        return create_file(machine, name, {access, share, disposition, flags}, last_error);
    });
}

extern "C" HANDLE ReOpenFile(HANDLE original, DWORD access, DWORD share, DWORD flags)
{
    using namespace fl::simulation;
    call const made{.function = "ReOpenFile",
                    .handle = original,
                    .flags = flags,
                    .access = access,
                    .share = share};
    return perform(made, INVALID_HANDLE_VALUE, [&](machine_state &machine) {
        return reopen(machine, original, {access, share, OPEN_EXISTING, flags});
    });
}

extern "C" BOOL CloseHandle(HANDLE handle)
{
    using namespace fl::simulation;
    call const made{.function = "CloseHandle", .handle = handle, .happens_anyway = true};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        machine.open->close_file(handle);
        return BOOL{TRUE};
    });
}

extern "C" BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED)
{
    using namespace fl::simulation;
    call const made{.function = "ReadFile", .handle = file, .room = size};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        *read = 0;
        *read = read_file(*machine.open->file(file), static_cast<char *>(buffer), size);
        return BOOL{TRUE};
    });
}

extern "C" BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, LPOVERLAPPED)
{
    using namespace fl::simulation;
    call const made{.function = "WriteFile", .handle = file, .room = size};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        *written = 0;
        std::string_view const bytes(static_cast<char const *>(buffer), size);
        *written = write_file(*machine.open->file(file), bytes, machine);
        return BOOL{TRUE};
    });
}
