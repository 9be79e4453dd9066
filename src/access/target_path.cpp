#include <fl/filesystem/windows.hpp>

#include "access/link_chain.hpp"
#include "access/path_cleaning.hpp"
#include "failure/throw.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/path_type.hpp"

#include <algorithm>

namespace fl::filesystem::detail::windows {

namespace {

constexpr std::uint32_t server_flag = 0x2000;
constexpr std::uint32_t long_prefix_flag = 0x4000;
constexpr std::uint32_t relative_link_flag = 0x100;

std::wstring with_prefix_of(std::wstring const &text, path_type_enum type)
{
    if ((type & long_prefix_flag) != 0)
        return text;
    return with_long_prefix<wchar_t, wchar_t>(text, (type & server_flag) != 0);
}

/// The directory that holds the link, a backslash, and the target.
std::wstring join_to_directory(std::wstring const &link_path, std::size_t root,
                               std::wstring const &target_text)
{
    std::size_t const last = link_path.rfind(backslash<wchar_t>);
    std::size_t const cut = last == std::wstring::npos ? root : std::max(last, root);
    std::wstring joined = link_path.substr(0, cut);
    if (!joined.empty() && !ends_in_backslash<wchar_t>(joined))
        joined += backslash<wchar_t>;
    return joined += target_text;
}

std::wstring build_relative(std::wstring const &link_path, std::wstring const &target_text)
{
    auto const [type, root] = analyse_path_root<wchar_t>(link_path);
    std::wstring const joined = join_to_directory(link_path, root, target_text);
    if (!is_path_clean(target_text, target_text.size()))
        return resolve_link_chain(joined, type);
    return with_prefix_of(joined, type);
}

/// A target has to say where it is, and in a way that links can.
void check_target_type(path_type_enum type)
{
    switch (type) {
    case PATH_TYPE_DRIVE_RELATIVE:
    case PATH_TYPE_UNC_NO_ROOT:
    case PATH_TYPE_LONG_DRIVE_RELATIVE:
    case PATH_TYPE_LONG_UNC_NO_ROOT:
        throw_exception(PathNotFound());
    case PATH_TYPE_DEVICE:
    case PATH_TYPE_INVALID:
        throw_invalid_argument("Invalid Path Type");
    default:
        return;
    }
}

std::wstring build_absolute(std::wstring const &target_text)
{
    auto const [type, root] = analyse_path_root<wchar_t>(target_text);
    check_target_type(type);
    std::wstring const behind_root = target_text.substr(std::min(root, target_text.size()));
    if (!is_path_clean(behind_root, behind_root.size()))
        return resolve_link_chain(target_text, type);
    return with_prefix_of(target_text, type);
}

} // namespace

std::wstring build_target_path_bridge(std::wstring const &link_path,
                                      std::wstring const &target_text, attrib_link_type link_type)
{
    return (link_type & relative_link_flag) != 0 ? build_relative(link_path, target_text)
                                                 : build_absolute(target_text);
}

} // namespace fl::filesystem::detail::windows
