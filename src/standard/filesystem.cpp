#include "standard/filesystem.hpp"

#include "pathname/shapes.hpp"
#include "platform/owned_handle.hpp"
#include "standard/codes.hpp"
#include "standard/opening.hpp"
#include "standard/roots.hpp"

#include <windows.h>

namespace fl::filesystem::detail::standard {

namespace {

/// Where the elements of `text` begin. Behind `\\?\` a drive counts to the root:
/// it is nothing that could be created.
std::size_t root_length(std::wstring_view text)
{
    std::size_t const root = skip_separators(text, root_name_length(text));
    bool const is_long_drive = root == long_prefix_size && is_long_prefix_at(text, 0) &&
                               is_drive_at(text, long_prefix_size);
    return is_long_drive ? skip_separators(text, long_prefix_size + drive_size) : root;
}

// The queries set the attributes, and the tag if it is known, of `entry`. Each returns
// whether it could; if not, `ec` holds the system's code.
using entry_info = FILE_ATTRIBUTE_TAG_INFO;

bool is_reparse_point(entry_info const &entry)
{
    return (entry.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

/// Opens nothing, and leaves the tag alone.
bool query_attributes(std::wstring const &text, entry_info &entry, std::error_code &ec)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    attempt(ec, [&] { return ::GetFileAttributesExW(text.c_str(), GetFileExInfoStandard, &data); });
    entry.FileAttributes = data.dwFileAttributes;
    return !ec;
}

/// Whether a search for `text` would be one for many names.
bool is_pattern(std::wstring_view text)
{
    std::size_t const begin = is_long_prefix_at(text, 0) ? long_prefix_size : 0;
    return text.find_first_of(L"*?", begin) != text.npos;
}

/// Takes the place of a query that failed because the file refuses every opening, even one
/// for a look at its attributes, as the paging file does: its directory knows them, too.
bool query_directory_of_refused(std::wstring const &text, entry_info &entry, std::error_code &ec)
{
    if (ec != system_code(ERROR_SHARING_VIOLATION) || is_pattern(text))
        return false;
    WIN32_FIND_DATAW found = {};
    find_handle const search(::FindFirstFileW(text.c_str(), &found));
    if (!search)
        return false;
    entry.FileAttributes = found.dwFileAttributes;
    entry.ReparseTag = is_reparse_point(entry) ? found.dwReserved0 : 0;
    ec.clear();
    return true;
}

/// Asks about what a link leads to, and leaves the tag alone.
bool query_behind_link(std::wstring const &text, entry_info &entry, std::error_code &ec)
{
    auto const [file, code] = open_target(text);
    if (!file)
        return fail(code, ec);
    FILE_BASIC_INFO info = {};
    ec = system_code(get_information(file, FileBasicInfo, info));
    entry.FileAttributes = info.FileAttributes;
    return !ec;
}

/// Asks about the reparse point `text` itself: attributes and tag of one moment.
bool query_reparse_point(std::wstring const &text, entry_info &entry, std::error_code &ec)
{
    auto const [file, code] = open_entry(text, FILE_READ_ATTRIBUTES);
    if (!file)
        return fail(code, ec);
    ec = system_code(get_information(file, FileAttributeTagInfo, entry));
    return !ec;
}

/// What a failed query comes to, whose code is in `ec`.
std::filesystem::file_status status_of_failure(std::error_code const &ec)
{
    using std::filesystem::file_type;
    return std::filesystem::file_status(is_not_found(ec) ? file_type::not_found : file_type::none);
}

std::filesystem::file_type type_of_tag(DWORD tag, std::filesystem::file_type otherwise)
{
    if (tag == DWORD{IO_REPARSE_TAG_SYMLINK})
        return std::filesystem::file_type::symlink;
    return tag == DWORD{IO_REPARSE_TAG_MOUNT_POINT} ? junction : otherwise;
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
    text_buffer buffer;
    return std::wstring(absolute(text.c_str(), buffer, ec));
}

std::wstring_view absolute(wchar_t const *text, text_buffer &buffer, std::error_code &ec)
{
    return fill_text(buffer, ec, [text](wchar_t *units, DWORD room) {
        return ::GetFullPathNameW(text, room, units, nullptr);
    });
}

std::wstring current_path(std::error_code &ec)
{
    return filled_text(
        ec, [](wchar_t *buffer, DWORD room) { return ::GetCurrentDirectoryW(room, buffer); });
}

void current_path(std::wstring const &text, std::error_code &ec)
{
    attempt(ec, [&] { return ::SetCurrentDirectoryW(text.c_str()); });
}

std::filesystem::file_status status(std::wstring const &text, std::error_code &ec)
{
    entry_info entry = {};
    bool is_known =
        query_attributes(text, entry, ec) || query_directory_of_refused(text, entry, ec);
    if (is_known && is_reparse_point(entry))
        is_known = query_behind_link(text, entry, ec);
    return is_known ? status_of(entry.FileAttributes) : status_of_failure(ec);
}

std::filesystem::file_status symlink_status(std::wstring const &text, std::error_code &ec)
{
    entry_info entry = {};
    bool is_known = query_attributes(text, entry, ec);
    if (!is_known)
        is_known = query_directory_of_refused(text, entry, ec);
    else if (is_reparse_point(entry))
        is_known = query_reparse_point(text, entry, ec);
    if (!is_known)
        return status_of_failure(ec);
    std::filesystem::file_status const plain = status_of(entry.FileAttributes);
    return std::filesystem::file_status(type_of_tag(entry.ReparseTag, plain.type()),
                                        plain.permissions());
}

bool create_directory(std::wstring const &text, std::error_code &ec)
{
    if (attempt(ec, [&] { return ::CreateDirectoryW(text.c_str(), nullptr); }))
        return true;
    // something has that name; what can't be looked at counts as no directory
    if (ec == system_code(ERROR_ALREADY_EXISTS)) {
        DWORD const attributes = ::GetFileAttributesW(text.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            ec.clear();
    }
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

} // namespace fl::filesystem::detail::standard
