#ifndef FL_FILESYSTEM_SRC_PATHNAME_SHAPES_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_SHAPES_HPP
// The shapes that a pathname, or a part of it from index `at` on, begins with.
// Prefixes may be written with either separator; only backslashes bound elements.
// Every text is a view of just the units that count.

#include <fl/filesystem/pathname_traits.hpp>

#include "pathname/characters.hpp"

#include <cstddef>
#include <string_view>

namespace fl::filesystem::detail {

template <typename Char>
inline constexpr Char backslash = pathname_traits<Char>::PATHNAME_SEPARATOR_CHARACTER;

inline constexpr std::size_t drive_size = 2;           // C:
inline constexpr std::size_t drive_root_size = 3;      // the same with its backslash
inline constexpr std::size_t server_prefix_size = 2;   // the two backslashes ahead of a server
inline constexpr std::size_t device_prefix_size = 4;   // \\.\ ahead of a device
inline constexpr std::size_t long_prefix_size = 4;     // \\?\ ahead of a drive
inline constexpr std::size_t long_unc_prefix_size = 8; // \\?\UNC\ ahead of a server

/// The unit at `at`, or NUL behind the end, where a C string has its terminator.
template <typename Char>
constexpr Char unit_at(std::basic_string_view<Char> text, std::size_t at)
{
    return at < text.size() ? text[at] : Char();
}

template <typename Char>
constexpr bool is_backslash(Char unit)
{
    return unit == backslash<Char>;
}

template <typename Char>
constexpr bool is_separator(Char unit)
{
    return is_backslash(unit) ||
           unit == pathname_traits<Char>::GENERIC_PATHNAME_SEPARATOR_CHARACTER;
}

template <typename Char>
constexpr bool ends_in_backslash(std::basic_string_view<Char> text)
{
    return !text.empty() && is_backslash(text.back());
}

/// The index of the first backslash at or after `from`, or the size of the text.
template <typename Char>
constexpr std::size_t find_backslash(std::basic_string_view<Char> text, std::size_t from)
{
    std::size_t const found = text.find(backslash<Char>, from);
    return found == text.npos ? text.size() : found;
}

// C:
template <typename Char>
constexpr bool is_drive_at(std::basic_string_view<Char> text, std::size_t at)
{
    return text.size() >= at + drive_size && is_letter(text[at]) &&
           text[at + 1] == pathname_traits<Char>::VOLUME_SEPARATOR_CHARACTER;
}

// Two separators, `mark`, and a third separator.
template <typename Char>
constexpr bool is_marked_prefix_at(std::basic_string_view<Char> text, std::size_t at, Char mark)
{
    return text.size() >= at + long_prefix_size && is_separator(text[at]) &&
           is_separator(text[at + 1]) && text[at + 2] == mark && is_separator(text[at + 3]);
}

// \\.\ of a device.
template <typename Char>
constexpr bool is_device_prefix_at(std::basic_string_view<Char> text, std::size_t at)
{
    return is_marked_prefix_at(text, at, pathname_traits<Char>::DOT_CHARACTER);
}

// \\?\ of any long pathname, that of a server included.
template <typename Char>
constexpr bool is_long_prefix_at(std::basic_string_view<Char> text, std::size_t at)
{
    return is_marked_prefix_at(text, at, static_cast<Char>('?'));
}

// \\?\UNC\ of a long server pathname, with its letters in any case.
template <typename Char>
constexpr bool is_long_unc_prefix_at(std::basic_string_view<Char> text, std::size_t at)
{
    return text.size() >= at + long_unc_prefix_size && is_long_prefix_at(text, at) &&
           lower_case_or_same(text[at + 4]) == static_cast<Char>('u') &&
           lower_case_or_same(text[at + 5]) == static_cast<Char>('n') &&
           lower_case_or_same(text[at + 6]) == static_cast<Char>('c') && is_separator(text[at + 7]);
}

// \\server: two separators that begin neither a long nor a device prefix.
template <typename Char>
constexpr bool is_unc_prefix_at(std::basic_string_view<Char> text, std::size_t at)
{
    if (text.size() < at + server_prefix_size || !is_separator(text[at]) ||
        !is_separator(text[at + 1]))
        return false;
    if (text.size() < at + long_prefix_size)
        return true;
    Char const mark = text[at + 2];
    bool const marked =
        mark == static_cast<Char>('?') || mark == pathname_traits<Char>::DOT_CHARACTER;
    return !marked || !is_separator(text[at + 3]);
}

/// Whether the `count` units from `at` on are "." or "..".
template <typename Char>
constexpr bool is_dot_element(std::basic_string_view<Char> text, std::size_t at, std::size_t count)
{
    constexpr Char dot = pathname_traits<Char>::DOT_CHARACTER;
    if (count == 1)
        return unit_at(text, at) == dot;
    return count == 2 && unit_at(text, at) == dot && unit_at(text, at + 1) == dot;
}

/// `.` or `..`, which every directory but a root tells of itself and its parent.
template <typename Char>
constexpr bool is_dot_name(std::basic_string_view<Char> name)
{
    return is_dot_element(name, 0, name.size());
}

/// Whether the system, without a long prefix, would take another name than this one: it drops
/// blanks and full stops from the end.
template <typename Char>
constexpr bool loses_its_end(std::basic_string_view<Char> name)
{
    return !name.empty() && (name.back() == static_cast<Char>(' ') ||
                             name.back() == pathname_traits<Char>::DOT_CHARACTER);
}

} // namespace fl::filesystem::detail

#endif
