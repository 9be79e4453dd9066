#include "names.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

bool is_between(char16_t unit, char16_t first, char16_t last)
{
    return unit >= first && unit <= last;
}

/// Upper case of the Latin letters whose cases alternate, U+0100 to U+017F.
char16_t upcase_alternating(char16_t unit)
{
    // dotless i, kra, n with apostrophe and long s are no lower half of a pair
    if (unit == 0x0131 || unit == 0x0138 || unit == 0x0149 || unit == 0x017F)
        return unit;
    bool const is_even_lower = is_between(unit, 0x0139, 0x0148) || is_between(unit, 0x0179, 0x017E);
    bool const is_lower = (unit % 2 == 0) == is_even_lower;
    return is_lower && unit != 0x0178 ? static_cast<char16_t>(unit - 1) : unit;
}

char16_t shifted(char16_t unit, int distance)
{
    return static_cast<char16_t>(unit - distance);
}

} // namespace

bool is_letter(char16_t unit)
{
    return is_between(unit, u'A', u'Z') || is_between(unit, u'a', u'z');
}

char16_t upcase(char16_t unit)
{
    if (unit < 0x80)
        return is_between(unit, u'a', u'z') ? shifted(unit, 0x20) : unit;
    if (unit == 0x00FF)
        return 0x0178;
    if (is_between(unit, 0x00E0, 0x00FE) && unit != 0x00F7)
        return shifted(unit, 0x20);
    if (is_between(unit, 0x0100, 0x017F))
        return upcase_alternating(unit);
    if (is_between(unit, 0x03B1, 0x03CB) && unit != 0x03C2)
        return shifted(unit, 0x20);
    if (is_between(unit, 0x0430, 0x044F))
        return shifted(unit, 0x20);
    if (is_between(unit, 0x0450, 0x045F))
        return shifted(unit, 0x50);
    return unit;
}

std::u16string upcase(std::u16string_view text)
{
    std::u16string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char16_t unit) { return upcase(unit); });
    return upper;
}

bool is_valid_name(std::u16string_view name)
{
    if (name.empty() || name == u"." || name == u".." || name.size() > longest_name)
        return false;
    return std::none_of(name.begin(), name.end(), [](char16_t unit) {
        return unit < 0x20 ||
               std::u16string_view(u"<>:\"/\\|?*").find(unit) != std::u16string::npos;
    });
}

bool is_stream_name(std::u16string_view name)
{
    std::size_t const colon = name.find(u':');
    return colon != std::u16string_view::npos && is_valid_name(name.substr(0, colon));
}

std::u16string from_wide(wchar_t const *text)
{
    std::wstring_view const wide = text == nullptr ? std::wstring_view() : std::wstring_view(text);
    return std::u16string(wide.begin(), wide.end());
}

} // namespace fl::simulation
