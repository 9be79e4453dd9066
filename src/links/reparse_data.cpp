#include "links/reparse_data.hpp"

#include <fl/filesystem/pathname_traits.hpp>
#include <fl/filesystem/windows.hpp>

#include "failure/demanded_attributes.hpp"
#include "pathname/shapes.hpp"
#include "platform/attribute_query.hpp"
#include "platform/reparse_point.hpp"

#include <algorithm>

namespace fl::filesystem::detail {

namespace {

using traits = pathname_traits<wchar_t>;

constexpr std::uint32_t relative_flag = 1; // SYMLINK_FLAG_RELATIVE

/// The link's name with backslashes only.
std::wstring native_link_name(reparse_bytes bytes)
{
    std::wstring name = link_name(bytes);
    std::replace(name.begin(), name.end(), traits::GENERIC_PATHNAME_SEPARATOR_CHARACTER,
                 traits::PATHNAME_SEPARATOR_CHARACTER);
    return name;
}

/// Whether a mount point's name is that of a volume, which is no pathname. The prefix
/// alone names none.
bool is_volume_name(std::wstring_view name)
{
    std::wstring_view const prefix = traits::VOLUME_NAME_PREFIX;
    return name.size() > prefix.size() &&
           compare_ignoring_case(name.substr(0, prefix.size()), prefix) == 0;
}

/// The name that the system follows is `\??\C:\dir\`, the object manager's form of
/// what people write as `C:\dir`.
void strip_object_prefix(std::wstring &name)
{
    std::wstring_view const prefix = traits::MOUNT_POINT_PREFIX;
    if (!name.starts_with(prefix))
        return;
    name.erase(0, prefix.size());
    if (ends_in_backslash<wchar_t>(name))
        name.pop_back();
}

std::wstring mount_point_target(windows::attrib_link_type &link_type, reparse_bytes bytes)
{
    std::wstring name = native_link_name(bytes);
    if (is_volume_name(name)) {
        link_type = windows::link_type_volume_mount;
        return {};
    }
    link_type = windows::link_type_mount_point;
    strip_object_prefix(name);
    return name;
}

windows::attrib_link_type type_without_target(std::uint32_t tag) noexcept
{
    if (tag == std::uint32_t{IO_REPARSE_TAG_DEDUP})
        return windows::link_type_dedup_file;
    if (tag == std::uint32_t{IO_REPARSE_TAG_DFS})
        return windows::link_type_dfs_directory;
    return windows::link_type_none;
}

} // namespace

bool can_be_link(std::uint32_t attributes) noexcept
{
    constexpr std::uint32_t reparse_point = FILE_ATTRIBUTE_REPARSE_POINT;
    return (attributes & (reparse_point | FILE_ATTRIBUTE_SPARSE_FILE)) == reparse_point;
}

unsigned int read_reparse_data(windows::reparse_data_context &data,
                               std::wstring const &path) noexcept
{
    std::fill(std::begin(data.buffer), std::end(data.buffer), static_cast<unsigned char>(0));
    auto const [file, code] = open_reparse_point(path, FILE_READ_EA);
    if (!file)
        return code; // even 0: the zeros in the buffer are then what was read
    return get_reparse_point(file, data.buffer);
}

bool read_link_data(windows::reparse_data_context &data, std::wstring const &path,
                    std::uint32_t attributes) noexcept
{
    return can_be_link(attributes) && read_reparse_data(data, path) == ERROR_SUCCESS &&
           is_link_tag(reparse_tag(data));
}

std::uint32_t reparse_tag(windows::reparse_data_context const &data) noexcept
{
    return reparse_tag(reparse_bytes(data.buffer));
}

std::wstring windows::get_target_path_bridge(attrib_link_type &link_type,
                                             reparse_data_context const &data)
{
    reparse_bytes const bytes(data.buffer);
    std::uint32_t const tag = reparse_tag(bytes);
    if (tag == std::uint32_t{IO_REPARSE_TAG_MOUNT_POINT})
        return mount_point_target(link_type, bytes);
    if (tag == std::uint32_t{IO_REPARSE_TAG_SYMLINK}) {
        // equal, not just set: a flag that nobody knows makes it another kind of link
        bool const is_relative = symbolic_link_flags(bytes) == relative_flag;
        link_type = is_relative ? link_type_symlink_relative : link_type_symlink_absolute;
        return native_link_name(bytes);
    }
    link_type = type_without_target(tag);
    return {};
}

std::wstring read_link_target(std::wstring const &path, windows::attrib_link_type &link_type)
{
    DWORD const attributes = demand_attribute_data(path).dwFileAttributes;
    windows::reparse_data_context data;
    if (!read_link_data(data, path, attributes))
        return {};
    return windows::get_target_path_bridge(link_type, data);
}

std::wstring read_link_text(std::wstring const &path, windows::attrib_link_type &link_type,
                            unsigned int &error)
{
    attribute_query const query(path);
    if (query.has_failed) {
        error = query.code;
        return {};
    }
    windows::reparse_data_context data;
    if (!read_link_data(data, path, query.data.dwFileAttributes))
        return {};
    return windows::get_target_path_bridge(link_type, data);
}

} // namespace fl::filesystem::detail
