#ifndef FL_FILESYSTEM_UTF8_HPP
#define FL_FILESYSTEM_UTF8_HPP
// Public. UTF-8 to and from the UTF-16 of pathnames. Windows lets a name hold half of a
// surrogate pair, which UTF-8 has no bytes for: here it has those that the scheme would give
// to its number (that is called WTF-8), so that every name survives the way there and back.
// Header-only; asks the system nothing.

#include <fl/filesystem/config.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem {

namespace detail {

/// Throws `FileNameConversionFailure`. Never returns.
[[noreturn]] FL_FILESYSTEM_API void throw_file_name_conversion_failure();

/// What `u8"..."` is made of.
#ifdef __cpp_char8_t
using utf8_char = char8_t;
#else
using utf8_char = char;
#endif

constexpr bool is_high_surrogate(char32_t unit) noexcept
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool is_low_surrogate(char32_t unit) noexcept
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Takes the first code point, or an unpaired surrogate, off the front of `text`, which
/// isn't empty.
constexpr char32_t take_code_point(std::u16string_view &text) noexcept
{
    char32_t const first = text[0];
    text.remove_prefix(1);
    if (!is_high_surrogate(first) || text.empty() || !is_low_surrogate(text[0]))
        return first;
    char32_t const second = text[0];
    text.remove_prefix(1);
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

template <typename Char>
void append_utf8(std::basic_string<Char> &bytes, char32_t point)
{
    auto const append = [&](char32_t value) { bytes.push_back(static_cast<Char>(value)); };
    auto const append_tail = [&](unsigned int shift) { append(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0 | (point >> 6));
        append_tail(0);
    } else if (point < 0x10000) {
        append(0xE0 | (point >> 12));
        append_tail(6);
        append_tail(0);
    } else {
        append(0xF0 | (point >> 18));
        append_tail(12);
        append_tail(6);
        append_tail(0);
    }
}

template <typename Char>
std::basic_string<Char> utf8_of(std::u16string_view text)
{
    std::basic_string<Char> bytes;
    bytes.reserve(text.size()); // pathnames are mostly ASCII
    while (!text.empty())
        append_utf8(bytes, take_code_point(text));
    return bytes;
}

/// The number of bytes behind a lead byte, or 4 for what is none.
constexpr std::size_t utf8_tail_size(char32_t lead) noexcept
{
    if (lead < 0x80)
        return 0;
    if (lead < 0xC2) // a tail, or a longer way to write ASCII
        return 4;
    return lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF5 ? 3 : 4;
}

/// Takes a sequence of bytes off the front of `bytes`, which isn't empty. Returns its number,
/// a surrogate's included, or what is beyond all numbers if there is no such sequence.
template <typename Char>
constexpr char32_t take_utf8_sequence(std::basic_string_view<Char> &bytes) noexcept
{
    constexpr char32_t none = 0x110000;
    constexpr char32_t least[] = {0, 0x80, 0x800, 0x10000}; // smaller ones have shorter sequences
    char32_t const lead = static_cast<unsigned char>(bytes[0]);
    std::size_t const tail = utf8_tail_size(lead);
    if (tail >= bytes.size() || tail == 4)
        return none;
    char32_t point = tail == 0 ? lead : lead & (0x3Fu >> tail);
    for (std::size_t at = 1; at <= tail; ++at) {
        char32_t const byte = static_cast<unsigned char>(bytes[at]);
        if ((byte & 0xC0) != 0x80)
            return none;
        point = point << 6 | (byte & 0x3F);
    }
    bytes.remove_prefix(tail + 1);
    return point < least[tail] ? none : point;
}

inline void append_utf16(std::u16string &text, char32_t point)
{
    if (point < 0x10000) {
        text.push_back(static_cast<char16_t>(point));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
}

template <typename Char>
std::u16string utf16_of(std::basic_string_view<Char> bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        char32_t const point = take_utf8_sequence(bytes);
        // two halves in sequences of their own would be a second notation of the pair
        bool const second_half =
            is_low_surrogate(point) && !text.empty() && is_high_surrogate(text.back());
        if (point > 0x10FFFF || second_half)
            throw_file_name_conversion_failure();
        append_utf16(text, point);
    }
    return text;
}

} // namespace detail

/// Returns `text` in UTF-8. Fails on no text: an unpaired surrogate becomes the three bytes
/// that its number has in the scheme of UTF-8, which strict readers refuse. A NUL stays one.
///
///     C:\caf and U+00E9         C:\caf C3 A9
///     U+1F600, a pair           F0 9F 98 80
///     U+D800, without another   ED A0 80
[[nodiscard]] inline std::string to_utf8(std::u16string_view text)
{
    return detail::utf8_of<char>(text);
}

/// The way back: returns `bytes`, UTF-8, in UTF-16, with three bytes for an unpaired surrogate
/// taken, too. So nothing else than what `to_utf8` makes of a text is taken, and
/// `to_utf8(from_utf8(bytes))` is `bytes` again.
///
/// Throws `FileNameConversionFailure` for anything else: bytes that don't belong together, a
/// longer way to write a number than its shortest, a number beyond U+10FFFF, and the two
/// halves of a pair in sequences of their own.
[[nodiscard]] inline std::u16string from_utf8(std::string_view bytes)
{
    return detail::utf16_of(bytes);
}
#ifdef __cpp_char8_t
/// The same of what `u8"..."` is made of.
[[nodiscard]] inline std::u16string from_utf8(std::u8string_view bytes)
{
    return detail::utf16_of(bytes);
}
#endif

} // namespace fl::filesystem

#endif
