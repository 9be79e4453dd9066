#include "install/true_case.hpp"

#include "failure/win32_error.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/root_length.hpp"
#include "pathname/shapes.hpp"
#include "platform/owned_handle.hpp"

#include <windows.h>

#include <algorithm>
#include <cwctype>

namespace fl::filesystem::detail {

namespace {

constexpr std::size_t drive_letter_at = 4; // behind \\?\ (a U of UNC stands there, too)
constexpr std::size_t longest_element = 255;

void close(find_handle &search)
{
    if (!search || ::FindClose(search.release()))
        return;
    DWORD const code = ::GetLastError();
    throw_win32_exception(code, std::wstring(), std::wstring());
}

/// A level that can't be read. Names of impossible length stay as they are.
std::wstring lower_cased(std::wstring_view element)
{
    std::wstring text(element);
    if (text.size() <= longest_element)
        std::transform(text.begin(), text.end(), text.begin(), [](wchar_t unit) {
            return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
        });
    return text;
}

/// The name of the last element of `partial`, a part of `full`, as it is on disk. The handle
/// that finds it takes the place of the one in `search`.
std::wstring true_name(std::wstring const &partial, std::wstring_view element,
                       std::wstring const &full, find_handle &search)
{
    WIN32_FIND_DATAW data = {};
    find_handle found(::FindFirstFileExW(partial.c_str(), FindExInfoBasic, &data,
                                         FindExSearchNameMatch, nullptr, 0));
    DWORD const code = ::GetLastError();
    if (found) {
        close(search);
        search = std::move(found);
        return data.cFileName;
    }
    bool const is_unreadable = code == ERROR_PATH_NOT_FOUND || code == ERROR_ACCESS_DENIED;
    if (!is_unreadable && partial.size() == full.size())
        throw_win32_exception(code, full, std::wstring());
    return lower_cased(element);
}

} // namespace

std::wstring restore_true_case(std::wstring_view text)
{
    std::wstring const full = add_long_prefix<wchar_t>(text);
    std::size_t const root = root_path_length<wchar_t>(full);
    std::wstring out = full.substr(0, root);
    out[drive_letter_at] =
        static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(out[drive_letter_at])));
    if (root == full.size())
        return out;
    if (ends_in_backslash<wchar_t>(out))
        out.pop_back(); // each element brings its own
    find_handle search;
    for (std::size_t begin = root; begin < full.size();) {
        std::size_t const end = find_backslash<wchar_t>(full, begin);
        std::wstring const partial = full.substr(0, end);
        std::wstring const name =
            true_name(partial, std::wstring_view(partial).substr(begin), full, search);
        out += pathname_traits<wchar_t>::PATHNAME_SEPARATOR_CHARACTER;
        out += name;
        begin = end + 1;
    }
    close(search);
    return out;
}

} // namespace fl::filesystem::detail
