#include "access/long_prefix.hpp"

#include <fl/filesystem/windows.hpp>

#include "failure/throw.hpp"
#include "pathname/path_type.hpp"

#include <algorithm>

namespace fl::filesystem::detail {

namespace {

constexpr std::size_t unc_prefix_size = 2;      // the two backslashes ahead of a server
constexpr std::size_t long_prefix_size = 4;     // \\?\ ahead of a drive
constexpr std::size_t long_unc_prefix_size = 8; // \\?\UNC\ ahead of a server

/// `prefix` and the units of `text`.
template <typename Result, typename Char>
std::basic_string<Result> behind(Result const *prefix, std::basic_string_view<Char> text)
{
    std::basic_string_view<Result> const head = prefix;
    std::basic_string<Result> prefixed;
    prefixed.reserve(head.size() + text.size());
    prefixed.append(head).append(text.begin(), text.end());
    return prefixed;
}

} // namespace

template <typename Result, typename Char>
std::basic_string<Result> add_long_prefix(std::basic_string_view<Char> text)
{
    using traits = pathname_traits<Result>;
    switch (classify_path_type(text)) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return behind(traits::LONG_PATHNAME_PREFIX, text);
    case windows::PATH_TYPE_UNC:
        return behind(traits::LONG_UNC_PATHNAME_PREFIX, text.substr(unc_prefix_size));
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_LONG_UNC:
        return std::basic_string<Result>(text.begin(), text.end());
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
    if (is_long_unc_prefix_at(text, 0) && size - long_unc_prefix_size + unc_prefix_size <= limit) {
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
    constexpr std::uint32_t names_a_server = 0x2000;
    std::wstring_view text = std::wstring_view(path).substr(0, length);
    if ((path_type & names_a_server) == 0)
        return behind(pathname_traits<wchar_t>::LONG_PATHNAME_PREFIX, text);
    text.remove_prefix(std::min(unc_prefix_size, text.size()));
    return behind(pathname_traits<wchar_t>::LONG_UNC_PATHNAME_PREFIX, text);
}

} // namespace fl::filesystem::detail
