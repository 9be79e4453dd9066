#ifndef FL_FILESYSTEM_SRC_PATHNAME_NATIVE_FORM_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_NATIVE_FORM_HPP
// The native form over both character types.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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

/// The same of a text that came from the system.
std::u16string narrow_native_form(std::wstring_view text);

/// The native form where it stands in `text` as it is, all of it or a part; else nothing.
template <typename Char>
std::optional<std::basic_string_view<Char>> native_part(std::basic_string_view<Char> text);

/// The native form for those who only read it: without a copy where `text`, which must live as
/// long, has it.
template <typename Char>
class native_text
{
public:
    explicit native_text(std::basic_string_view<Char> text) : part_(native_part(text))
    {
        if (!part_)
            form_ = native_form(text);
    }

    std::basic_string_view<Char> view() const { return part_ ? *part_ : form_; }

    /// Puts it into `result`, which is not the text that it was made of.
    void move_into(std::basic_string<Char> &result) &&
    {
        if (part_)
            result = *part_;
        else
            result = std::move(form_);
    }

private:
    std::optional<std::basic_string_view<Char>> part_;
    std::basic_string<Char> form_;
};

extern template std::u16string collapse_separators_from(std::u16string_view, std::size_t,
                                                        std::size_t);
extern template std::wstring collapse_separators_from(std::wstring_view, std::size_t, std::size_t);
extern template std::u16string native_form(std::u16string_view);
extern template std::wstring native_form(std::wstring_view);
extern template std::optional<std::u16string_view> native_part(std::u16string_view);
extern template std::optional<std::wstring_view> native_part(std::wstring_view);

} // namespace fl::filesystem::detail

#endif
