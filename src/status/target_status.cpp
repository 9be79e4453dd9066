#include <fl/filesystem/windows.hpp>

#include "access/mapped_drive.hpp"
#include "failure/demanded_attributes.hpp"
#include "failure/missing_codes.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "pathname/path_type.hpp"
#include "platform/attribute_query.hpp"
#include "status/link_hop.hpp"
#include "status/status_record.hpp"

namespace fl::filesystem::detail::windows {

namespace {

file_status plain_record(std::wstring const &path, WIN32_FILE_ATTRIBUTE_DATA const &data)
{
    return make_status_record(path, data, plain_type(data));
}

/// What a link without a text stands for: the volume that it shows is there, and no
/// more is known of it.
file_status record_without_target(attrib_link_type link_type)
{
    bool const is_volume = link_type == link_type_volume_mount;
    return file_status(is_volume ? file_status::file_type_auto : file_status::file_not_found);
}

/// Queries `path`, and reports a failure unless it means that there is no such name.
attribute_query query_target(std::wstring const &path)
{
    attribute_query const query(path);
    if (query.has_told_code() && !is_missing_for_status(query.code, path.size()))
        throw_win32_exception(query.code, path);
    return query;
}

/// What `path` leads to, which was come to by `depth` links already. A link is followed
/// wherever it stands, and one that leads nowhere is an answer.
file_status target_at(std::wstring path, int depth)
{
    for (;; ++depth) {
        check_link_depth(depth, path);
        attribute_query const query = query_target(path);
        if (query.has_told_code())
            return file_status();
        reparse_data_context data;
        if (!read_link_data(data, path, query.data.dwFileAttributes))
            return plain_record(path, query.data);
        decoded_link hop = hop_from(path, data);
        if (!hop.target)
            return plain_record(path, query.data);
        path = *std::move(hop.target);
    }
}

/// A link that leads nowhere. On a mapped drive it leads somewhere on the server.
file_status record_of_broken(std::wstring const &link, path_type_enum type)
{
    if (!is_mapped_network_drive(link, type))
        return file_status();
    return plain_record(link, demand_attribute_data(link));
}

} // namespace

file_status target_status_bridge(std::wstring const &link)
{
    path_type_enum const type = classify_path_type<wchar_t>(link);
    if (type == PATH_TYPE_UNC || type == PATH_TYPE_LONG_UNC)
        return plain_record(link, demand_attribute_data(link));
    reparse_data_context data;
    unsigned int const code = read_reparse_data(data, link);
    if (code != ERROR_SUCCESS)
        throw_win32_exception(code, link);
    decoded_link const hop = hop_from(link, data);
    if (!hop.target)
        return record_without_target(hop.type);
    std::wstring const &target = *hop.target;
    attribute_query const query = query_target(target);
    if (query.has_told_code())
        return record_of_broken(link, type);
    if (read_link_data(data, target, query.data.dwFileAttributes))
        return target_at(target, 1);
    return plain_record(target, query.data);
}

} // namespace fl::filesystem::detail::windows
