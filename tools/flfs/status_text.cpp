#include "flfs/status_text.hpp"

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/date_time/posix_time/time_formatters.hpp>

#include <array>
#include <cstdio>

namespace flfs {

using fl::filesystem::file_status;

namespace {

struct type_name
{
    unsigned int type;
    char const *description;
    char const *identifier;
};

// what status queries answer
constexpr type_name type_names[] = {
    {file_status::regular_file, "file", "regular_file"},
    {file_status::directory_file, "directory", "directory_file"},
    {file_status::symlink_file, "symbolic link", "symlink_file"},
    {file_status::reparse_file, "junction or volume mount point", "reparse_file"},
    {file_status::file_not_found, "not found", "file_not_found"},
};

type_name name_of(file_status const &status)
{
    for (type_name const &row : type_names)
        if (row.type == status.get_type())
            return row;
    return {status.get_type(), "unknown", "file_type_unknown"};
}

} // namespace

char const *type_description(file_status const &status)
{
    return name_of(status).description;
}

char const *type_identifier(file_status const &status)
{
    return name_of(status).identifier;
}

std::string octal_permissions(unsigned int perms)
{
    constexpr unsigned int permission_bits = 07777; // the flags stand above them
    std::array<char, 8> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04o", perms & permission_bits);
    return buffer.data();
}

std::string permission_letters(unsigned int perms)
{
    std::string letters = "rwxrwxrwx";
    unsigned int bit = file_status::owner_read;
    for (char &letter : letters) {
        if ((perms & bit) == 0)
            letter = '-';
        bit >>= 1;
    }
    return letters;
}

std::vector<attribute_flag> const &attribute_flags()
{
    static std::vector<attribute_flag> const flags = {
        {file_status::archive_file, 'a', "archive", "archive_file"},
        {file_status::system_file, 's', "system", "system_file"},
        {file_status::hidden_file, 'h', "hidden", "hidden_file"},
        {file_status::non_indexed_file, 'i', "not indexed", "non_indexed_file"},
    };
    return flags;
}

std::optional<std::string> iso_time(boost::posix_time::ptime const &time)
{
    static boost::posix_time::ptime const last_day(boost::gregorian::date(9999, 12, 31));
    if (time.is_special() || time >= last_day + boost::posix_time::hours(24))
        return std::nullopt;
    return boost::posix_time::to_iso_extended_string(time) + 'Z';
}

} // namespace flfs
