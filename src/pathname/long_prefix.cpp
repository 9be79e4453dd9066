#include "pathname/long_prefix.hpp"

#include <fl/filesystem/windows.hpp>

#include "failure/throw.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

#include <algorithm>

namespace fl::filesystem::detail {

template <typename Result, typename Char>
std::basic_string<Result> with_long_prefix(std::basic_string_view<Char> text, bool names_server)
{
    using traits = pathname_traits<Result>;
    std::basic_string_view<Result> const prefix =
        names_server ? traits::LONG_UNC_PATHNAME_PREFIX : traits::LONG_PATHNAME_PREFIX;
    if (names_server)
        text.remove_prefix(std::min(server_prefix_size, text.size()));
    std::basic_string<Result> prefixed;
    prefixed.reserve(prefix.size() + text.size());
    prefixed.append(prefix);
    append_units(prefixed, text);
    return prefixed;
}

template std::wstring with_long_prefix(std::u16string_view, bool);
template std::wstring with_long_prefix(std::wstring_view, bool);
template std::u16string with_long_prefix(std::wstring_view, bool);

template <typename Result, typename Char>
std::basic_string<Result> make_literal_form(std::basic_string_view<Char> text)
{
    switch (classify_path_type(text)) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return with_long_prefix<Result>(text, false);
    case windows::PATH_TYPE_UNC:
        return with_long_prefix<Result>(text, true);
    default:
        return std::basic_string<Result>(text.begin(), text.end());
    }
}

template std::wstring make_literal_form(std::u16string_view);
template std::wstring make_literal_form(std::wstring_view);

template <typename Result, typename Char>
std::basic_string<Result> add_long_prefix(std::basic_string_view<Char> text)
{
    switch (classify_path_type(text)) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_UNC:
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_LONG_UNC:
        return make_literal_form<Result>(text);
    default:
        throw_invalid_argument("Long UNC path without root not permitted");
    }
}

template std::wstring add_long_prefix(std::u16string_view);
template std::wstring add_long_prefix(std::wstring_view);
template std::u16string add_long_prefix(std::wstring_view);

std::wstring &strip_long_path_prefix(std::wstring &path, std::size_t length, std::size_t limit)
{
    std::wstring_view const text = std::wstring_view(path).substr(0, length);
    std::size_t const size = text.size();
    // a server pathname gets two backslashes in exchange for its prefix
    if (is_long_unc_prefix_at(text, 0) &&
        size - long_unc_prefix_size + server_prefix_size <= limit) {
        path.resize(size);
        path.replace(0, long_unc_prefix_size, pathname_traits<wchar_t>::UNC_PREFIX);
    } else if (is_long_prefix_at(text, 0) && size - long_prefix_size <= limit) {
        path.resize(size);
        path.erase(0, long_prefix_size);
    }
    return path;
}

std::wstring windows::add_long_path_prefix_bridge(std::wstring const &path, std::uint64_t length,
                                                  path_type_enum path_type)
{
    constexpr std::uint32_t server_flag = 0x2000;
    std::wstring_view const text = std::wstring_view(path).substr(0, length);
    return with_long_prefix<wchar_t>(text, (path_type & server_flag) != 0);
}

} // namespace fl::filesystem::detail
