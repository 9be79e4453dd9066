#ifndef FL_FLFS_TEXT_HPP
#define FL_FLFS_TEXT_HPP
// Text between the command line and the terminal, in UTF-8, and the library, in
// UTF-16 units. A Windows name may hold an unpaired surrogate, which UTF-8 proper
// can't express: on the way in it is encoded like any other number, in three bytes,
// and on the way out it is written as an escape.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace flfs {

/// A code point, or an unpaired surrogate, which then is the value.
struct character
{
    char32_t value;
    std::size_t units; ///< 2 for a surrogate pair, else 1
};

/// The character that begins at index `at`, which must be inside `text`.
character character_at(std::u16string_view text, std::size_t at);

/// The UTF-16 units of `bytes`, encoded surrogates included, or nothing if it isn't
/// UTF-8.
std::optional<std::u16string> units_from_utf8(std::string_view bytes);

/// The way back, unpaired surrogates included.
std::string utf8_from_units(std::u16string_view text);

/// `text` in UTF-8 proper, an unpaired surrogate as its escape, `\uD800`.
std::string escaped_surrogates(std::u16string_view text);

/// A character as the terminal gets it. One that shows nothing, moves the cursor or
/// turns the direction of writing becomes an escape, too: names can be forged with
/// them.
std::string displayed(character const &one);

/// The same for all of `text`.
std::string displayed(std::u16string_view text);

/// A value in a list: "(empty)" if it is, and in quotes where blanks at its ends
/// couldn't be seen or where it could be taken for a remark of ours.
std::string displayed_value(std::u16string_view text);

} // namespace flfs

#endif
