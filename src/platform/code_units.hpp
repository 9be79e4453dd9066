#ifndef FL_FILESYSTEM_SRC_PLATFORM_CODE_UNITS_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_CODE_UNITS_HPP
// The one conversion between the two character types of a pathname. Both hold
// UTF-16 code units, also where `wchar_t` has 32 bits, so nothing is decoded.

#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Returns `text` unit for unit. Unpaired surrogates and NULs pass through.
template <typename To, typename From>
std::basic_string<To> copy_units(std::basic_string_view<From> text)
{
    return std::basic_string<To>(text.begin(), text.end());
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
