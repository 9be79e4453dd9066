#include <fl/filesystem/access_forms.hpp>

#include "pathname/long_prefix.hpp"
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
    bool const names_server = is_unc_prefix_at<wchar_t>(path, 0);
    return with_long_prefix<wchar_t, wchar_t>(path, names_server);
}

} // namespace fl::filesystem::detail
