#include "flfs/inspection.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/path.hpp>

#include "pathname/path_type.hpp"

namespace flfs {

namespace fs = fl::filesystem;
namespace detail = fl::filesystem::detail;
namespace windows = fl::filesystem::detail::windows;

namespace {

root_analysis analyse(std::u16string_view text)
{
    try {
        detail::analysed_root const root = detail::analyse_path_root(text);
        return {root.type, root.length, {}, {}};
    } catch (foundation::ustring::CtypeInvalidCharacter const &exception) {
        return {windows::PATH_TYPE_INVALID, 0, "foundation::ustring::CtypeInvalidCharacter",
                exception.what()};
    }
}

std::optional<std::uint64_t> unc_root_length_of(std::u16string_view text)
{
    // \\server\share
    if (detail::is_unc_prefix_at(text, 0))
        return detail::unc_root_length(text, 2);
    // \\?\UNC\server\share
    if (detail::is_long_unc_prefix_at(text, 0))
        return detail::unc_root_length(text, 8);
    return std::nullopt;
}

kind kind_of(std::u16string const &text)
{
    std::u16string_view const view = text;
    return {detail::classify_path_type(view), analyse(view), detail::get_root_path_length(text),
            detail::element_root_length(view), unc_root_length_of(view)};
}

forms forms_of(std::u16string const &text)
{
    forms all{};
    all.native = detail::make_native_form(text, true);
    all.native_type = detail::classify_path_type(std::u16string_view(all.native));
    all.generic = detail::make_generic_form(all.native);
    try {
        all.expanded = detail::make_expanded_path(all.native, true);
    } catch (fs::FsysExceptionBase const &exception) {
        all.expansion_failure = describe(exception);
    }
    all.access =
        detail::from_filesystem(detail::make_access_form(detail::to_filesystem(all.native)));
    all.is_absolute = detail::is_absolute(all.native);
    all.is_absolute_when_expanded = detail::is_absolute_path_when_expanded(all.native, true);
    return all;
}

/// `path` is that of the text as given: its text is the native form.
parts parts_of(fs::upath const &path)
{
    std::u16string const &native = path.native();
    parts all{};
    all.root_name = detail::extract_root_name(native);
    all.root_directory = detail::extract_root_directory(native);
    all.root_path = detail::extract_root_path(native);
    all.relative_path = detail::extract_relative_path(native);
    all.parent_path = detail::extract_parent_path(native);
    all.filename = detail::extract_filename(native);
    all.stem = detail::extract_stem(native);
    all.extension = detail::extract_extension(native);
    all.elements.assign(path.begin(), path.end());
    all.with_share_in_root = detail::extract_pathname_elements(native);
    return all;
}

} // namespace

inspection inspect(std::u16string const &text)
{
    return {text, kind_of(text), forms_of(text), parts_of(fs::upath(text))};
}

bool differs_with_share_in_root(parts const &all)
{
    auto const &other = all.with_share_in_root;
    return all.parent_path != other.parent_path || all.filename != other.filename ||
           all.stem != other.stem || all.extension != other.extension;
}

} // namespace flfs
