#include <fl/filesystem/pathname.hpp>

#include "pathname/parent_size.hpp"
#include "pathname/root_length.hpp"

namespace fl::filesystem::detail {

namespace {

using unit_traits = pathname_traits<char16_t>;

/// The last element of `text`, as a view into it or of a literal.
template <typename Char>
std::basic_string_view<Char> filename_of(std::basic_string_view<Char> text)
{
    std::size_t const root = root_path_length(text);
    // the last backslash may stand inside the root: a device's is one unit long
    if (root != text.size()) {
        std::size_t const last = text.rfind(pathname_traits<Char>::PATHNAME_SEPARATOR_CHARACTER);
        return text.substr(last == text.npos ? root : last + 1);
    }
    if (ends_in_backslash(text))
        return pathname_traits<Char>::ROOT_PATHNAME;
    return text;
}

/// Where the extension's full stop stands in `filename`, or `npos`. "." and ".."
/// have none.
std::size_t find_extension(std::u16string_view filename)
{
    if (is_dot_element(filename, 0, filename.size()))
        return filename.npos;
    return filename.rfind(unit_traits::DOT_CHARACTER);
}

/// Fills parent path and filename of a text that is more than its root.
void split_filename(std::u16string_view text, std::size_t root,
                    pathname_element_context<char16_t> &elements)
{
    std::size_t const last = text.rfind(unit_traits::PATHNAME_SEPARATOR_CHARACTER);
    if (last == text.npos) {
        elements.parent_path = text.substr(0, root);
        elements.filename = text.substr(root);
        return;
    }
    elements.parent_path = text.substr(0, last + 1 == root ? root : last); // a root stays whole
    elements.filename = text.substr(last + 1);
}

/// Fills stem and extension from the filename. A name that ends in its full stop
/// has no extension and keeps the full stop.
void split_extension(pathname_element_context<char16_t> &elements)
{
    std::u16string_view const filename = elements.filename;
    std::size_t const stop = filename.rfind(unit_traits::DOT_CHARACTER);
    if (stop == filename.npos || stop + 1 == filename.size()) {
        elements.stem = filename;
        return;
    }
    elements.stem = filename.substr(0, stop);
    elements.extension = filename.substr(stop + 1);
}

} // namespace

std::uint64_t get_root_path_length(std::u16string const &text)
{
    return root_path_length<char16_t>(text);
}

std::u16string extract_root_name(std::u16string const &text)
{
    return std::u16string(root_name<char16_t>(text));
}

std::u16string extract_root_directory(std::u16string const &text)
{
    std::size_t const root = root_path_length<char16_t>(text);
    if (root == 0 || !is_backslash(text[root - 1]))
        return {};
    return unit_traits::ROOT_PATHNAME;
}

std::u16string extract_root_path(std::u16string const &text)
{
    return text.substr(0, root_path_length<char16_t>(text));
}

std::u16string extract_relative_path(std::u16string const &text)
{
    return text.substr(root_path_length<char16_t>(text));
}

std::u16string extract_parent_path(std::u16string const &text)
{
    return text.substr(0, parent_size<char16_t>(text));
}

std::u16string extract_filename(std::u16string const &text)
{
    return std::u16string(filename_of<char16_t>(text));
}

std::wstring path_traits<wchar_t, wchar_t>::extract_filename(std::wstring const &text)
{
    return std::wstring(filename_of<wchar_t>(text));
}

std::u16string extract_stem(std::u16string const &text)
{
    std::u16string_view const filename = filename_of<char16_t>(text);
    return std::u16string(filename.substr(0, find_extension(filename)));
}

std::u16string extract_extension(std::u16string const &text)
{
    std::u16string_view const filename = filename_of<char16_t>(text);
    std::size_t const stop = find_extension(filename);
    if (stop == filename.npos)
        return {};
    return std::u16string(filename.substr(stop + 1));
}

pathname_element_context<char16_t> extract_pathname_elements(std::u16string const &text)
{
    pathname_element_context<char16_t> elements;
    std::size_t const root = element_root_length<char16_t>(text);
    if (root != text.size()) {
        split_filename(text, root, elements);
        split_extension(elements);
        return elements;
    }
    if (ends_in_backslash<char16_t>(text)) {
        elements.parent_path = text.substr(0, root - 1);
        elements.filename = unit_traits::ROOT_PATHNAME;
    } else {
        elements.filename = text;
    }
    elements.stem = elements.filename;
    return elements;
}

} // namespace fl::filesystem::detail
