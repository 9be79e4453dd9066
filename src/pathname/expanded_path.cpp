#include "pathname/expanded_path.hpp"

#include <fl/filesystem/pathname.hpp>

#include "pathname/full_path_name.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

namespace fl::filesystem::detail {

std::wstring expand_drive_relative(std::wstring const &path)
{
    std::wstring full = full_path_name(path.substr(0, drive_size));
    if (path.size() == drive_size)
        return full;
    if (!ends_in_backslash<wchar_t>(full))
        full += pathname_traits<wchar_t>::PATHNAME_SEPARATOR_CHARACTER;
    full.append(path, drive_size);
    return full;
}

std::u16string make_expanded_path(std::u16string const &text, bool)
{
    switch (classify_path_type<char16_t>(text)) {
    case windows::PATH_TYPE_ROOTED:
        return narrow(full_path_name(widen(text)));
    case windows::PATH_TYPE_DRIVE_RELATIVE:
        return narrow(expand_drive_relative(widen(text)));
    default:
        return text;
    }
}

} // namespace fl::filesystem::detail
