#include "flfs/link_reading.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/library_inside.hpp"

#include <winioctl.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace flfs {

namespace fs = fl::filesystem;
namespace windows = fl::filesystem::detail::windows;

namespace {

/// Returns the system's code, 0 on success.
DWORD read_reparse_point(std::u16string const &absolute, windows::reparse_data_context &data)
{
    std::wstring const name =
        fs::detail::make_access_form(std::wstring(absolute.begin(), absolute.end()));
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
    fs::detail::file_handle const file(::CreateFileW(name.c_str(), FILE_READ_ATTRIBUTES, share,
                                                     nullptr, OPEN_EXISTING, flags, nullptr));
    DWORD code = ::GetLastError();
    if (!file)
        return code;
    DWORD returned = 0;
    bool const is_read = ::DeviceIoControl(file.get(), FSCTL_GET_REPARSE_POINT, nullptr, 0,
                                           data.buffer, sizeof data.buffer, &returned, nullptr);
    code = ::GetLastError();
    return is_read ? ERROR_SUCCESS : code;
}

std::uint32_t tag_of(windows::reparse_data_context const &data)
{
    std::uint32_t tag = 0;
    for (unsigned int i = 0; i < 4; ++i)
        tag |= std::uint32_t{data.buffer[i]} << (8 * i);
    return tag;
}

struct kind_row
{
    link_kind kind;
    windows::attrib_link_type type; ///< as the library tells it
    bool leads_somewhere;
    char const *description;
    char const *identifier;
};

constexpr kind_row kind_rows[] = {
    {link_kind::symbolic_link_relative, windows::link_type_symlink_relative, true,
     "symbolic link, relative", "symbolic_link_relative"},
    {link_kind::symbolic_link_absolute, windows::link_type_symlink_absolute, true,
     "symbolic link, absolute", "symbolic_link_absolute"},
    {link_kind::junction, windows::link_type_mount_point, true, "junction", "junction"},
    {link_kind::volume_mount_point, windows::link_type_volume_mount, true, "volume mount point",
     "volume_mount_point"},
    {link_kind::deduplicated_file, windows::link_type_dedup_file, false,
     "deduplicated file, no link", "deduplicated_file"},
    {link_kind::dfs_directory, windows::link_type_dfs_directory, false, "DFS directory, no link",
     "dfs_directory"},
    {link_kind::other_reparse_point, windows::link_type_none, false,
     "reparse point of another kind", "other_reparse_point"},
    {link_kind::shortcut, windows::link_type_none, true, "shortcut",
     "shortcut"}, // no reparse point
};

/// The first row with this value.
template <typename Value>
kind_row const &row_with(Value kind_row::*member, Value value)
{
    return *std::find_if(std::begin(kind_rows), std::end(kind_rows),
                         [=](kind_row const &row) { return row.*member == value; });
}

bool is_shortcut_name(std::u16string_view pathname)
{
    constexpr std::u16string_view extension = u".lnk";
    return pathname.size() > extension.size() && pathname.ends_with(extension);
}

link read_shortcut(std::u16string const &native, std::u16string const &absolute)
{
    wchar_t buffer[MAX_PATH] = {};
    HRESULT const result =
        fs::detail::read_stored_path(std::wstring(absolute.begin(), absolute.end()), buffer);
    if (FAILED(result))
        throw fs::SystemError(fs::detail::hresult_to_win32(result), native, {});
    buffer[std::size(buffer) - 1] = L'\0';
    std::u16string const target = fs::detail::from_filesystem(buffer);
    return {native, link_kind::shortcut, target, {}, target};
}

/// Throws what the library makes of a name that is no link.
[[noreturn]] void refuse(std::u16string const &native, DWORD code)
{
    fs::read_symlink(native);
    throw fs::SystemError(code, native, {}); // it has become a link in between
}

} // namespace

char const *description(link_kind kind)
{
    return row_with(&kind_row::kind, kind).description;
}

char const *identifier(link_kind kind)
{
    return row_with(&kind_row::kind, kind).identifier;
}

link read_link(std::u16string const &pathname)
{
    std::u16string const native = fs::upath(pathname).native();
    if (native.empty())
        throw fs::InvalidArgument("Empty Path not permitted", {}, {});
    std::u16string const absolute = fs::absolute(native);
    windows::reparse_data_context data{};
    DWORD const code = read_reparse_point(absolute, data);
    if (code == ERROR_NOT_A_REPARSE_POINT && is_shortcut_name(native))
        return read_shortcut(native, absolute);
    if (code != ERROR_SUCCESS)
        refuse(native, code);
    windows::attrib_link_type link_type{};
    std::wstring const target = windows::get_target_path_bridge(link_type, data);
    kind_row const &row = row_with(&kind_row::type, link_type);
    link found{native, row.kind, {}, tag_of(data), fs::detail::from_filesystem(target)};
    if (row.leads_somewhere)
        found.text = fs::read_symlink(native);
    return found;
}

} // namespace flfs
