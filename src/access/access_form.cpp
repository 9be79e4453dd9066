#include <fl/filesystem/access_forms.hpp>

#include <fl/filesystem/windows.hpp>

#include "pathname/root_length.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"

namespace fl::filesystem::detail {

std::wstring to_filesystem(std::u16string const &text)
{
    return widen(text);
}

std::u16string from_filesystem(std::wstring const &text)
{
    return narrow(text);
}

std::wstring make_access_form(std::wstring const &path)
{
    if (path.size() <= longest_bare_pathname || root_path_length<wchar_t>(path) < 2)
        return path;
    windows::path_type_enum const type = is_unc_prefix_at<wchar_t>(path, 0)
                                             ? windows::PATH_TYPE_UNC
                                             : windows::PATH_TYPE_DRIVE_ABSOLUTE;
    return windows::add_long_path_prefix_bridge(path, path.size(), type);
}

} // namespace fl::filesystem::detail
