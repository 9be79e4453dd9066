#ifndef FL_FILESYSTEM_SRC_PLATFORM_CODE_UNITS_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_CODE_UNITS_HPP
// The one conversion between the two character types of a pathname. Both hold
// UTF-16 code units, also where `wchar_t` has 32 bits, so nothing is decoded.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

namespace fl::filesystem::detail {

/// Returns `text` unit for unit. Unpaired surrogates and NULs pass through.
template <typename To, typename From>
std::basic_string<To> copy_units(std::basic_string_view<From> text)
{
    return std::basic_string<To>(text.begin(), text.end());
}

/// Puts `text` behind `result`. (Appending what has other units by iterators would make a copy
/// of it first.)
template <typename To, typename From>
void append_units(std::basic_string<To> &result, std::basic_string_view<From> text)
{
    if constexpr (std::is_same_v<To, From>) {
        result.append(text);
    } else {
        std::size_t const size = result.size();
        result.resize(size + text.size());
        std::copy(text.begin(), text.end(), &result[size]);
    }
}

/// Makes `result` what `text` is; takes memory only if `result` hasn't enough.
template <typename To, typename From>
void assign_units(std::basic_string<To> &result, std::basic_string_view<From> text)
{
    result.clear();
    append_units(result, text);
}

inline std::wstring widen(std::u16string_view text)
{
    return copy_units<wchar_t>(text);
}

inline std::u16string narrow(std::wstring_view text)
{
    return copy_units<char16_t>(text);
}

} // namespace fl::filesystem::detail

#endif
