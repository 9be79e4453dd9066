#include "standard/filesystem.hpp"

#include "platform/attribute_query.hpp"
#include "platform/filled_buffer.hpp"
#include "platform/owned_handle.hpp"
#include "platform/reparse_point.hpp"
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
    bool const is_long_drive = root == 4 && is_long_prefix_at(text, 0) && is_drive_at(text, 4);
    return is_long_drive ? skip_separators(text, 6) : root;
}

/// Sets `attributes` to those of what a link leads to. Returns whether it could; if not, `ec`
/// holds the system's code.
bool query_behind_link(std::wstring const &text, DWORD &attributes, std::error_code &ec)
{
    auto const [file, code] = open_target(text);
    if (!file)
        return fail(code, ec);
    FILE_BASIC_INFO info = {};
    if (!::GetFileInformationByHandleEx(file.get(), FileBasicInfo, &info, sizeof info))
        return fail(::GetLastError(), ec);
    attributes = info.FileAttributes;
    return true;
}

/// The same with `tag`, that of the reparse point `text`.
bool query_tag(std::wstring const &text, DWORD &tag, std::error_code &ec)
{
    auto const [file, code] = open_reparse_point(text, FILE_READ_ATTRIBUTES);
    if (!file)
        return fail(code, ec);
    FILE_ATTRIBUTE_TAG_INFO info = {};
    if (!::GetFileInformationByHandleEx(file.get(), FileAttributeTagInfo, &info, sizeof info))
        return fail(::GetLastError(), ec);
    tag = info.ReparseTag;
    return true;
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
    return filled_text(ec, [&](wchar_t *buffer, DWORD room) {
        return ::GetFullPathNameW(text.c_str(), room, buffer, nullptr);
    });
}

std::wstring current_path(std::error_code &ec)
{
    return filled_text(
        ec, [](wchar_t *buffer, DWORD room) { return ::GetCurrentDirectoryW(room, buffer); });
}

void current_path(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    if (!::SetCurrentDirectoryW(text.c_str()))
        ec = system_code(::GetLastError());
}

std::filesystem::file_status status(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    attribute_query const query(text);
    DWORD attributes = query.data.dwFileAttributes;
    bool is_known = !query.has_failed || fail(query.code, ec);
    if (is_known && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        is_known = query_behind_link(text, attributes, ec);
    return is_known ? status_of(attributes) : status_of_failure(ec);
}

std::filesystem::file_status symlink_status(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    attribute_query const query(text);
    DWORD const attributes = query.data.dwFileAttributes;
    bool is_known = !query.has_failed || fail(query.code, ec);
    DWORD tag = 0;
    if (is_known && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        is_known = query_tag(text, tag, ec);
    if (!is_known)
        return status_of_failure(ec);
    std::filesystem::file_status const plain = status_of(attributes);
    return std::filesystem::file_status(type_of_tag(tag, plain.type()), plain.permissions());
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

} // namespace fl::filesystem::detail::standard
