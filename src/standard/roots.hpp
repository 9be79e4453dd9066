#ifndef FL_FILESYSTEM_SRC_STANDARD_ROOTS_HPP
#define FL_FILESYSTEM_SRC_STANDARD_ROOTS_HPP
// How the standard facility reads the root of a pathname. Unlike the library's own
// grammar it takes either separator everywhere, and a server without a share for a root.

#include "pathname/shapes.hpp"

#include <cstddef>
#include <string_view>

namespace fl::filesystem::detail::standard {

/// The index of the first separator of either kind at or after `from`, or the
/// size of the text.
template <typename Char>
std::size_t find_separator(std::basic_string_view<Char> text, std::size_t from)
{
    while (from < text.size() && !is_separator(text[from]))
        ++from;
    return from;
}

/// The index of the first unit at or after `from` that is no separator, or the
/// size of the text.
template <typename Char>
std::size_t skip_separators(std::basic_string_view<Char> text, std::size_t from)
{
    while (from < text.size() && is_separator(text[from]))
        ++from;
    return from;
}

/// Whether `text` begins with one of `\\?\`, `\\.\` and `\??\`, and no further
/// separator stands behind it.
template <typename Char>
bool has_namespace_prefix(std::basic_string_view<Char> text)
{
    if (is_separator(unit_at(text, 4)))
        return false;
    bool const is_object_prefix = text.size() >= 4 && is_separator(text[0]) && text[1] == '?' &&
                                  text[2] == '?' && is_separator(text[3]);
    return is_object_prefix || is_long_prefix_at(text, 0) || is_device_prefix_at(text, 0);
}

/// The length of the root name: drive, server, or prefix without its last
/// separator.
template <typename Char>
std::size_t root_name_length(std::basic_string_view<Char> text)
{
    // C:
    if (is_drive_at(text, 0))
        return 2;
    // \\? of \\?\foo
    if (has_namespace_prefix(text))
        return 3;
    // \\server
    bool const is_server = text.size() >= 3 && is_separator(text[0]) && is_separator(text[1]) &&
                           !is_separator(text[2]);
    return is_server ? find_separator(text, 2) : 0;
}

} // namespace fl::filesystem::detail::standard

#endif
