#ifndef FL_FLFS_STATUS_TEXT_HPP
#define FL_FLFS_STATUS_TEXT_HPP
// The facts of a status record in words.

#include <fl/filesystem/file_status.hpp>

#include <optional>
#include <string>
#include <vector>

namespace flfs {

/// For people: "junction or volume mount point".
char const *type_description(fl::filesystem::file_status const &status);

/// For programs, after the library's constants: "reparse_file".
char const *type_identifier(fl::filesystem::file_status const &status);

/// The permission bits as four octal digits: "0644".
std::string octal_permissions(unsigned int perms);

/// The permission bits of owner, group and others: "rw-r--r--".
std::string permission_letters(unsigned int perms);

struct attribute_flag
{
    unsigned int bit;
    char letter;             ///< as `flfs chmod` takes it
    char const *description; ///< for people: "not indexed"
    char const *identifier;  ///< for programs: "non_indexed_file"
};

/// Every attribute flag that a permission word can hold, in the order of their bits.
std::vector<attribute_flag> const &attribute_flags();

/// A time in UTC as ISO 8601 has it: "2024-02-29T12:00:00.25Z". Nothing if it is no time,
/// or in the year 10,000 or later: disks can hold such times, this notation can't.
std::optional<std::string> iso_time(boost::posix_time::ptime const &time);

} // namespace flfs

#endif
