#ifndef FL_FLFS_TEXT_HPP
#define FL_FLFS_TEXT_HPP
// Text from the command line, in UTF-8, and for the terminal. An unpaired surrogate, which a
// Windows name may hold, comes in three bytes, as the library's `to_utf8` writes it, and goes
// out as an escape.

#include <optional>
#include <string>
#include <string_view>

namespace flfs {

/// The UTF-16 units of `bytes`, encoded surrogates included, or nothing if it isn't UTF-8. Unlike
/// the library's `from_utf8` it takes two halves of a pair in three bytes each.
std::optional<std::u16string> units_from_utf8(std::string_view bytes);

/// `text` in UTF-8 proper, an unpaired surrogate as its escape, `\uD800`.
std::string escaped_surrogates(std::u16string_view text);

/// A code point, or an unpaired surrogate, as the terminal gets it. One that shows nothing, moves
/// the cursor or turns the direction of writing becomes an escape, too: names can be forged with
/// them.
std::string displayed(char32_t point);

/// The same for all of `text`.
std::string displayed(std::u16string_view text);

/// A value in a list: "(empty)" if it is, and in quotes where blanks at its ends
/// couldn't be seen or where it could be taken for a remark of ours.
std::string displayed_value(std::u16string_view text);

/// `words` with `separator` between them.
template <typename Words>
std::string joined(Words const &words, std::string_view separator)
{
    std::string line;
    for (std::string_view const word : words)
        line.append(line.empty() ? "" : separator).append(word);
    return line;
}

} // namespace flfs

#endif
