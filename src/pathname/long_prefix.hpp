#ifndef FL_FILESYSTEM_SRC_PATHNAME_LONG_PREFIX_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_LONG_PREFIX_HPP
// The prefixes `\\?\` and `\\?\UNC\`, which lift the length limits of the system.

#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Returns `text` behind `\\?\`, or behind `\\?\UNC\` in place of its two leading
/// backslashes if it names a server. Looks neither for a prefix nor at the type.
template <typename Result, typename Char>
std::basic_string<Result> with_long_prefix(std::basic_string_view<Char> text, bool names_server);

extern template std::wstring with_long_prefix(std::u16string_view, bool);
extern template std::wstring with_long_prefix(std::wstring_view, bool);
extern template std::u16string with_long_prefix(std::wstring_view, bool);

/// Returns `text` so that the system takes every name in it as it stands: behind the long
/// prefix that its path type calls for. As it is if it has one, or if its type takes none.
template <typename Result, typename Char>
std::basic_string<Result> make_literal_form(std::basic_string_view<Char> text);

extern template std::wstring make_literal_form(std::u16string_view);
extern template std::wstring make_literal_form(std::wstring_view);

/// The same of a pathname that has such a form. Throws `InvalidArgument` "Long UNC path without
/// root not permitted", without the pathname, on every other type: relative, rooted,
/// drive-relative, device, and server without share.
template <typename Result, typename Char>
std::basic_string<Result> add_long_prefix(std::basic_string_view<Char> text);

extern template std::wstring add_long_prefix(std::u16string_view);
extern template std::wstring add_long_prefix(std::wstring_view);
extern template std::u16string add_long_prefix(std::wstring_view);

/// Cuts `path` to its first `length` units without their long prefix, if at most
/// `limit` remain, and returns `path`. Otherwise `path` stays as it is, what stands
/// behind `length` included.
std::wstring &strip_long_path_prefix(std::wstring &path, std::size_t length, std::size_t limit);

} // namespace fl::filesystem::detail

#endif
