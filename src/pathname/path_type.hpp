#ifndef FL_FILESYSTEM_SRC_PATHNAME_PATH_TYPE_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_PATH_TYPE_HPP
// What kind of pathname a text is. There are two classifiers, and they are not
// interchangeable:
//
// - `classify_path_type` takes text with either separator in its prefix. It wants
//   server and share both there, and doesn't ask for a backslash behind the share.
// - `analyse_path_root` takes text with backslashes only, gives the root length,
//   too, and tells a share with a backslash from one without. The code that
//   follows links goes by it.

#include <fl/filesystem/windows_types.hpp>

#include "pathname/root_length.hpp"

#include <cstddef>
#include <string_view>

namespace fl::filesystem::detail {

template <typename Char>
constexpr windows::path_type_enum classify_path_type(std::basic_string_view<Char> text)
{
    // \\?\UNC\server\share
    if (is_long_unc_prefix_at(text, 0))
        return unc_root_length(text, long_unc_prefix_size) > 0 ? windows::PATH_TYPE_LONG_UNC
                                                               : windows::PATH_TYPE_INVALID;
    // \\?\C:\foo
    if (is_long_prefix_at(text, 0)) {
        if (!is_drive_at(text, long_prefix_size))
            return windows::PATH_TYPE_INVALID;
        return is_backslash(unit_at(text, long_prefix_size + drive_size))
                   ? windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE
                   : windows::PATH_TYPE_LONG_DRIVE_RELATIVE;
    }
    // \\.\COM1
    if (is_device_prefix_at(text, 0))
        return windows::PATH_TYPE_DEVICE;
    // \\server\share
    if (is_unc_prefix_at(text, 0))
        return unc_root_length(text, server_prefix_size) > 0 ? windows::PATH_TYPE_UNC
                                                             : windows::PATH_TYPE_INVALID;
    // C:\foo
    if (is_drive_at(text, 0))
        return is_backslash(unit_at(text, drive_size)) ? windows::PATH_TYPE_DRIVE_ABSOLUTE
                                                       : windows::PATH_TYPE_DRIVE_RELATIVE;
    // \foo
    return is_backslash(unit_at(text, 0)) ? windows::PATH_TYPE_ROOTED : windows::PATH_TYPE_RELATIVE;
}

/// A root: how many units it has, and of which type of pathname it is.
struct analysed_root
{
    windows::path_type_enum type;
    std::size_t length;
};

/// The root of a server and share behind a prefix of `prefix_size` units. The search for
/// the end of the server starts one unit behind the prefix, so that the unit right behind
/// it is never taken for it. Dots are looked for only in a share with a backslash behind it.
template <typename Char>
constexpr analysed_root analyse_unc_root(std::basic_string_view<Char> text, std::size_t prefix_size)
{
    bool const is_long = prefix_size == long_unc_prefix_size;
    std::size_t const server_end = find_backslash(text, prefix_size + 1);
    if (server_end == text.size())
        return {windows::PATH_TYPE_INVALID, 0};
    std::size_t const share = server_end + 1;
    std::size_t const share_end = find_backslash(text, share);
    if (share_end == text.size())
        return {is_long ? windows::PATH_TYPE_LONG_UNC_NO_ROOT : windows::PATH_TYPE_UNC_NO_ROOT,
                text.size()};
    if (is_dot_element(text, share, share_end - share))
        return {windows::PATH_TYPE_INVALID, 0};
    return {is_long ? windows::PATH_TYPE_LONG_UNC : windows::PATH_TYPE_UNC, share_end + 1};
}

/// Whether `text` begins with `\\?\UNC\` and has room for a server and a share
/// behind it. Throws `foundation::ustring::CtypeInvalidCharacter` on a unit above
/// 127 ahead of the first difference.
template <typename Char>
constexpr bool begins_with_long_unc_prefix(std::basic_string_view<Char> text)
{
    constexpr std::size_t shortest = long_unc_prefix_size + 3; // the prefix and `a\b`
    std::basic_string_view<Char> const prefix = pathname_traits<Char>::LONG_UNC_PATHNAME_PREFIX;
    return text.size() >= shortest &&
           compare_ignoring_case(text.substr(0, prefix.size()), prefix) == 0;
}

/// The root of a text that has a drive at `at`, and the one or the other type by the separator
/// behind it.
template <typename Char>
constexpr analysed_root analyse_drive_root(std::basic_string_view<Char> text, std::size_t at,
                                           windows::path_type_enum absolute,
                                           windows::path_type_enum relative)
{
    std::size_t const length = drive_root_length(text, at);
    return {length == at + drive_root_size ? absolute : relative, length};
}

/// The root of `text`. Throws `foundation::ustring::CtypeInvalidCharacter` on a text such
/// as `\\?\` followed by a letter outside ASCII.
template <typename Char>
constexpr analysed_root analyse_path_root(std::basic_string_view<Char> text)
{
    using traits = pathname_traits<Char>;
    // C:\ or C:
    if (is_drive_at(text, 0))
        return analyse_drive_root(text, 0, windows::PATH_TYPE_DRIVE_ABSOLUTE,
                                  windows::PATH_TYPE_DRIVE_RELATIVE);
    // foo
    if (!is_backslash(unit_at(text, 0)))
        return {windows::PATH_TYPE_RELATIVE, 0};
    // \foo
    if (!is_backslash(unit_at(text, 1)))
        return {windows::PATH_TYPE_ROOTED, 1};
    // \\ and up to two units: too short for a server and a share
    if (text.size() <= server_prefix_size + 2)
        return {windows::PATH_TYPE_INVALID, 0};
    // \\server\share
    Char const mark = text[server_prefix_size];
    if (mark != static_cast<Char>('?') && mark != traits::DOT_CHARACTER)
        return analyse_unc_root(text, server_prefix_size);
    // \\?\C:\foo
    if (text.starts_with(traits::LONG_PATHNAME_PREFIX) && is_drive_at(text, long_prefix_size))
        return analyse_drive_root(text, long_prefix_size, windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE,
                                  windows::PATH_TYPE_LONG_DRIVE_RELATIVE);
    // \\?\UNC\server\share
    if (begins_with_long_unc_prefix(text))
        return analyse_unc_root(text, long_unc_prefix_size);
    // \\.\COM1
    if (text.starts_with(traits::DEVICE_PATHNAME_PREFIX))
        return {windows::PATH_TYPE_DEVICE, device_prefix_size};
    // \\?\foo and its like, which look rooted and name nothing that a link may
    return {windows::PATH_TYPE_RELATIVE, 0};
}

} // namespace fl::filesystem::detail

#endif
