#include "platform/standard_filesystem.hpp"

#include "pathname/shapes.hpp"
#include "platform/attribute_query.hpp"
#include "platform/filled_buffer.hpp"
#include "platform/owned_handle.hpp"
#include "platform/reparse_point.hpp"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>

namespace fl::filesystem::detail::standard {

namespace {

std::error_code system_code(DWORD code)
{
    return {static_cast<int>(code), std::system_category()};
}

/// The index of the first separator of either kind at or after `from`, or the
/// size of the text.
template <typename Char>
std::size_t find_separator(std::basic_string_view<Char> text, std::size_t from)
{
    while (from < text.size() && !is_separator(text[from]))
        ++from;
    return from;
}

/// The index of the first unit at or after `from` that is no separator, or the
/// size of the text.
template <typename Char>
std::size_t skip_separators(std::basic_string_view<Char> text, std::size_t from)
{
    while (from < text.size() && is_separator(text[from]))
        ++from;
    return from;
}

/// Whether `text` begins with one of `\\?\`, `\\.\` and `\??\`, and no further
/// separator stands behind it.
template <typename Char>
bool has_namespace_prefix(std::basic_string_view<Char> text)
{
    if (is_separator(unit_at(text, 4)))
        return false;
    bool const is_object_prefix = text.size() >= 4 && is_separator(text[0]) && text[1] == '?' &&
                                  text[2] == '?' && is_separator(text[3]);
    return is_object_prefix || is_long_prefix_at(text, 0) || is_device_prefix_at(text, 0);
}

/// The text that `call(buffer, room)` writes, however long it is.
template <typename Call>
std::wstring filled_text(std::error_code &ec, Call call)
{
    ec.clear();
    DWORD code = ERROR_SUCCESS;
    auto text = filled_buffer(260, growth::until_it_fits, [&](wchar_t *buffer, DWORD room) {
        DWORD const answer = call(buffer, room);
        code = ::GetLastError();
        return answer;
    });
    if (text)
        return *std::move(text);
    ec = system_code(code);
    return {};
}

/// The length of the root name: drive, server, or prefix without its last
/// separator.
template <typename Char>
std::size_t root_name_length(std::basic_string_view<Char> text)
{
    // C:
    if (is_drive_at(text, 0))
        return 2;
    // \\? of \\?\foo
    if (has_namespace_prefix(text))
        return 3;
    // \\server
    bool const is_server = text.size() >= 3 && is_separator(text[0]) && is_separator(text[1]) &&
                           !is_separator(text[2]);
    return is_server ? find_separator(text, 2) : 0;
}

/// Where the elements of `text` begin. Behind `\\?\` a drive counts to the root:
/// it is nothing that could be created.
std::size_t root_length(std::wstring_view text)
{
    std::size_t const root = skip_separators(text, root_name_length(text));
    bool const is_long_drive = root == 4 && is_long_prefix_at(text, 0) && is_drive_at(text, 4);
    return is_long_drive ? skip_separators(text, 6) : root;
}

/// The most that reparse data takes, and two bytes more.
constexpr std::size_t reparse_room = 16386;

/// Opens and reads the reparse data of `text` into `data`, of `reparse_room` bytes, which
/// it takes from the heap. Returns the system's code, 0 on success.
DWORD read_reparse_point(std::wstring const &text, std::unique_ptr<unsigned char[]> &data)
{
    auto const [file, code] = open_reparse_point(text, FILE_READ_ATTRIBUTES);
    if (code != ERROR_SUCCESS)
        return code;
    data.reset(new (std::nothrow) unsigned char[reparse_room]());
    if (!data)
        return ERROR_NOT_ENOUGH_MEMORY;
    return get_reparse_point(file, {data.get(), reparse_room});
}

/// The codes for a name that can't be reached, on a disk or on a network.
bool is_not_found(std::error_code const &ec)
{
    constexpr DWORD codes[] = {ERROR_FILE_NOT_FOUND,  ERROR_PATH_NOT_FOUND, ERROR_BAD_NETPATH,
                               ERROR_NETNAME_DELETED, ERROR_INVALID_NAME,   ERROR_DIRECTORY};
    return std::find(std::begin(codes), std::end(codes), static_cast<DWORD>(ec.value())) !=
           std::end(codes);
}

/// Sets `attributes` to those of what a link leads to, and returns the system's code.
DWORD query_behind_link(std::wstring const &text, DWORD &attributes)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    file_handle const file(::CreateFileW(text.c_str(), FILE_READ_ATTRIBUTES, share, nullptr,
                                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file)
        return ::GetLastError();
    FILE_BASIC_INFO info = {};
    if (!::GetFileInformationByHandleEx(file.get(), FileBasicInfo, &info, sizeof info))
        return ::GetLastError();
    attributes = info.FileAttributes;
    return ERROR_SUCCESS;
}

std::filesystem::file_status status_of(DWORD attributes)
{
    using std::filesystem::file_type;
    using std::filesystem::perms;
    constexpr perms write = perms::owner_write | perms::group_write | perms::others_write;
    bool const is_directory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    bool const is_read_only = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    return std::filesystem::file_status(is_directory ? file_type::directory : file_type::regular,
                                        is_read_only ? perms::all & ~write : perms::all);
}

} // namespace

template <typename Char>
bool is_absolute(std::basic_string_view<Char> text)
{
    if (is_drive_at(text, 0))
        return is_separator(unit_at(text, 2));
    return root_name_length(text) > 0;
}

template bool is_absolute(std::u16string_view);
template bool is_absolute(std::wstring_view);

std::wstring absolute(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    if (text.empty())
        return {};
    return filled_text(ec, [&](wchar_t *buffer, DWORD room) {
        return ::GetFullPathNameW(text.c_str(), room, buffer, nullptr);
    });
}

std::wstring current_path(std::error_code &ec)
{
    return filled_text(
        ec, [](wchar_t *buffer, DWORD room) { return ::GetCurrentDirectoryW(room, buffer); });
}

std::filesystem::file_status status(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    attribute_query const query(text);
    DWORD attributes = query.data.dwFileAttributes;
    DWORD code = query.code;
    if (!query.has_failed && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        code = query_behind_link(text, attributes);
    if (query.has_failed || code != ERROR_SUCCESS) {
        ec = system_code(code);
        return std::filesystem::file_status(is_not_found(ec) ? std::filesystem::file_type::not_found
                                                             : std::filesystem::file_type::none);
    }
    return status_of(attributes);
}

bool create_directory(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    if (::CreateDirectoryW(text.c_str(), nullptr))
        return true;
    DWORD const code = ::GetLastError();
    // something has that name; what can't be looked at counts as no directory
    if (code == ERROR_ALREADY_EXISTS) {
        DWORD const attributes = ::GetFileAttributesW(text.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            return false;
    }
    ec = system_code(code);
    return false;
}

bool create_directories(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    if (text.empty()) {
        ec = system_code(ERROR_PATH_NOT_FOUND);
        return false;
    }
    bool created = false;
    std::error_code noted;
    std::wstring level;
    level.reserve(text.size());
    std::size_t begin = root_length(text);
    while (begin < text.size()) {
        std::size_t const end = find_separator<wchar_t>(text, begin);
        level.append(text, level.size(), end - level.size());
        created = create_directory(level, ec);
        if (ec && !is_not_found(ec))
            noted = ec;
        begin = skip_separators<wchar_t>(text, end);
    }
    if (ec && noted)
        ec = noted;
    return created;
}

std::wstring read_symlink(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    std::unique_ptr<unsigned char[]> data;
    if (DWORD const code = read_reparse_point(text, data); code != ERROR_SUCCESS) {
        ec = system_code(code);
        return {};
    }
    reparse_bytes const bytes(data.get(), reparse_room);
    if (is_link_tag(reparse_tag(bytes)))
        return link_name(bytes);
    ec = system_code(ERROR_REPARSE_TAG_INVALID);
    return {};
}

} // namespace fl::filesystem::detail::standard
