#include "status/status.hpp"

#include <fl/filesystem/windows.hpp>

#include "failure/demanded_attributes.hpp"
#include "failure/missing_codes.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "platform/attribute_query.hpp"
#include "status/link_hop.hpp"
#include "status/status_record.hpp"

namespace fl::filesystem::detail {

namespace {

/// Whether no name is there, which is an answer: nothing is thrown on its account. Throws what
/// another failure stands for.
bool is_missing(attribute_query const &query, std::wstring const &path)
{
    if (query.has_failed && !is_missing_for_status(query.code, path.size()))
        throw_win32_exception(query.code, path);
    return query.has_failed;
}

file_status record_of_name(std::wstring const &path, WIN32_FILE_ATTRIBUTE_DATA const &data)
{
    unsigned int type = plain_type(data);
    windows::reparse_data_context reparse_data;
    if (read_link_data(reparse_data, path, data.dwFileAttributes)) {
        bool const is_symlink = reparse_tag(reparse_data) == DWORD{IO_REPARSE_TAG_SYMLINK};
        type = is_symlink ? file_status::symlink_file : file_status::reparse_file;
    }
    return make_status_record(path, data, type);
}

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

file_status status_at(std::wstring path)
{
    for (int depth = 0;; ++depth) {
        check_link_depth(depth, path);
        attribute_query const query(path);
        if (is_missing(query, path))
            return file_status();
        std::optional<std::wstring> next = next_hop(path, query.data.dwFileAttributes);
        if (!next)
            return make_status_record(path, query.data, plain_type(query.data));
        path = *std::move(next);
    }
}

file_status symlink_status_at(std::wstring const &path)
{
    attribute_query const query(path);
    return is_missing(query, path) ? file_status() : record_of_name(path, query.data);
}

file_status demand_symlink_status(std::wstring const &path)
{
    return record_of_name(path, demand_attribute_data(path));
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
