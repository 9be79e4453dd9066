#ifndef FL_SIMULATION_NAMES_HPP
#define FL_SIMULATION_NAMES_HPP
// Text of names: units, upper case, and what a disk takes as a name.

#include <string>
#include <string_view>

namespace fl::simulation {

/// The longest name of one file or directory.
inline constexpr std::size_t longest_name = 255;

inline bool is_separator(char16_t unit)
{
    return unit == u'\\' || unit == u'/';
}

bool is_letter(char16_t unit);

/// `X:`
inline bool is_drive_at(std::u16string_view text, std::size_t index)
{
    return text.size() >= index + 2 && is_letter(text[index]) && text[index + 1] == u':';
}

/// Names are compared in upper case, unit by unit and without any locale: a disk
/// keeps its own table. Ours has the letters of Latin, Greek and Cyrillic.
char16_t upcase(char16_t unit);
std::u16string upcase(std::u16string_view text);

/// Whether a disk takes `name`. Dots and blanks at the end are fine here: it is
/// the treatment of pathnames that removes them.
bool is_valid_name(std::u16string_view name);

/// Whether `name` is one of a stream, such as `file:stream`, which no directory has.
bool is_stream_name(std::u16string_view name);

/// Unit for unit; a null pointer is an empty text.
std::u16string from_wide(wchar_t const *text);

} // namespace fl::simulation

#endif
