#ifndef FL_FILESYSTEM_SRC_PATHNAME_NATIVE_FORM_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_NATIVE_FORM_HPP
// The native form over both character types.

#include <cstddef>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Returns the units of `text` from `start` on: the first `keep` as they are, and
/// behind them every run of separators of either kind as one backslash. A separator
/// right behind the kept units stays, whatever they end in. `start + keep` is at most
/// the size of the text.
///
/// Allocates the result at its largest size, and once more at its true size if
/// that is smaller.
template <typename Char>
std::basic_string<Char> collapse_separators_from(std::basic_string_view<Char> text,
                                                 std::size_t start, std::size_t keep);

/// As the exported `make_native_form`.
template <typename Char>
std::basic_string<Char> native_form(std::basic_string_view<Char> text);

extern template std::u16string collapse_separators_from(std::u16string_view, std::size_t,
                                                        std::size_t);
extern template std::wstring collapse_separators_from(std::wstring_view, std::size_t, std::size_t);
extern template std::u16string native_form(std::u16string_view);
extern template std::wstring native_form(std::wstring_view);

} // namespace fl::filesystem::detail

#endif
