#include "status/status_record.hpp"

#include "status/file_time.hpp"
#include "status/permission_word.hpp"

namespace fl::filesystem::detail {

unsigned int plain_type(WIN32_FILE_ATTRIBUTE_DATA const &data)
{
    bool const is_directory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return is_directory ? file_status::directory_file : file_status::regular_file;
}

file_status make_status_record(std::wstring_view path, WIN32_FILE_ATTRIBUTE_DATA const &data,
                               unsigned int type)
{
    return file_status(type, attributes_to_perms(path, data.dwFileAttributes),
                       to_ptime(data.ftLastAccessTime), to_ptime(data.ftLastWriteTime),
                       to_ptime(data.ftCreationTime),
                       join_halves(data.nFileSizeHigh, data.nFileSizeLow));
}

file_status_light make_light_record(WIN32_FILE_ATTRIBUTE_DATA const &data)
{
    return file_status_light(plain_type(data), to_ptime(data.ftLastWriteTime),
                             join_halves(data.nFileSizeHigh, data.nFileSizeLow));
}

} // namespace fl::filesystem::detail
