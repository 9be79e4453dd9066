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

struct reparse_kind
{
    windows::attrib_link_type type; ///< as the library tells it
    term kind;
    bool leads_somewhere = true;
};

constexpr reparse_kind reparse_kinds[] = {
    {windows::link_type_symlink_relative, {"symbolic link, relative", "symbolic_link_relative"}},
    {windows::link_type_symlink_absolute, {"symbolic link, absolute", "symbolic_link_absolute"}},
    {windows::link_type_mount_point, {"junction", "junction"}},
    {windows::link_type_volume_mount, {"volume mount point", "volume_mount_point"}},
    {windows::link_type_dedup_file, {"deduplicated file, no link", "deduplicated_file"}, false},
    {windows::link_type_dfs_directory, {"DFS directory, no link", "dfs_directory"}, false},
    {windows::link_type_none, {"reparse point of another kind", "other_reparse_point"}, false},
};

constexpr term shortcut = {"shortcut", "shortcut"}; // no reparse point

reparse_kind const &kind_of(windows::attrib_link_type type)
{
    return *std::find_if(std::begin(reparse_kinds), std::end(reparse_kinds),
                         [type](reparse_kind const &row) { return row.type == type; });
}

bool is_shortcut_name(std::u16string_view pathname)
{
    constexpr std::u16string_view extension = u".lnk";
    return pathname.size() > extension.size() && pathname.ends_with(extension);
}

link read_shortcut_file(std::u16string const &native, std::u16string const &absolute)
{
    wchar_t buffer[MAX_PATH] = {};
    HRESULT const result =
        fs::detail::read_stored_path(std::wstring(absolute.begin(), absolute.end()), buffer);
    if (FAILED(result))
        throw fs::SystemError(fs::detail::hresult_to_win32(result), native, {});
    buffer[std::size(buffer) - 1] = L'\0';
    return {native, shortcut, fs::detail::from_filesystem(buffer), {}};
}

/// Throws what the library makes of a name that is no link.
[[noreturn]] void refuse(std::u16string const &native, DWORD code)
{
    fs::read_symlink(native);
    throw fs::SystemError(code, native, {}); // it has become a link in between
}

} // namespace

term kind_of(fs::link_hop const &hop)
{
    switch (hop.kind) {
    case fs::link_kind::relative_symbolic_link:
        return kind_of(windows::link_type_symlink_relative).kind;
    case fs::link_kind::junction:
        return kind_of(windows::link_type_mount_point).kind;
    case fs::link_kind::shortcut:
        return shortcut;
    case fs::link_kind::symbolic_link:
        break;
    }
    return kind_of(windows::link_type_symlink_absolute).kind;
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
        return read_shortcut_file(native, absolute);
    if (code != ERROR_SUCCESS)
        refuse(native, code);
    windows::attrib_link_type link_type{};
    std::wstring const target = windows::get_target_path_bridge(link_type, data);
    reparse_kind const &found = kind_of(link_type);
    link one{native, found.kind, {}, tag_of(data), fs::detail::from_filesystem(target)};
    if (found.leads_somewhere)
        one.text = fs::read_symlink(native);
    return one;
}

} // namespace flfs
