#include <fl/filesystem/pathname.hpp>

#include "failure/throw.hpp"
#include "pathname/native_form.hpp"
#include "pathname/parent_size.hpp"
#include "pathname/root_length.hpp"

#include <algorithm>
#include <utility>

namespace fl::filesystem::detail {

namespace {

/// Whether `base` is a bare drive or a bare server, behind which a text that
/// begins with a backslash may stand.
template <typename Char>
bool takes_rooted_addition(std::basic_string_view<Char> base)
{
    // C:
    if (base.size() <= 2)
        return is_drive_at(base, 0);
    // \\server
    std::basic_string_view<Char> const prefix = pathname_traits<Char>::UNC_PREFIX;
    return base.substr(0, prefix.size()) == prefix &&
           base.rfind(pathname_traits<Char>::PATHNAME_SEPARATOR_CHARACTER) < prefix.size();
}

template <typename Char> // calls itself once, with a copy: NOLINTNEXTLINE(misc-no-recursion)
std::basic_string<Char> &concatenate(std::basic_string<Char> &base,
                                     std::basic_string<Char> const &raw_addition)
{
    if (&base == &raw_addition) // which must not change while it is read
        return concatenate(base, std::basic_string<Char>(raw_addition));
    native_text<Char> native{raw_addition};
    if (base.empty()) {
        std::move(native).move_into(base);
        return base;
    }
    std::basic_string_view<Char> const addition = native.view();
    std::size_t const root = root_path_length(addition);
    if (root > 1)
        throw_invalid_argument("Absolute path not permitted");
    if (root == 1 && !takes_rooted_addition<Char>(base))
        throw_invalid_argument("Path name can not start with \\");
    base.reserve(base.size() + 1 + addition.size()); // nothing may fail half way
    // a bare drive gets its backslash, too: what is joined to it is not meant to
    // depend on the drive's current directory
    if (root == 0 && !is_backslash(base.back()))
        base += pathname_traits<Char>::PATHNAME_SEPARATOR_CHARACTER;
    base += addition;
    return base;
}

/// Whether `pathname` is nothing but a drive, a server, or a server and share.
bool is_bare_root(std::u16string_view pathname)
{
    if (pathname.back() == pathname_traits<char16_t>::VOLUME_SEPARATOR_CHARACTER)
        return true;
    return is_unc_prefix_at(pathname, 0) && skip_two_separators(pathname, 2) == pathname.size();
}

/// Whether `extension` is a full stop alone, begins with two, or holds a
/// separator.
bool is_invalid_extension(std::u16string_view extension)
{
    constexpr char16_t dot = pathname_traits<char16_t>::DOT_CHARACTER;
    if (extension[0] == dot && (extension.size() == 1 || extension[1] == dot))
        return true;
    return std::any_of(extension.begin(), extension.end(),
                       [](char16_t unit) { return is_separator(unit); });
}

/// The index behind what stays of `pathname`: behind the full stop of the old
/// extension, or the end. They are one where the name ends in its full stop, which
/// then is no extension's.
std::size_t end_of_kept_part(std::u16string_view pathname, std::size_t filename)
{
    std::size_t const stop = pathname.rfind(pathname_traits<char16_t>::DOT_CHARACTER);
    return stop != pathname.npos && stop >= filename ? stop + 1 : pathname.size();
}

} // namespace

std::u16string &concatenate_pathname(std::u16string &base, std::u16string const &addition, bool)
{
    return concatenate(base, addition);
}

std::wstring &path_traits<wchar_t, wchar_t>::concatenate_pathname(std::wstring &base,
                                                                  std::wstring const &addition,
                                                                  bool)
{
    return concatenate(base, addition);
}

std::u16string &remove_filename(std::u16string &text)
{
    text.resize(parent_size<char16_t>(text));
    return text;
}

std::wstring &path_traits<wchar_t, wchar_t>::remove_filename(std::wstring &text)
{
    text.resize(parent_size<wchar_t>(text));
    return text;
}

std::u16string &replace_extension(std::u16string &pathname, std::u16string const &new_extension)
{
    using traits = pathname_traits<char16_t>;
    if (pathname.empty() || is_bare_root(pathname) || new_extension.empty())
        return pathname;
    // 0 if there is no backslash
    std::size_t const filename = pathname.rfind(traits::PATHNAME_SEPARATOR_CHARACTER) + 1;
    std::size_t const filename_size = pathname.size() - filename;
    if (filename_size == 0 || is_dot_element<char16_t>(pathname, filename, filename_size))
        return pathname;
    if (is_invalid_extension(new_extension))
        throw_invalid_argument("Invalid extension");

    std::size_t const kept = end_of_kept_part(pathname, filename);
    bool const had_extension = kept != pathname.size();
    bool const has_stop = new_extension[0] == traits::DOT_CHARACTER;
    std::u16string replaced;
    replaced.reserve(kept + 1 + new_extension.size());
    replaced.append(pathname, 0, kept);
    if (!had_extension && !has_stop)
        replaced += traits::DOT_CHARACTER;
    replaced.append(new_extension, had_extension && has_stop ? 1 : 0);
    pathname = std::move(replaced);
    return pathname;
}

} // namespace fl::filesystem::detail
