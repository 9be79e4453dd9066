#include "access/path_cleaning.hpp"

#include <fl/filesystem/windows.hpp>

#include "access/working_directory.hpp"
#include "failure/throw.hpp"
#include "pathname/expanded_path.hpp"
#include "pathname/full_path_name.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

#include <algorithm>
#include <optional>

namespace fl::filesystem::detail {

namespace {

using windows::path_type_enum;

/// An absolute pathname with its long prefix, and the type that the caller is told.
struct long_form
{
    std::wstring text;
    path_type_enum path_type;
};

[[noreturn]] void reject(std::wstring_view path)
{
    throw_exception(
        InvalidArgument("The path type of the given path is not valid", narrow(path), {}));
}

/// What the process has for a drive or a root must not be nothing.
std::wstring const &checked(std::wstring const &expanded)
{
    if (expanded.empty())
        throw_exception(PathNotFound());
    return expanded;
}

long_form with_drive_prefix(std::wstring_view text)
{
    return {with_long_prefix<wchar_t>(text, false), windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE};
}

long_form with_server_prefix(std::wstring_view text)
{
    return {with_long_prefix<wchar_t>(text, true), windows::PATH_TYPE_LONG_UNC};
}

/// `\foo`: the current drive may be a drive or a share, and it may have a long prefix,
/// whose type isn't told on.
long_form clean_rooted(std::wstring_view path)
{
    std::wstring const text = checked(full_path_name(std::wstring(path)));
    switch (classify_path_type<wchar_t>(text)) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return with_drive_prefix(text);
    case windows::PATH_TYPE_UNC:
        return with_server_prefix(text);
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_LONG_UNC:
        return {text, windows::PATH_TYPE_ROOTED};
    default:
        reject(path);
    }
}

/// What needs no other pathname to stand on; nothing if `text` does.
std::optional<long_form> clean_by_itself(std::wstring_view text, path_type_enum type)
{
    switch (type) {
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_LONG_UNC:
        return long_form{std::wstring(text), type};
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return with_drive_prefix(text);
    case windows::PATH_TYPE_UNC:
        return with_server_prefix(text);
    case windows::PATH_TYPE_DRIVE_RELATIVE:
        return with_drive_prefix(checked(expand_drive_relative(std::wstring(text))));
    default:
        return std::nullopt;
    }
}

/// `type` is told even where there is a rejection: from here on it is the anchor's.
long_form clean_relative(std::wstring_view path, path_type_enum &type, std::wstring_view base)
{
    std::wstring anchor(base);
    if (anchor.empty())
        anchor = current_path_wide();
    type = classify_path_type<wchar_t>(anchor);
    std::optional<long_form> joined = clean_by_itself(anchor, type);
    if (!joined)
        reject(path);
    joined->text.reserve(joined->text.size() + 1 + path.size());
    if (!ends_in_backslash<wchar_t>(joined->text))
        joined->text += pathname_traits<wchar_t>::PATHNAME_SEPARATOR_CHARACTER;
    joined->text += path;
    return *std::move(joined);
}

long_form clean_by_type(std::wstring_view path, path_type_enum &type, std::wstring_view base)
{
    if (std::optional<long_form> cleaned = clean_by_itself(path, type))
        return *std::move(cleaned);
    switch (type) {
    case windows::PATH_TYPE_ROOTED:
        return clean_rooted(path);
    case windows::PATH_TYPE_RELATIVE:
        return clean_relative(path, type, base);
    default:
        reject(path);
    }
}

/// `.`, `..`, and either of them with a backslash behind it.
bool begins_with_dot_element(std::wstring_view text)
{
    std::size_t const dots = text.substr(0, 2) == L".." ? 2 : 1;
    constexpr wchar_t dot = pathname_traits<wchar_t>::DOT_CHARACTER;
    return unit_at(text, 0) == dot && (text.size() == dots || is_backslash(text[dots]));
}

/// `.` or `..` with a backslash ahead of it.
bool ends_in_dot_element(std::wstring_view text)
{
    // `\.` and `\..` alone are too short to be looked at
    return (text.size() >= 3 && text.ends_with(L"\\.")) ||
           (text.size() >= 4 && text.ends_with(L"\\.."));
}

/// Whether an element of `path` is exactly `name`.
bool has_component(std::wstring_view path, std::wstring_view name)
{
    for (std::size_t begin = 0; begin <= path.size();) {
        std::size_t const end = find_backslash(path, begin);
        if (path.substr(begin, end - begin) == name)
            return true;
        begin = end + 1;
    }
    return false;
}

/// The elements behind the first `start` units, those that are `.` left out.
std::wstring without_dot_components(std::wstring_view path, std::size_t start)
{
    std::wstring cleaned;
    cleaned.reserve(path.size());
    cleaned = path.substr(0, start);
    std::size_t begin = start;
    for (std::size_t end = find_backslash(path, begin); end < path.size();
         end = find_backslash(path, begin)) {
        if (path.substr(begin, end - begin) != L".")
            cleaned += path.substr(begin, end + 1 - begin);
        begin = end + 1;
    }
    std::wstring_view const last = path.substr(begin);
    if (last == L"." && cleaned.size() == start)
        return cleaned;
    if (last != L".")
        cleaned += last;
    if (ends_in_backslash<wchar_t>(cleaned))
        cleaned.pop_back();
    return cleaned;
}

} // namespace

std::wstring clean_pathname(std::wstring_view path, path_type_enum &path_type,
                            std::wstring_view base)
{
    path_type = classify_path_type(path);
    long_form cleaned = clean_by_type(path, path_type, base);
    path_type = cleaned.path_type;
    return std::move(cleaned.text);
}

bool has_parent_component(std::wstring_view path)
{
    return has_component(path, L"..");
}

std::wstring remove_dot_components(std::wstring path, path_type_enum path_type)
{
    std::size_t const start = path_type == windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE
                                  ? std::min(long_prefix_size + drive_root_size, path.size())
                                  : checked_unc_root_length<wchar_t>(path, long_unc_prefix_size);
    if (path.size() == start)
        return path;
    if (has_component(std::wstring_view(path).substr(start), L"."))
        return without_dot_components(path, start);
    if (ends_in_backslash<wchar_t>(path))
        path.pop_back();
    return path;
}

bool is_path_clean(std::wstring_view path, std::size_t length)
{
    std::wstring_view const text = path.substr(0, length);
    if (begins_with_dot_element(text) || ends_in_dot_element(text))
        return false;
    // a text of up to three units ends the question here, whatever stands behind it
    if (text.size() < 4)
        return true;
    constexpr std::wstring_view unclean[] = {L"\\.\\", L"\\..\\", L"\\\\"};
    return std::none_of(std::begin(unclean), std::end(unclean), [path](std::wstring_view piece) {
        return path.find(piece) != std::wstring_view::npos;
    });
}

bool windows::is_path_clean_bridge(std::wstring const &path, std::uint64_t length)
{
    return is_path_clean(path, length);
}

} // namespace fl::filesystem::detail
