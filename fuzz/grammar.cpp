// Pathnames of any text: both character types agree, indexes stay inside, and what is taken
// apart joins again.

#include "fuzz/input.hpp"

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/pathname.hpp>

#include "pathname/path_type.hpp"
#include "pathname/root_length.hpp"

using fuzz::must;
using fuzz::wide;

namespace {

namespace ff = fl::filesystem;
namespace detail = ff::detail;
using traits = detail::path_traits<wchar_t, wchar_t>;

/// A unit above 127 where "UNC" is compared is refused, in either type.
void analyse(std::u16string_view text, std::wstring_view wider)
{
    std::size_t length = 0;
    bool is_refused = false;
    try {
        length = detail::analyse_path_root(text).length;
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        is_refused = true;
    }
    must(length <= text.size(), "the root is inside");
    try {
        must(length == detail::analyse_path_root(wider).length && !is_refused, "one root");
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        must(is_refused, "refused in both types");
    }
}

void measure(std::u16string_view text)
{
    std::wstring const owned = wide(text);
    std::wstring_view const wider = owned;
    must(detail::classify_path_type(text) == detail::classify_path_type(wider), "one type");
    analyse(text, wider);
    must(detail::root_path_length(text) <= text.size(), "its length is inside");
    must(detail::root_path_length(text) == detail::root_path_length(wider), "one length");
    must(detail::element_root_length(text) <= text.size(), "the elements' root is inside");
    must(detail::element_root_length(text) == detail::element_root_length(wider),
         "one elements' root");
}

void take_apart(std::u16string const &text)
{
    std::u16string const root = detail::extract_root_path(text);
    must(root.size() == detail::get_root_path_length(text), "the root has its length");
    must(root + detail::extract_relative_path(text) == text, "root and rest are the whole");
    std::u16string const filename = detail::extract_filename(text);
    must(text.ends_with(filename), "the filename is at the end");
    must(text.starts_with(detail::extract_parent_path(text)), "the parent is at the beginning");
    must(filename.starts_with(detail::extract_stem(text)), "the stem begins the filename");
    must(filename.ends_with(detail::extract_extension(text)), "the extension ends it");
    must(traits::extract_filename(wide(text)) == wide(filename), "one filename");
}

void walk(std::u16string const &text)
{
    std::uint64_t const root = detail::get_root_path_length(text);
    std::uint64_t position = text.size();
    std::u16string element;
    for (std::uint64_t before = position + 1; position < before;) {
        before = position;
        detail::move_up(text, root, position, element);
        must(position <= before && position + element.size() <= text.size(), "it goes up inside");
    }
    std::size_t count = 0;
    for (auto const &each : ff::upath(text))
        count += 1 + each.size() / 100000;
    must(count <= text.size() + 1, "it goes down to an end");
}

void bring_to_forms(std::u16string const &text)
{
    std::u16string const native = detail::make_native_form(text);
    must(native.size() <= text.size(), "the native form doesn't grow");
    must(native.find(u'/') == native.npos, "it has backslashes");
    must(traits::make_native_form(wide(text), true) == wide(native), "one native form");
    must(detail::make_generic_form(text).size() == text.size(), "the generic form is as long");
}

void change(std::u16string const &text, std::u16string const &other)
{
    std::u16string joined = text;
    try {
        detail::concatenate_pathname(joined, other);
        must(joined.size() <= text.size() + other.size() + 1, "no more than a separator is added");
    } catch (ff::InvalidArgument const &) {
        must(joined == text, "the base stays as it was");
    }
    std::u16string replaced = text;
    try {
        detail::replace_extension(replaced, other);
    } catch (ff::InvalidArgument const &) {
        must(replaced == text, "the pathname stays as it was");
    }
    detail::remove_filename(joined);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    fuzz::input input(data, size);
    std::u16string const text = input.line();
    std::u16string const other = input.line();
    measure(text);
    take_apart(text);
    walk(text);
    bring_to_forms(text);
    change(text, other);
    return 0;
}
