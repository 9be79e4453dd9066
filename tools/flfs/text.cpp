#include "flfs/text.hpp"

#include <boost/locale/utf.hpp>

#include <array>
#include <cstdio>
#include <iterator>

namespace flfs {

namespace {

namespace utf = boost::locale::utf; // all of it inline
using utf8 = utf::utf_traits<char>;
using utf16 = utf::utf_traits<char16_t>;

bool is_character(utf::code_point value)
{
    return value != utf::illegal && value != utf::incomplete;
}

bool is_surrogate(char32_t value)
{
    return value >= 0xD800 && value <= 0xDFFF;
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

std::string escape(char32_t value)
{
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "\\u%04X", static_cast<unsigned int>(value));
    return buffer.data();
}

/// The surrogate that `bytes` begin with, which UTF-8 proper can't express, or 0.
char16_t encoded_surrogate(std::string_view bytes)
{
    if (bytes.size() < 3 || bytes[0] != '\xED' || (bytes[1] & 0xE0) != 0xA0 ||
        (bytes[2] & 0xC0) != 0x80)
        return 0;
    return static_cast<char16_t>(0xD000 | (bytes[1] & 0x3F) << 6 | (bytes[2] & 0x3F));
}

void append_utf8(std::string &bytes, char32_t value)
{
    utf8::encode(value, std::back_inserter(bytes));
}

/// Calls `append` with every character of `text`.
template <typename Append>
void for_each_character(std::u16string_view text, Append append)
{
    for (std::size_t at = 0; at < text.size();) {
        character const one = character_at(text, at);
        append(one);
        at += one.units;
    }
}

} // namespace

character character_at(std::u16string_view text, std::size_t at)
{
    auto const first = text.begin() + static_cast<std::ptrdiff_t>(at);
    auto next = first;
    utf::code_point const value = utf16::decode(next, text.end());
    if (!is_character(value)) // a surrogate by itself
        return {text[at], 1};
    return {value, static_cast<std::size_t>(next - first)};
}

std::optional<std::u16string> units_from_utf8(std::string_view bytes)
{
    std::u16string units;
    while (!bytes.empty()) {
        auto next = bytes.begin();
        if (char16_t const surrogate = encoded_surrogate(bytes)) {
            units += surrogate;
            next += 3;
        } else {
            utf::code_point const value = utf8::decode(next, bytes.end());
            if (!is_character(value))
                return std::nullopt;
            utf16::encode(value, std::back_inserter(units));
        }
        bytes.remove_prefix(static_cast<std::size_t>(next - bytes.begin()));
    }
    return units;
}

std::string utf8_from_units(std::u16string_view text)
{
    std::string bytes;
    for_each_character(text, [&](character const &one) { append_utf8(bytes, one.value); });
    return bytes;
}

std::string escaped_surrogates(std::u16string_view text)
{
    std::string bytes;
    for_each_character(text, [&](character const &one) {
        if (is_surrogate(one.value))
            bytes += escape(one.value);
        else
            append_utf8(bytes, one.value);
    });
    return bytes;
}

std::string displayed(character const &one)
{
    if (is_surrogate(one.value) || is_invisible(one.value))
        return escape(one.value);
    std::string bytes;
    append_utf8(bytes, one.value);
    return bytes;
}

std::string displayed(std::u16string_view text)
{
    std::string bytes;
    for_each_character(text, [&](character const &one) { bytes += displayed(one); });
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
