#include "flfs/text.hpp"

#include <array>
#include <cstdio>

namespace flfs {

namespace {

constexpr char32_t last_code_point = 0x10FFFF;
constexpr char32_t first_beyond_one_unit = 0x10000;

bool is_high_surrogate(char32_t value)
{
    return value >= 0xD800 && value <= 0xDBFF;
}

bool is_low_surrogate(char32_t value)
{
    return value >= 0xDC00 && value <= 0xDFFF;
}

bool is_surrogate(char32_t value)
{
    return is_high_surrogate(value) || is_low_surrogate(value);
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

unsigned char byte_at(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

/// The number of bytes that `lead` announces, or 0 if no character begins with it.
std::size_t sequence_size(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC0 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF8 ? 4 : 0;
}

/// The value of the `size` bytes at `at`, or nothing if they are incomplete, encode
/// more than Unicode has, or take more bytes than they need.
std::optional<char32_t> decoded(std::string_view bytes, std::size_t at, std::size_t size)
{
    constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
    constexpr std::array<unsigned char, 5> lead_bits = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t value = byte_at(bytes, at) & lead_bits[size];
    for (std::size_t next = at + 1; next < at + size; ++next) {
        unsigned char const byte = byte_at(bytes, next);
        if ((byte & 0xC0) != 0x80)
            return std::nullopt;
        value = (value << 6) | (byte & 0x3F);
    }
    if (value < least[size] || value > last_code_point)
        return std::nullopt;
    return value;
}

void append_units(std::u16string &units, char32_t value)
{
    if (value < first_beyond_one_unit) {
        units += static_cast<char16_t>(value);
        return;
    }
    char32_t const rest = value - first_beyond_one_unit;
    units += static_cast<char16_t>(0xD800 + (rest >> 10));
    units += static_cast<char16_t>(0xDC00 + (rest & 0x3FF));
}

void append_utf8(std::string &bytes, char32_t value)
{
    auto const append = [&](char32_t byte) { bytes += static_cast<char>(byte); };
    auto const append_rest = [&](int shift) { append(0x80 | ((value >> shift) & 0x3F)); };
    if (value < 0x80) {
        append(value);
    } else if (value < 0x800) {
        append(0xC0 | (value >> 6));
        append_rest(0);
    } else if (value < first_beyond_one_unit) {
        append(0xE0 | (value >> 12));
        append_rest(6);
        append_rest(0);
    } else {
        append(0xF0 | (value >> 18));
        append_rest(12);
        append_rest(6);
        append_rest(0);
    }
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
    char32_t const first = text[at];
    if (!is_high_surrogate(first) || at + 1 == text.size() || !is_low_surrogate(text[at + 1]))
        return {first, 1};
    char32_t const second = text[at + 1];
    return {first_beyond_one_unit + ((first - 0xD800) << 10) + (second - 0xDC00), 2};
}

std::optional<std::u16string> units_from_utf8(std::string_view bytes)
{
    std::u16string units;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t const size = sequence_size(byte_at(bytes, at));
        if (size == 0)
            return std::nullopt;
        std::optional<char32_t> const value = decoded(bytes, at, size);
        if (!value)
            return std::nullopt;
        append_units(units, *value);
        at += size;
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
