#ifndef FL_FILESYSTEM_SRC_STATUS_STATUS_RECORD_HPP
#define FL_FILESYSTEM_SRC_STATUS_STATUS_RECORD_HPP
// Status records out of what the system says of a name.

#include <fl/filesystem/file_status.hpp>

#include <windows.h>

#include <string_view>

namespace fl::filesystem::detail {

/// `directory_file` or `regular_file`: no look at what a reparse point is.
unsigned int plain_type(WIN32_FILE_ATTRIBUTE_DATA const &data);

/// The record of a name with this data. `path` tells what can be executed. Throws as
/// `attributes_to_perms` does.
file_status make_status_record(std::wstring_view path, WIN32_FILE_ATTRIBUTE_DATA const &data,
                               unsigned int type);

/// The short record. No text is looked at, so nothing is thrown.
file_status_light make_light_record(WIN32_FILE_ATTRIBUTE_DATA const &data);

} // namespace fl::filesystem::detail

#endif
