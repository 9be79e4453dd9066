#include "flfs/text.hpp"

#include <fl/filesystem/text.hpp>

namespace flfs {

namespace {

namespace detail = fl::filesystem::detail;

bool is_surrogate(char32_t point)
{
    return detail::is_high_surrogate(point) || detail::is_low_surrogate(point);
}

/// Controls, and what of Unicode is invisible or turns the direction of writing.
bool is_invisible(char32_t value)
{
    bool const is_control = value < 0x20 || (value >= 0x7F && value <= 0x9F);
    bool const is_mark = (value >= 0x200B && value <= 0x200F) ||
                         (value >= 0x2028 && value <= 0x202E) ||
                         (value >= 0x2060 && value <= 0x2069) || value == 0xFEFF;
    return is_control || is_mark;
}

std::string shown(char32_t point, bool is_escaped)
{
    std::string bytes;
    if (is_escaped)
        detail::append_number(bytes += "\\u", point, 16, 4);
    else
        detail::append_utf8(bytes, point);
    return bytes;
}

} // namespace

std::optional<std::u16string> units_from_utf8(std::string_view bytes)
{
    std::u16string units;
    while (!bytes.empty()) {
        char32_t const point = detail::take_utf8_sequence(bytes);
        if (point > 0x10FFFF)
            return std::nullopt;
        detail::append_utf16(units, point);
    }
    return units;
}

std::string escaped_surrogates(std::u16string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        char32_t const point = detail::take_code_point(text);
        bytes += shown(point, is_surrogate(point));
    }
    return bytes;
}

std::string displayed(char32_t point)
{
    return shown(point, is_surrogate(point) || is_invisible(point));
}

std::string displayed(std::u16string_view text)
{
    std::string bytes;
    while (!text.empty())
        bytes += displayed(detail::take_code_point(text));
    return bytes;
}

std::string displayed_value(std::u16string_view text)
{
    if (text.empty())
        return "(empty)";
    bool const is_mistakable =
        text.front() == u' ' || text.back() == u' ' || text.front() == u'(' || text.front() == u'"';
    return is_mistakable ? '"' + displayed(text) + '"' : displayed(text);
}

} // namespace flfs
