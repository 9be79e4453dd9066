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

#include <fl/filesystem/windows.hpp>

#include "pathname/root_length.hpp"

#include <cstddef>
#include <string_view>

namespace fl::filesystem::detail {

template <typename Char>
constexpr windows::path_type_enum classify_path_type(std::basic_string_view<Char> text)
{
    // \\?\UNC\server\share
    if (is_long_unc_prefix_at(text, 0))
        return unc_root_length(text, 8) > 0 ? windows::PATH_TYPE_LONG_UNC
                                            : windows::PATH_TYPE_INVALID;
    // \\?\C:\foo
    if (is_long_prefix_at(text, 0)) {
        if (!is_drive_at(text, 4))
            return windows::PATH_TYPE_INVALID;
        return is_backslash(unit_at(text, 6)) ? windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE
                                              : windows::PATH_TYPE_LONG_DRIVE_RELATIVE;
    }
    // \\.\COM1
    if (is_device_prefix_at(text, 0))
        return windows::PATH_TYPE_DEVICE;
    // \\server\share
    if (is_unc_prefix_at(text, 0))
        return unc_root_length(text, 2) > 0 ? windows::PATH_TYPE_UNC : windows::PATH_TYPE_INVALID;
    // C:\foo
    if (is_drive_at(text, 0))
        return is_backslash(unit_at(text, 2)) ? windows::PATH_TYPE_DRIVE_ABSOLUTE
                                              : windows::PATH_TYPE_DRIVE_RELATIVE;
    // \foo
    return is_backslash(unit_at(text, 0)) ? windows::PATH_TYPE_ROOTED : windows::PATH_TYPE_RELATIVE;
}

/// The server and share of `analyse_path_root`, for `type` `PATH_TYPE_UNC` or
/// `PATH_TYPE_LONG_UNC`. The search for the end of the server starts one unit
/// behind the prefix, so that the unit right behind it is never taken for it.
/// Dots are looked for only in a share with a backslash behind it.
template <typename Char>
constexpr std::size_t analyse_unc_root(std::basic_string_view<Char> text,
                                       windows::path_type_enum &type)
{
    bool const is_long = type == windows::PATH_TYPE_LONG_UNC;
    std::size_t const server_end = find_backslash(text, is_long ? 9 : 3);
    if (server_end == text.size()) {
        type = windows::PATH_TYPE_INVALID;
        return 0;
    }
    std::size_t const share = server_end + 1;
    std::size_t const share_end = find_backslash(text, share);
    if (share_end == text.size()) {
        type = is_long ? windows::PATH_TYPE_LONG_UNC_NO_ROOT : windows::PATH_TYPE_UNC_NO_ROOT;
        return text.size();
    }
    if (is_dot_element(text, share, share_end - share)) {
        type = windows::PATH_TYPE_INVALID;
        return 0;
    }
    return share_end + 1;
}

/// Whether `text` begins with `\\?\UNC\` and has room for a server and a share
/// behind it. Throws `foundation::ustring::CtypeInvalidCharacter` on a unit above
/// 127 ahead of the first difference.
template <typename Char>
constexpr bool begins_with_long_unc_prefix(std::basic_string_view<Char> text)
{
    constexpr std::size_t shortest = 11; // the prefix and `a\b`
    std::basic_string_view<Char> const prefix = pathname_traits<Char>::LONG_UNC_PATHNAME_PREFIX;
    return text.size() >= shortest &&
           compare_ignoring_case(text.substr(0, prefix.size()), prefix) == 0;
}

/// Returns the root length of `text` and sets `type`. Throws
/// `foundation::ustring::CtypeInvalidCharacter` on a text such as `\\?\` followed
/// by a letter outside ASCII.
template <typename Char>
constexpr std::size_t analyse_path_root(std::basic_string_view<Char> text,
                                        windows::path_type_enum &type)
{
    using traits = pathname_traits<Char>;
    // C:\ or C:
    if (is_drive_at(text, 0)) {
        std::size_t const length = drive_root_length(text, 0);
        type = length == 3 ? windows::PATH_TYPE_DRIVE_ABSOLUTE : windows::PATH_TYPE_DRIVE_RELATIVE;
        return length;
    }
    // foo
    if (!is_backslash(unit_at(text, 0))) {
        type = windows::PATH_TYPE_RELATIVE;
        return 0;
    }
    // \foo
    if (!is_backslash(unit_at(text, 1))) {
        type = windows::PATH_TYPE_ROOTED;
        return 1;
    }
    // \\ and up to two units: too short for a server and a share
    if (text.size() <= 4) {
        type = windows::PATH_TYPE_INVALID;
        return 0;
    }
    // \\server\share
    if (text[2] != static_cast<Char>('?') && text[2] != traits::DOT_CHARACTER) {
        type = windows::PATH_TYPE_UNC;
        return analyse_unc_root(text, type);
    }
    // \\?\C:\foo
    std::basic_string_view<Char> const long_prefix = traits::LONG_PATHNAME_PREFIX;
    if (text.substr(0, long_prefix.size()) == long_prefix && is_drive_at(text, 4)) {
        std::size_t const length = drive_root_length(text, 4);
        type = length == 7 ? windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE
                           : windows::PATH_TYPE_LONG_DRIVE_RELATIVE;
        return length;
    }
    // \\?\UNC\server\share
    if (begins_with_long_unc_prefix(text)) {
        type = windows::PATH_TYPE_LONG_UNC;
        return analyse_unc_root(text, type);
    }
    // \\.\COM1
    std::basic_string_view<Char> const device_prefix = traits::DEVICE_PATHNAME_PREFIX;
    if (text.substr(0, device_prefix.size()) == device_prefix) {
        type = windows::PATH_TYPE_DEVICE;
        return device_prefix.size();
    }
    // \\?\foo and its like, which look rooted and name nothing that a link may
    type = windows::PATH_TYPE_RELATIVE;
    return 0;
}

} // namespace fl::filesystem::detail

#endif
