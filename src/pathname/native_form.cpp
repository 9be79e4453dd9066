#include "pathname/native_form.hpp"

#include <fl/filesystem/pathname.hpp>

#include "pathname/root_length.hpp"

#include <algorithm>
#include <utility>

namespace fl::filesystem::detail {

namespace {

/// The index behind the last unit that counts. Trailing blanks don't, unless they
/// stand behind a separator: then they are a name of their own. 0 if all are blank.
template <typename Char>
std::size_t end_without_blanks(std::basic_string_view<Char> text)
{
    std::size_t const end = text.find_last_not_of(static_cast<Char>(' ')) + 1;
    bool const blanks_are_a_name = end > 0 && is_separator(text[end - 1]);
    return blanks_are_a_name ? text.size() : end;
}

/// The index of the first unit that is not white space, or the size of the text.
template <typename Char>
std::size_t skip_white_space(std::basic_string_view<Char> text)
{
    auto const found =
        std::find_if(text.begin(), text.end(), [](Char unit) { return !is_white_space(unit); });
    return static_cast<std::size_t>(found - text.begin());
}

/// Removes the backslash at the end of a text of `size` units, if more than one
/// unit stands behind its root. The size is the caller's word: where it is not
/// that of the text, nothing is removed.
template <typename Char>
void drop_trailing_backslash(std::basic_string<Char> &text, std::size_t root, std::size_t size)
{
    if (size > root && size - root >= 2 && is_backslash(unit_at<Char>(text, size - 1)))
        text.pop_back();
}

/// Taken for the root of every drive, also where the drive has no backslash, so
/// that a single unit behind `C:` keeps the backslash behind it.
constexpr std::size_t drive_root = drive_root_size;

template <typename Char>
std::basic_string<Char> finish(std::basic_string<Char> form, std::size_t root)
{
    drop_trailing_backslash(form, root, form.size());
    return form;
}

/// What stands behind `\\?\`, which begins at `prefix`.
template <typename Char>
std::basic_string<Char> without_long_prefix(std::basic_string_view<Char> text, std::size_t prefix)
{
    std::basic_string<Char> form = collapse_separators_from(text, prefix + long_prefix_size, 0);
    std::size_t const root = is_drive_at<Char>(form, 0) ? drive_root : 0;
    return finish(std::move(form), root);
}

/// A server pathname whose two separators stand at `server`. A server, and a server
/// and share, may keep the backslash behind them.
template <typename Char>
std::basic_string<Char> server_form(std::basic_string_view<Char> text, std::size_t server)
{
    std::basic_string<Char> form = collapse_separators_from(text, server, server_prefix_size);
    form[0] = form[1] = backslash<Char>;
    std::size_t const root = skip_two_separators<Char>(form, server_prefix_size);
    return finish(std::move(form), root);
}

/// A device pathname whose prefix begins at `prefix`. Its trailing backslash goes
/// by the size that the text had before its separators were collapsed, so it
/// stays where any were, and where white space stood ahead of the prefix.
template <typename Char>
std::basic_string<Char> device_form(std::basic_string_view<Char> text, std::size_t prefix)
{
    if (text.size() ==
        device_prefix_size) // nothing but the prefix; with white space ahead it is kept
        return {};
    std::basic_string<Char> form = collapse_separators_from(text, prefix, device_prefix_size);
    form[0] = form[1] = form[3] = backslash<Char>;
    drop_trailing_backslash(form, device_prefix_size, text.size());
    return form;
}

/// `text` has lost its trailing blanks. Leading white space is looked past; the
/// forms with a prefix lose it, and in the others it is a part of the first name.
template <typename Char>
std::basic_string<Char> form_by_shape(std::basic_string_view<Char> text)
{
    std::size_t const start = skip_white_space(text);
    if (!is_separator(unit_at(text, start))) {
        // C:\foo or foo
        std::size_t const root = is_drive_at(text, start) ? drive_root : 0;
        return finish(collapse_separators_from(text, 0, 0), root);
    }
    // \\server\share
    if (is_unc_prefix_at(text, start))
        return server_form(text, start);
    // \\?\UNC\server\share; nothing but the prefix, and no white space ahead, is empty
    if (is_long_unc_prefix_at(text, start))
        return text.size() == long_unc_prefix_size
                   ? std::basic_string<Char>()
                   : server_form(text, start + long_unc_prefix_size - server_prefix_size);
    // \\?\C:\foo
    if (is_long_prefix_at(text, start))
        return without_long_prefix(text, start);
    // \\.\COM1
    if (is_device_prefix_at(text, start))
        return device_form(text, start);
    // \foo
    return finish(collapse_separators_from(text, 0, 0), 1);
}

} // namespace

template <typename Char>
std::basic_string<Char> collapse_separators_from(std::basic_string_view<Char> text,
                                                 std::size_t start, std::size_t keep)
{
    text.remove_prefix(start);
    std::basic_string<Char> collapsed;
    collapsed.reserve(text.size());
    collapsed.append(text.substr(0, keep));
    bool in_run = false;
    for (Char const unit : text.substr(keep)) {
        bool const separates = is_separator(unit);
        if (!separates)
            collapsed.push_back(unit);
        else if (!in_run)
            collapsed.push_back(backslash<Char>);
        in_run = separates;
    }
    if (collapsed.size() < text.size())
        collapsed.shrink_to_fit();
    return collapsed;
}

template <typename Char>
std::basic_string<Char> native_form(std::basic_string_view<Char> text)
{
    std::size_t const end = end_without_blanks(text);
    if (end == 0) // empty, or nothing but blanks
        return std::basic_string<Char>(text);
    return form_by_shape(text.substr(0, end));
}

template std::u16string collapse_separators_from(std::u16string_view, std::size_t, std::size_t);
template std::wstring collapse_separators_from(std::wstring_view, std::size_t, std::size_t);
template std::u16string native_form(std::u16string_view);
template std::wstring native_form(std::wstring_view);

std::u16string make_native_form(std::u16string const &text, bool)
{
    return native_form<char16_t>(text);
}

std::wstring path_traits<wchar_t, wchar_t>::make_native_form(std::wstring const &text, bool)
{
    return native_form<wchar_t>(text);
}

std::u16string path_traits<char16_t, char16_t>::make_native_form(std::u16string const &text,
                                                                 bool form_flag)
{
    return detail::make_native_form(text, form_flag);
}

} // namespace fl::filesystem::detail
