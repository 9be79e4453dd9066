#include "calls/attributes.hpp"
#include "calls/call.hpp"

#include "handles.hpp"

#include <algorithm>
#include <cstring>

namespace fl::simulation {

namespace {

std::int64_t as_signed(std::uint64_t ticks)
{
    return static_cast<std::int64_t>(ticks);
}

/// Whether the directory still has the name by which the file was opened.
bool has_name(open_file const &file)
{
    auto const parent = file.name->parent.lock();
    return !parent || parent->find(file.name->name) == file.name;
}

DWORD links_of(open_file const &file)
{
    return file.target().link_count - file.target().doomed_links;
}

/// A volume below its file system is no file that anything could be told of.
void check_is_file(open_file const &file)
{
    if (file.disk->is_raw)
        throw failure(ERROR_INVALID_PARAMETER);
}

BY_HANDLE_FILE_INFORMATION information_of(open_file const &file)
{
    check_is_file(file);
    node const &target = file.target();
    BY_HANDLE_FILE_INFORMATION information = {};
    fill_record(information, target.attributes(), target.times, target.content.size());
    information.dwVolumeSerialNumber = file.disk->serial_number;
    information.nNumberOfLinks = links_of(file);
    information.nFileIndexHigh = static_cast<DWORD>(target.id() >> 32);
    information.nFileIndexLow = static_cast<DWORD>(target.id());
    return information;
}

FILE_BASIC_INFO basic_information(open_file const &file)
{
    file.demand(FILE_READ_ATTRIBUTES);
    times const &taken = file.target().times;
    FILE_BASIC_INFO information = {};
    information.CreationTime.QuadPart = as_signed(taken.creation);
    information.LastAccessTime.QuadPart = as_signed(taken.access);
    information.LastWriteTime.QuadPart = as_signed(taken.write);
    information.ChangeTime.QuadPart = as_signed(taken.write);
    information.FileAttributes = file.target().attributes();
    return information;
}

FILE_STANDARD_INFO standard_information(open_file const &file)
{
    constexpr std::uint64_t cluster = 4096;
    std::uint64_t const size = file.target().content.size();
    FILE_STANDARD_INFO information = {};
    information.AllocationSize.QuadPart = as_signed((size + cluster - 1) / cluster * cluster);
    information.EndOfFile.QuadPart = as_signed(size);
    information.NumberOfLinks = links_of(file);
    information.DeletePending = file.name->is_delete_pending ? 1 : 0;
    information.Directory = file.target().is_directory() ? 1 : 0;
    return information;
}

FILE_ATTRIBUTE_TAG_INFO tag_information(open_file const &file)
{
    file.demand(FILE_READ_ATTRIBUTES);
    auto const &reparse = file.target().reparse;
    return {file.target().attributes(), reparse ? reparse->tag : 0};
}

FILE_ID_INFO id_information(open_file const &file)
{
    FILE_ID_INFO information = {};
    information.VolumeSerialNumber = file.disk->serial_number;
    std::uint64_t const id = file.target().id();
    for (std::size_t byte = 0; byte < sizeof id; ++byte)
        information.FileId.Identifier[byte] = static_cast<BYTE>(id >> (8 * byte));
    return information;
}

template <typename Information>
void hand_over_record(Information const &information, LPVOID buffer, DWORD room)
{
    if (room < sizeof information)
        throw failure(ERROR_BAD_LENGTH);
    std::memcpy(buffer, &information, sizeof information);
}

void get_information(open_file const &file, FILE_INFO_BY_HANDLE_CLASS kind_of_it, LPVOID buffer,
                     DWORD room)
{
    check_is_file(file);
    switch (kind_of_it) {
    case FileBasicInfo:
        return hand_over_record(basic_information(file), buffer, room);
    case FileStandardInfo:
        return hand_over_record(standard_information(file), buffer, room);
    case FileAttributeTagInfo:
        return hand_over_record(tag_information(file), buffer, room);
    case FileIdInfo:
        return hand_over_record(id_information(file), buffer, room);
    default:
        throw failure(ERROR_INVALID_PARAMETER);
    }
}

/// 0 leaves a time as it is, and so does -1, which also keeps the handle from changing it.
void set_time(std::uint64_t &time, LARGE_INTEGER asked)
{
    if (asked.QuadPart < -1)
        throw failure(ERROR_INVALID_PARAMETER);
    if (asked.QuadPart > 0)
        time = static_cast<std::uint64_t>(asked.QuadPart);
}

void set_basic_information(open_file const &file, FILE_BASIC_INFO const &asked)
{
    file.demand(FILE_WRITE_ATTRIBUTES);
    times changed = file.target().times;
    set_time(changed.creation, asked.CreationTime);
    set_time(changed.access, asked.LastAccessTime);
    set_time(changed.write, asked.LastWriteTime);
    bool const turns_into_directory = (asked.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (turns_into_directory && !file.target().is_directory())
        throw failure(ERROR_INVALID_PARAMETER);
    if (asked.FileAttributes != 0)
        change_attributes(file, asked.FileAttributes);
    file.target().times = changed;
}

/// What has no name any longer is deleted for good.
void check_undeleted(open_file const &file)
{
    if (!has_name(file))
        throw failure(ERROR_ACCESS_DENIED);
}

/// Takes a deletion back.
void spare(open_file &file)
{
    file.name->doom(false);
    file.is_posix_deletion = false;
}

void set_disposition(open_file &file, FILE_DISPOSITION_INFO const &asked)
{
    file.demand(DELETE);
    check_undeleted(file);
    if (asked.DeleteFile != 0)
        mark_for_deletion(file);
    else
        spare(file);
}

/// The flag of the handle, which can be taken away and not be given.
void set_deletion_on_close(open_file &file, bool deletes)
{
    if (deletes && !file.deletes_on_close)
        throw failure(ERROR_NOT_SUPPORTED);
    file.deletes_on_close = deletes;
}

/// Since Windows 10 version 1709. The name of a file that is deleted as POSIX has it is
/// free at once, whoever still has the file open.
void set_disposition_ex(open_file &file, FILE_DISPOSITION_INFO_EX const &asked)
{
    auto const has = [&](DWORD flag) { return (asked.Flags & flag) != 0; };
    file.demand(DELETE);
    check_undeleted(file);
    if (has(FILE_DISPOSITION_FLAG_ON_CLOSE))
        return set_deletion_on_close(file, has(FILE_DISPOSITION_FLAG_DELETE));
    if (!has(FILE_DISPOSITION_FLAG_DELETE))
        return spare(file);
    mark_for_deletion(file, has(FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE));
    file.is_posix_deletion = has(FILE_DISPOSITION_FLAG_POSIX_SEMANTICS);
}

/// Cuts a file, or adds zeros to it.
void set_end_of_file(open_file const &file, FILE_END_OF_FILE_INFO const &asked,
                     machine_state &machine)
{
    file.demand(FILE_WRITE_DATA);
    node &target = file.target();
    if (target.is_directory() || asked.EndOfFile.QuadPart < 0)
        throw failure(ERROR_INVALID_PARAMETER);
    target.content.resize(static_cast<std::uint64_t>(asked.EndOfFile.QuadPart));
    target.set_attributes(target.attributes() | FILE_ATTRIBUTE_ARCHIVE);
    target.times.write = machine.now();
}

template <typename Information>
Information const &taken_from(LPVOID buffer, DWORD size)
{
    if (size < sizeof(Information))
        throw failure(ERROR_BAD_LENGTH);
    return *static_cast<Information const *>(buffer);
}

void set_information(open_file &file, FILE_INFO_BY_HANDLE_CLASS kind_of_it, LPVOID buffer,
                     DWORD size, machine_state &machine)
{
    switch (kind_of_it) {
    case FileBasicInfo:
        return set_basic_information(file, taken_from<FILE_BASIC_INFO>(buffer, size));
    case FileEndOfFileInfo:
        return set_end_of_file(file, taken_from<FILE_END_OF_FILE_INFO>(buffer, size), machine);
    case FileDispositionInfo:
        return set_disposition(file, taken_from<FILE_DISPOSITION_INFO>(buffer, size));
    case FileDispositionInfoEx:
        return set_disposition_ex(file, taken_from<FILE_DISPOSITION_INFO_EX>(buffer, size));
    default:
        throw failure(ERROR_INVALID_PARAMETER);
    }
}

/// Where NTFS keeps what has no name any longer and is still open.
std::u16string place_of_deleted(open_file const &file)
{
    constexpr std::u16string_view digits = u"0123456789ABCDEF";
    std::u16string text = u"\\$Extend\\$Deleted\\";
    for (int shift = 60; shift >= 0; shift -= 4)
        text += digits[file.target().id() >> shift & 0xF];
    return text + u"5EB9F2A1"; // any number
}

/// The names from the root down, each as the disk has it.
std::u16string names_to(open_file const &file)
{
    if (!has_name(file))
        return place_of_deleted(file);
    std::vector<std::shared_ptr<entry>> way;
    for (auto here = file.name; here && here != file.disk->root;) {
        way.push_back(here);
        auto const parent = here->parent.lock();
        here = parent ? parent->own_entry.lock() : nullptr;
    }
    std::u16string text;
    std::for_each(way.rbegin(), way.rend(), [&](auto const &here) { text += u'\\' + here->name; });
    return text.empty() ? u"\\" : text;
}

std::u16string final_path(open_file const &file, DWORD flags)
{
    volume const &disk = *file.disk;
    if (disk.is_device)
        throw failure(ERROR_INVALID_FUNCTION);
    std::u16string const names = names_to(file);
    switch (flags & ~DWORD{FILE_NAME_OPENED}) {
    case VOLUME_NAME_DOS:
        if (disk.name.empty())
            throw failure(ERROR_PATH_NOT_FOUND);
        return u"\\\\?\\" + disk.name + names;
    case VOLUME_NAME_NT:
        return u"\\Device\\" + device_name_of(disk) + names;
    case VOLUME_NAME_GUID:
        if (disk.guid_name.empty())
            throw failure(ERROR_PATH_NOT_FOUND);
        return u"\\\\?\\" + disk.guid_name + names;
    case VOLUME_NAME_NONE:
        // without the volume a share is still told: the redirector has its names
        return disk.is_remote ? disk.name.substr(3) + names : names;
    default:
        throw failure(ERROR_INVALID_PARAMETER);
    }
}

} // namespace

} // namespace fl::simulation

extern "C" BOOL GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information)
{
    using namespace fl::simulation;
    call const made{.function = "GetFileInformationByHandle", .handle = file};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        *information = information_of(*machine.open->file(file));
        return BOOL{TRUE};
    });
}

extern "C" BOOL GetFileInformationByHandleEx(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind,
                                             LPVOID information, DWORD size)
{
    using namespace fl::simulation;
    call const made{.function = "GetFileInformationByHandleEx",
                    .handle = file,
                    .flags = static_cast<DWORD>(kind),
                    .room = size};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        get_information(*machine.open->file(file), kind, information, size);
        return BOOL{TRUE};
    });
}

extern "C" BOOL SetFileInformationByHandle(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind,
                                           LPVOID information, DWORD size)
{
    using namespace fl::simulation;
    call const made{.function = "SetFileInformationByHandle",
                    .handle = file,
                    .flags = static_cast<DWORD>(kind),
                    .room = size};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        set_information(*machine.open->file(file), kind, information, size, machine);
        return BOOL{TRUE};
    });
}

extern "C" DWORD GetFinalPathNameByHandleW(HANDLE file, LPWSTR buffer, DWORD room, DWORD flags)
{
    using namespace fl::simulation;
    call const made{
        .function = "GetFinalPathNameByHandleW", .handle = file, .flags = flags, .room = room};
    return perform(made, DWORD{0}, [&](machine_state &machine) {
        return hand_over(final_path(*machine.open->file(file), flags), room, buffer);
    });
}
