#ifndef FL_FILESYSTEM_SRC_PATHNAME_CHARACTERS_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_CHARACTERS_HPP
// Character classes and case of ASCII, whatever the process's locale: what is a
// drive letter must not depend on where a program runs.

#include "failure/throw.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

inline constexpr std::size_t ascii_size = 128;

struct ascii_tables
{
    std::array<bool, ascii_size> letter{};
    std::array<bool, ascii_size> white_space{};
    std::array<unsigned char, ascii_size> lower_case{};
};

consteval ascii_tables make_ascii_tables()
{
    ascii_tables tables;
    for (std::size_t unit = 0; unit < ascii_size; ++unit) {
        bool const upper = unit >= 'A' && unit <= 'Z';
        tables.letter[unit] = upper || (unit >= 'a' && unit <= 'z');
        tables.white_space[unit] = (unit >= '\t' && unit <= '\r') || unit == ' ';
        tables.lower_case[unit] = static_cast<unsigned char>(upper ? unit - 'A' + 'a' : unit);
    }
    return tables;
}

inline constexpr ascii_tables ascii = make_ascii_tables();

template <typename Char>
constexpr bool is_ascii(Char unit)
{
    // `wchar_t` is signed on some hosts: what has its top bit set is not ASCII either
    return static_cast<char32_t>(unit) < ascii_size;
}

/// A unit above 127 is no letter: only 26 drives have names.
template <typename Char>
constexpr bool is_letter(Char unit)
{
    return is_ascii(unit) && ascii.letter[static_cast<std::size_t>(unit)];
}

template <typename Char>
constexpr bool is_white_space(Char unit)
{
    return is_ascii(unit) && ascii.white_space[static_cast<std::size_t>(unit)];
}

/// For tests that a unit above 127 just fails: such a unit stays what it is.
template <typename Char>
constexpr Char lower_case_or_same(Char unit)
{
    return is_ascii(unit) ? static_cast<Char>(ascii.lower_case[static_cast<std::size_t>(unit)])
                          : unit;
}

/// Throws `foundation::ustring::CtypeInvalidCharacter` on a unit above 127.
template <typename Char>
constexpr int checked_lower_case(Char unit)
{
    if (!is_ascii(unit))
        throw_invalid_character();
    return ascii.lower_case[static_cast<std::size_t>(unit)];
}

/// Compares two texts without regard to case: the difference of the first two
/// units that differ, negative or positive if one text is the beginning of the
/// other, or zero. Throws `foundation::ustring::CtypeInvalidCharacter` on a unit
/// above 127 at or before that difference; what follows is not looked at.
template <typename Char>
constexpr int compare_ignoring_case(std::basic_string_view<Char> left,
                                    std::basic_string_view<Char> right)
{
    std::size_t const common = std::min(left.size(), right.size());
    for (std::size_t at = 0; at < common; ++at) {
        int const left_unit = checked_lower_case(left[at]);
        int const right_unit = checked_lower_case(right[at]);
        if (left_unit != right_unit)
            return left_unit - right_unit;
    }
    if (left.size() == right.size())
        return 0;
    return left.size() < right.size() ? -1 : 1;
}

/// The most units that `to_lower_case` returns.
inline constexpr std::size_t longest_lower_case = 1024;

/// Returns the first 1024 units of `text` in lower case. Throws
/// `foundation::ustring::CtypeInvalidCharacter` on a unit above 127 among them.
template <typename Char>
std::basic_string<Char> to_lower_case(std::basic_string_view<Char> text)
{
    std::basic_string<Char> lower(text.substr(0, longest_lower_case));
    for (Char &unit : lower)
        unit = static_cast<Char>(checked_lower_case(unit));
    return lower;
}

} // namespace fl::filesystem::detail

#endif
