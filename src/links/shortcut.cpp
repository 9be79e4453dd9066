#include "links/shortcut.hpp"

#include "pathname/long_prefix.hpp"
#include "platform/shell_link_object.hpp"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace fl::filesystem::detail {

namespace {

constexpr std::wstring_view shortcut_extension = L".lnk";

} // namespace

bool is_shortcut_path(std::wstring const &path) noexcept
{
    return path.size() > shortcut_extension.size() && path.ends_with(shortcut_extension);
}

HRESULT read_stored_target(std::wstring const &path, std::wstring &target)
{
    std::wstring plain = path;
    strip_long_path_prefix(plain, plain.size(), std::wstring::npos);
    wchar_t buffer[MAX_PATH] = {};
    HRESULT const result = read_stored_path(plain, buffer);
    target.assign(buffer, std::find(std::begin(buffer), std::end(buffer), L'\0'));
    return result;
}

std::wstring read_shortcut_target(std::wstring const &path, unsigned int &error)
{
    std::wstring target;
    if (!is_shortcut_path(path))
        return target;
    HRESULT const result = read_stored_target(path, target);
    if (FAILED(result))
        error = hresult_to_win32(result);
    return target;
}

} // namespace fl::filesystem::detail
