#include <fl/filesystem/pathname.hpp>

#include "pathname/full_path_name.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

namespace fl::filesystem::detail {

namespace {

std::u16string expand_drive_relative(std::u16string_view text)
{
    constexpr std::size_t drive_size = 2;
    std::u16string full = narrow(full_path_name(widen(text.substr(0, drive_size))));
    if (text.size() == drive_size)
        return full;
    if (!ends_in_backslash<char16_t>(full))
        full += pathname_traits<char16_t>::PATHNAME_SEPARATOR_CHARACTER;
    full += text.substr(drive_size);
    return full;
}

} // namespace

std::u16string make_expanded_path(std::u16string const &text, bool)
{
    switch (classify_path_type<char16_t>(text)) {
    case windows::PATH_TYPE_ROOTED:
        return narrow(full_path_name(widen(text)));
    case windows::PATH_TYPE_DRIVE_RELATIVE:
        return expand_drive_relative(text);
    default:
        return text;
    }
}

} // namespace fl::filesystem::detail
