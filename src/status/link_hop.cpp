#include "status/link_hop.hpp"

#include <fl/filesystem/windows.hpp>

#include "access/mapped_drive.hpp"
#include "failure/throw.hpp"
#include "links/reparse_data.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

constexpr int max_link_depth = 20;

} // namespace

void check_link_depth(int depth, std::wstring const &path)
{
    if (depth >= max_link_depth)
        throw_exception(SystemError(ERROR_DS_LOOP_DETECT, narrow(path)));
}

bool is_on_network(std::wstring const &path)
{
    windows::path_type_enum const type = classify_path_type<wchar_t>(path);
    return type == windows::PATH_TYPE_UNC || type == windows::PATH_TYPE_LONG_UNC ||
           is_mapped_network_drive(path, type);
}

decoded_link hop_from(std::wstring const &path, windows::reparse_data_context const &data)
{
    decoded_link hop;
    std::wstring const text = windows::get_target_path_bridge(hop.type, data);
    if (!text.empty())
        hop.target = windows::build_target_path_bridge(path, text, hop.type);
    return hop;
}

std::optional<std::wstring> next_hop(std::wstring const &path, std::uint32_t attributes)
{
    windows::reparse_data_context data;
    if (!read_link_data(data, path, attributes) || is_on_network(path))
        return std::nullopt;
    return hop_from(path, data).target;
}

} // namespace fl::filesystem::detail
