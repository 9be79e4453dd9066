#ifndef FL_FILESYSTEM_SRC_STANDARD_LEXICAL_HPP
#define FL_FILESYSTEM_SRC_STANDARD_LEXICAL_HPP
// Elements of a pathname as the standard facility iterates over them and joins them.

#include <string>
#include <string_view>
#include <vector>

namespace fl::filesystem::detail::standard {

/// The root name, a backslash for the root directory, the names, and nothing for a
/// separator behind the last name. Views of `text`.
std::vector<std::wstring_view> elements_of(std::wstring_view text);

/// Puts one element behind `text`, with a separator where there is none. A root directory
/// takes the place of everything but a root name.
void join(std::wstring &text, std::wstring_view element);

} // namespace fl::filesystem::detail::standard

#endif
