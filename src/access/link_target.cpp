#include "access/link_target.hpp"

#include "pathname/expanded_path.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/native_form.hpp"
#include "pathname/root_length.hpp"

namespace fl::filesystem::detail {

namespace {

using windows::path_type_enum;

std::wstring collapse_separators(std::wstring const &text, std::size_t root)
{
    return collapse_separators_from<wchar_t>(text, 0, root);
}

path_type_enum unusable(std::wstring &target)
{
    target.clear();
    return windows::PATH_TYPE_INVALID;
}

// C:\foo, C: or C:foo
path_type_enum normalise_drive(std::wstring &target)
{
    target = collapse_separators(target, drive_size);
    if (!is_backslash(unit_at<wchar_t>(target, drive_size)))
        target = expand_drive_relative(target);
    return windows::PATH_TYPE_DRIVE_ABSOLUTE;
}

/// A server behind `prefix` units, which needs a share.
path_type_enum normalise_server(std::wstring &target, std::size_t prefix, path_type_enum type)
{
    if (target.size() == prefix)
        return unusable(target);
    target = collapse_separators(target, prefix);
    std::size_t const server_end = find_backslash<wchar_t>(target, prefix);
    return server_end + 1 < target.size() ? type : unusable(target);
}

// \\?\C:\foo or \\?\C:foo
path_type_enum normalise_long_drive(std::wstring &target)
{
    if (target.size() == long_prefix_size)
        return unusable(target);
    target = collapse_separators(target, long_prefix_size);
    if (!is_drive_at<wchar_t>(target, long_prefix_size))
        return windows::PATH_TYPE_INVALID; // and the text stays
    if (!is_backslash(unit_at<wchar_t>(target, long_prefix_size + drive_size)))
        target = expand_drive_relative(target.substr(long_prefix_size));
    return windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE;
}

} // namespace

path_type_enum normalise_link_target(std::wstring &target)
{
    std::wstring_view const text = target;
    // C:\foo
    if (is_drive_at(text, 0))
        return normalise_drive(target);
    // \\server\share
    if (is_unc_prefix_at(text, 0))
        return normalise_server(target, server_prefix_size, windows::PATH_TYPE_UNC);
    // \\?\UNC\server\share
    if (is_long_unc_prefix_at(text, 0))
        return normalise_server(target, long_unc_prefix_size, windows::PATH_TYPE_LONG_UNC);
    // \\?\C:\foo
    if (is_long_prefix_at(text, 0))
        return normalise_long_drive(target);
    // \foo or foo
    bool const is_rooted = is_backslash(unit_at(text, 0));
    target = collapse_separators(target, 0);
    return is_rooted ? windows::PATH_TYPE_ROOTED : windows::PATH_TYPE_RELATIVE;
}

bool is_server(path_type_enum type)
{
    return type == windows::PATH_TYPE_UNC || type == windows::PATH_TYPE_LONG_UNC;
}

std::size_t target_root_size(std::wstring_view target, path_type_enum type)
{
    switch (type) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return drive_root_size;
    case windows::PATH_TYPE_UNC:
        return element_root_length(target);
    case windows::PATH_TYPE_LONG_UNC:
        return checked_unc_root_length(target, long_unc_prefix_size);
    default: // the other absolute one
        return long_prefix_size + drive_root_size;
    }
}

std::wstring long_root(std::wstring_view text, std::size_t size, path_type_enum type)
{
    std::wstring_view const root = text.substr(0, size);
    if (type == windows::PATH_TYPE_DRIVE_ABSOLUTE || type == windows::PATH_TYPE_UNC)
        return with_long_prefix<wchar_t>(root, is_server(type));
    return std::wstring(root);
}

std::wstring_view without_trailing_separator(std::wstring_view text)
{
    if (ends_in_backslash(text) && element_root_length(text) != text.size())
        text.remove_suffix(1);
    return text;
}

} // namespace fl::filesystem::detail
