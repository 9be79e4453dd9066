#ifndef FL_FILESYSTEM_TESTS_SUPPORT_TEXT_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_TEXT_HPP
// Texts in the system's character type, as failing tests show them, and of any size; all short
// texts.

#include <cstddef>
#include <string>
#include <string_view>

namespace test_support {

inline std::wstring wide(std::u16string_view text)
{
    return std::wstring(text.begin(), text.end());
}

inline std::u16string units(std::wstring_view text)
{
    return std::u16string(text.begin(), text.end());
}

/// ASCII as it is, every other unit as an escape.
inline std::string printable(std::u16string_view text)
{
    std::string printed;
    for (char16_t const unit : text) {
        if (unit >= 32 && unit < 127) {
            printed += static_cast<char>(unit);
            continue;
        }
        constexpr char digits[] = "0123456789ABCDEF";
        printed += "\\u";
        for (unsigned int shift = 16; shift > 0; shift -= 4)
            printed += digits[(unit >> (shift - 4)) & 0xFU];
    }
    return printed;
}

inline std::string printable(std::wstring_view text)
{
    return printable(units(text));
}

/// A row of a table: a text, what becomes of it, and why.
template <typename Char>
struct text_row
{
    Char const *text, *expected;
    char const *why;
};

/// A row of a table: a text, whether it is what is asked for, and why.
template <typename Char>
struct answer_row
{
    Char const *text;
    bool expected;
    char const *why;
};

/// `head` and as many units more as make `size` in all.
template <typename Char>
std::basic_string<Char> of_size(Char const *head, std::size_t size)
{
    std::basic_string<Char> text = head;
    text.resize(size, Char{'a'});
    return text;
}

/// `head` and names behind it that disks take, as many units as make `size` in all: at least two.
inline std::u16string chain_of_size(std::u16string head, std::size_t size)
{
    while (head.size() < size) {
        std::size_t const left = size - head.size() - 1; // behind a backslash
        // no name may be empty, nor may the last backslash stand alone
        head += u'\\' + std::u16string(left <= 101 ? left : 99, u'd');
    }
    return head;
}

/// `head` and a number behind it.
inline std::u16string numbered(std::u16string const &head, int number)
{
    return head + units(std::to_wstring(number));
}

/// Calls `visit` with every text of up to `longest` units out of `alphabet`, the
/// empty one first.
template <typename Visit>
void for_all_texts(std::u16string_view alphabet, std::size_t longest, Visit visit)
{
    std::u16string text;
    auto const extend = [&](auto const &self) -> void {
        visit(text);
        if (text.size() == longest)
            return;
        for (char16_t const unit : alphabet) {
            text.push_back(unit);
            self(self);
            text.pop_back();
        }
    };
    extend(extend);
}

/// The units that decide about the shape of a pathname.
inline constexpr std::u16string_view shape_alphabet = u"\\/:.?a";

} // namespace test_support

#endif
