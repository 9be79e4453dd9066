#include <fl/filesystem/pathname.hpp>

#include "pathname/path_type.hpp"

namespace fl::filesystem::detail {

namespace {

// The longest root that still depends on the current drive or directory: `C:`.
constexpr std::size_t longest_relative_root = 2;

} // namespace

bool is_absolute(std::u16string const &text)
{
    return root_path_length<char16_t>(text) > longest_relative_root;
}

bool path_traits<wchar_t, wchar_t>::is_absolute(std::wstring const &text)
{
    return root_path_length<wchar_t>(text) > longest_relative_root;
}

bool is_absolute_path_when_expanded(std::u16string const &text, bool)
{
    switch (classify_path_type<char16_t>(text)) {
    case windows::PATH_TYPE_ROOTED:
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_DRIVE_RELATIVE:
    case windows::PATH_TYPE_UNC:
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_LONG_UNC:
        return true;
    default: // nothing expands a long drive-relative pathname or a device
        return false;
    }
}

} // namespace fl::filesystem::detail
