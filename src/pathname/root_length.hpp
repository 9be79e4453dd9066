#ifndef FL_FILESYSTEM_SRC_PATHNAME_ROOT_LENGTH_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_ROOT_LENGTH_HPP
// How many units of a pathname are its root, a trailing backslash included. There
// are two answers for a server pathname, and both are meant:
//
// - `root_path_length` ends behind the server. Decomposition, composition and
//   `is_absolute` go by it; it is exported as `get_root_path_length`.
// - `element_root_length` ends behind the share, which nothing can climb out of.
//   `extract_pathname_elements` and the code that follows links go by it.

#include "failure/throw.hpp"
#include "pathname/shapes.hpp"

#include <cstddef>
#include <string_view>

namespace fl::filesystem::detail {

/// The index behind the second backslash at or after `from`, or the size of the
/// text if there are no two.
template <typename Char>
constexpr std::size_t skip_two_separators(std::basic_string_view<Char> text, std::size_t from)
{
    std::size_t const first = find_backslash(text, from);
    if (first == text.size())
        return text.size();
    std::size_t const second = find_backslash(text, first + 1);
    return second == text.size() ? text.size() : second + 1;
}

/// The index behind the first backslash at or after `from`, or the size of the
/// text.
template <typename Char>
constexpr std::size_t skip_next_separator(std::basic_string_view<Char> text, std::size_t from)
{
    std::size_t const found = find_backslash(text, from);
    return found == text.size() ? text.size() : found + 1;
}

/// The root length of a server and share whose server begins at `start`, or 0 if
/// they are not both there.
template <typename Char>
constexpr std::size_t unc_root_length(std::basic_string_view<Char> text, std::size_t start)
{
    std::size_t const server_end = find_backslash(text, start);
    if (server_end + 1 >= text.size()) // no separator, or nothing behind it
        return 0;
    if (is_dot_element(text, start, server_end - start))
        return 0;
    std::size_t const share = server_end + 1;
    std::size_t const share_end = find_backslash(text, share);
    if (is_dot_element(text, share, share_end - share))
        return 0;
    return share_end == text.size() ? text.size() : share_end + 1;
}

/// The same for callers to whom a missing share is an error of the argument.
/// Throws `InvalidArgument` "UNC root path length can not be zero".
template <typename Char>
std::size_t checked_unc_root_length(std::basic_string_view<Char> text, std::size_t start)
{
    std::size_t const length = unc_root_length(text, start);
    if (length == 0)
        throw_invalid_argument("UNC root path length can not be zero");
    return length;
}

/// The root length of a text that begins with a drive at `at`.
template <typename Char>
constexpr std::size_t drive_root_length(std::basic_string_view<Char> text, std::size_t at)
{
    return is_backslash(unit_at(text, at + drive_size)) ? at + drive_root_size : at + drive_size;
}

template <typename Char>
constexpr std::size_t root_path_length(std::basic_string_view<Char> text)
{
    // C:\ or C:
    if (is_drive_at(text, 0))
        return drive_root_length(text, 0);
    // \\server\ or \\server
    if (is_unc_prefix_at(text, 0))
        return skip_next_separator(text, server_prefix_size);
    // \\?\UNC\server\ or \\?\UNC\server
    if (is_long_unc_prefix_at(text, 0))
        return skip_next_separator(text, long_unc_prefix_size);
    // \\?\C:\, and any other name behind the prefix
    if (is_long_prefix_at(text, 0))
        return skip_next_separator(text, long_prefix_size);
    // \foo or foo
    return is_backslash(unit_at(text, 0)) ? 1 : 0;
}

/// The drive or server that `text` begins with, without a backslash behind it.
template <typename Char>
constexpr std::basic_string_view<Char> root_name(std::basic_string_view<Char> text)
{
    std::size_t const root = root_path_length(text);
    if (root == 0)
        return {};
    return text.substr(0, is_backslash(text[root - 1]) ? root - 1 : root);
}

template <typename Char>
constexpr std::size_t element_root_length(std::basic_string_view<Char> text)
{
    // C:\ or C:
    if (is_drive_at(text, 0))
        return drive_root_length(text, 0);
    // \\server\share\ or \\server\share
    if (is_unc_prefix_at(text, 0))
        return skip_two_separators(text, server_prefix_size);
    // \\?\UNC\server\share\ or \\?\UNC\server\share
    if (is_long_unc_prefix_at(text, 0))
        return skip_two_separators(text, long_unc_prefix_size);
    // \\?\C:\, and any other two names behind the prefix
    if (is_long_prefix_at(text, 0))
        return is_drive_at(text, long_prefix_size) ? drive_root_length(text, long_prefix_size)
                                                   : skip_two_separators(text, long_prefix_size);
    // \foo or foo
    return is_backslash(unit_at(text, 0)) ? 1 : 0;
}

} // namespace fl::filesystem::detail

#endif
