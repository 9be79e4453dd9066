#ifndef FL_FILESYSTEM_SRC_STANDARD_OPENING_HPP
#define FL_FILESYSTEM_SRC_STANDARD_OPENING_HPP
// What the files of the standard facility share about opening, and about texts that calls
// write.

#include "platform/filled_buffer.hpp"
#include "platform/found_entry.hpp"
#include "platform/owned_handle.hpp"
#include "platform/reparse_point.hpp"
#include "standard/codes.hpp"

#include <windows.h>

#include <winioctl.h>

#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace fl::filesystem::detail::standard {

/// `file` is empty if `code` isn't 0.
struct opened_file
{
    file_handle file;
    DWORD code = ERROR_SUCCESS;
};

/// What `open()` opens, which returns `INVALID_HANDLE_VALUE` if it fails.
template <typename Open>
opened_file opened_by(Open open)
{
    opened_file opened;
    opened.code = code_of([&] {
        opened.file = file_handle(open());
        return static_cast<bool>(opened.file);
    });
    return opened;
}

/// Opens what `text` leads to, a file or a directory, to look at it.
inline opened_file open_target(std::wstring const &text)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return opened_by([&] {
        return ::CreateFileW(text.c_str(), FILE_READ_ATTRIBUTES, share, nullptr, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    });
}

/// Opens the name itself, whatever it leads to.
inline opened_file open_entry(std::wstring const &text, DWORD access)
{
    return opened_by([&] { return open_reparse_point(text, access).file.release(); });
}

/// Opens once more what `file` is, by whatever name.
inline opened_file open_again(file_handle const &file, DWORD access)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
    return opened_by([&] { return ::ReOpenFile(file.get(), access, share, flags); });
}

/// Has `move` go to an entry. Returns whether there is one; if not, `entry` tells why.
template <typename Move>
bool reach(found_entry &entry, Move move)
{
    DWORD const code = code_of([&] {
        move();
        return entry.is_there();
    });
    if (!entry.is_there())
        entry.end(code);
    return entry.is_there();
}

/// Begins to list what matches `pattern`. Empty if it can't.
inline find_handle begin_search(found_entry &entry, std::wstring const &pattern, DWORD flags)
{
    find_handle search;
    reach(entry, [&] { search = entry.begin(pattern, flags); });
    return search;
}

inline bool next_entry(found_entry &entry, find_handle const &search)
{
    return reach(entry, [&] { entry.advance(search); });
}

/// What the system knows of an open file, one of the records that `kind` stands for.
template <typename Information>
DWORD get_information(file_handle const &file, FILE_INFO_BY_HANDLE_CLASS kind, Information &info)
{
    return code_of(
        [&] { return ::GetFileInformationByHandleEx(file.get(), kind, &info, sizeof info); });
}

/// Reads the data of a reparse point. Returns whether it could; if not, `ec` holds the code.
inline bool get_reparse_data(file_handle const &file, std::span<unsigned char> buffer,
                             std::error_code &ec)
{
    DWORD returned = 0;
    DWORD const room = static_cast<DWORD>(buffer.size());
    return attempt(ec, [&] {
        return ::DeviceIoControl(file.get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, buffer.data(),
                                 room, &returned, nullptr);
    });
}

/// The text that `call(units, room)` writes into `buffer`, however long it is.
template <typename Call>
std::wstring_view fill_text(text_buffer &buffer, std::error_code &ec, Call call)
{
    DWORD code = ERROR_SUCCESS;
    auto const text = buffer.fill(260, growth::until_it_fits, [&](wchar_t *units, DWORD room) {
        DWORD answer = 0;
        code = code_of([&] { return (answer = call(units, room)) != 0; });
        return answer;
    });
    ec = system_code(code);
    return text.value_or(std::wstring_view());
}

/// The same for who keeps the text.
template <typename Call>
std::wstring filled_text(std::error_code &ec, Call call)
{
    text_buffer buffer;
    return std::wstring(fill_text(buffer, ec, call));
}

/// Goes ahead of a pathname as the object manager knows it, for volumes that have no other.
inline constexpr std::wstring_view global_root = LR"(\\?\GLOBALROOT)";

/// Makes the open empty directory or file a reparse point with this data.
inline bool set_reparse_data(file_handle const &file, std::span<unsigned char> data,
                             std::error_code &ec)
{
    DWORD returned = 0;
    DWORD const size = static_cast<DWORD>(data.size());
    return attempt(ec, [&] {
        return ::DeviceIoControl(file.get(), FSCTL_SET_REPARSE_POINT, data.data(), size, nullptr, 0,
                                 &returned, nullptr);
    });
}

/// The pathname, with a long prefix, of what `file` is.
inline std::wstring final_path(file_handle const &file, std::error_code &ec)
{
    auto const ask = [&](DWORD kind_of_volume_name) {
        return filled_text(ec, [&](wchar_t *buffer, DWORD room) {
            return ::GetFinalPathNameByHandleW(file.get(), buffer, room, kind_of_volume_name);
        });
    };
    std::wstring path = ask(VOLUME_NAME_DOS);
    if (ec != system_code(ERROR_PATH_NOT_FOUND))
        return path;
    // neither a letter nor a directory shows the volume
    path = ask(VOLUME_NAME_NT);
    return ec ? path : path.insert(0, global_root);
}

} // namespace fl::filesystem::detail::standard

#endif
