#include "flfs/link_reading.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "platform/owned_handle.hpp"
#include "platform/shell_link_object.hpp"

#include <winioctl.h>

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

link_kind kind_of(windows::attrib_link_type link_type)
{
    switch (link_type) {
    case windows::link_type_symlink_relative:
        return link_kind::symbolic_link_relative;
    case windows::link_type_symlink_absolute:
        return link_kind::symbolic_link_absolute;
    case windows::link_type_mount_point:
        return link_kind::junction;
    case windows::link_type_volume_mount:
        return link_kind::volume_mount_point;
    case windows::link_type_dedup_file:
        return link_kind::deduplicated_file;
    case windows::link_type_dfs_directory:
        return link_kind::dfs_directory;
    case windows::link_type_none:
        break;
    }
    return link_kind::other_reparse_point;
}

bool leads_somewhere(link_kind kind)
{
    return kind == link_kind::symbolic_link_relative || kind == link_kind::symbolic_link_absolute ||
           kind == link_kind::junction || kind == link_kind::volume_mount_point;
}

bool is_shortcut_name(std::u16string_view pathname)
{
    constexpr std::u16string_view extension = u".lnk";
    return pathname.size() > extension.size() &&
           pathname.substr(pathname.size() - extension.size()) == extension;
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
    switch (kind) {
    case link_kind::symbolic_link_relative:
        return "symbolic link, relative";
    case link_kind::symbolic_link_absolute:
        return "symbolic link, absolute";
    case link_kind::junction:
        return "junction";
    case link_kind::volume_mount_point:
        return "volume mount point";
    case link_kind::deduplicated_file:
        return "deduplicated file, no link";
    case link_kind::dfs_directory:
        return "DFS directory, no link";
    case link_kind::shortcut:
        return "shortcut";
    case link_kind::other_reparse_point:
        break;
    }
    return "reparse point of another kind";
}

char const *identifier(link_kind kind)
{
    switch (kind) {
    case link_kind::symbolic_link_relative:
        return "symbolic_link_relative";
    case link_kind::symbolic_link_absolute:
        return "symbolic_link_absolute";
    case link_kind::junction:
        return "junction";
    case link_kind::volume_mount_point:
        return "volume_mount_point";
    case link_kind::deduplicated_file:
        return "deduplicated_file";
    case link_kind::dfs_directory:
        return "dfs_directory";
    case link_kind::shortcut:
        return "shortcut";
    case link_kind::other_reparse_point:
        break;
    }
    return "other_reparse_point";
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
    link found{native, kind_of(link_type), {}, tag_of(data), fs::detail::from_filesystem(target)};
    if (leads_somewhere(found.kind))
        found.text = fs::read_symlink(native);
    return found;
}

} // namespace flfs
