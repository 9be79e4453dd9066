#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_VOCABULARY_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_VOCABULARY_HPP
// The names and pathnames that sequences are made of.
//
// No text begins with one slash: Wine takes that
// for a pathname of the host. For the same reason no drive Z: is named, no share, which
// Wine makes out of nothing, and nothing that exists on drive C: of a fresh system. No name begins
// with a full stop: Wine shows it as hidden.

#include "differential/generator.hpp"

#include <string>
#include <string_view>

namespace differential {

/// Of anything: relative, absolute, with a long prefix, and what is none of these.
std::u16string random_pathname(dice &dice);
/// The same, with names that no call may look up: devices among them.
std::u16string random_text_to_treat(dice &dice);
/// Mostly a directory that is there from the start, without a long prefix.
std::u16string random_directory(dice &dice);
/// For an enumeration: a directory and a pattern.
std::u16string random_pattern(dice &dice);
/// A few units that decide about the shape of a pathname, for calls that only look
/// at the text.
std::u16string random_shape(dice &dice);
/// The name of a variable, and a value for it.
std::u16string random_variable(dice &dice);
std::u16string random_value(dice &dice, std::u16string_view variable);

} // namespace differential

#endif
