#include "status/status.hpp"

#include <fl/filesystem/windows.hpp>

#include "failure/demanded_attributes.hpp"
#include "links/reparse_data.hpp"
#include "status/link_hop.hpp"
#include "status/status_record.hpp"

namespace fl::filesystem::detail {

file_status status_at(std::wstring path)
{
    for (int depth = 0;; ++depth) {
        check_link_depth(depth, path);
        WIN32_FILE_ATTRIBUTE_DATA const data = demand_attribute_data(path);
        std::optional<std::wstring> next = next_hop(path, data.dwFileAttributes);
        if (!next)
            return make_status_record(path, data, plain_type(data));
        path = *std::move(next);
    }
}

namespace {

/// The record of the pathname in the form for the system.
template <typename Query>
file_status record_of(std::u16string const &path, Query query)
{
    if (path.empty())
        return file_status();
    return status_or_not_found(
        [&] { return query(windows::make_native_access_form_bridge(path)); });
}

} // namespace

file_status symlink_status_at(std::wstring const &path)
{
    WIN32_FILE_ATTRIBUTE_DATA const data = demand_attribute_data(path);
    unsigned int type = plain_type(data);
    windows::reparse_data_context reparse_data;
    if (read_link_data(reparse_data, path, data.dwFileAttributes)) {
        bool const is_symlink = reparse_tag(reparse_data) == DWORD{IO_REPARSE_TAG_SYMLINK};
        type = is_symlink ? file_status::symlink_file : file_status::reparse_file;
    }
    return make_status_record(path, data, type);
}

file_status status_of(std::u16string const &path)
{
    return record_of(path, status_at);
}

file_status symlink_status_of(std::u16string const &path)
{
    return record_of(path, symlink_status_at);
}

} // namespace fl::filesystem::detail
