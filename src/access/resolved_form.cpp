#include "access/resolved_form.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "access/absolute.hpp"
#include "access/buffer_size.hpp"
#include "access/link_chain.hpp"
#include "access/path_cleaning.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/shapes.hpp"
#include "platform/limits.hpp"

#include <utility>

namespace fl::filesystem::detail {

namespace {

/// Where the last element of a long form begins, with its backslash: a link there isn't
/// followed. `.` and `..` take part in what is resolved, and then there is no such element.
std::size_t last_element(std::wstring_view long_form)
{
    std::size_t const last =
        long_form.rfind(pathname_traits<wchar_t>::PATHNAME_SEPARATOR_CHARACTER);
    std::wstring_view const element = long_form.substr(last + 1);
    return element == L"." || element == L".." ? long_form.size() : last;
}

std::wstring clean_absolute(std::u16string_view text, windows::path_type_enum &path_type)
{
    return clean_pathname(absolute_text(text).view(), path_type, {});
}

std::wstring resolve_all_but_the_last(std::wstring const &long_form)
{
    std::wstring_view const text = long_form;
    std::size_t const cut = last_element(text);
    std::wstring form = resolve_link_chain(text.substr(0, cut), windows::path_type_enum(0));
    std::wstring_view tail = text.substr(cut);
    form.reserve(round_up_to_512(form.size() + tail.size() + 2));
    if (!tail.empty() && ends_in_backslash<wchar_t>(form))
        tail.remove_prefix(1);
    return form += tail;
}

} // namespace

std::wstring make_cleaned_form(upath const &p, upath const &base,
                               windows::path_type_enum &path_type)
{
    upath joined;
    return clean_absolute(join_with_base(p, base, joined).native(), path_type);
}

std::wstring make_resolved_access_form(std::u16string const &path)
{
    windows::path_type_enum path_type = windows::PATH_TYPE_INVALID;
    native_text<char16_t> const native(path);
    std::wstring long_form = clean_absolute(native.view(), path_type);
    if (!has_parent_component(long_form))
        return remove_dot_components(std::move(long_form), path_type);
    return resolve_all_but_the_last(long_form);
}

std::wstring windows::make_native_access_form_bridge(std::u16string const &path)
{
    std::wstring form = make_resolved_access_form(path);
    return std::move(strip_long_path_prefix(form, form.size(), longest_bare_pathname));
}

std::wstring make_native_access_form(std::u16string const &path)
{
    try {
        return windows::make_native_access_form_bridge(path);
    } catch (...) { // whatever it is, the caller wants some string to try
        return to_filesystem(path);
    }
}

std::wstring make_native_access_form_with_cleanup(std::u16string const &path)
{
    return make_native_access_form(make_native_form(path, true));
}

} // namespace fl::filesystem::detail
