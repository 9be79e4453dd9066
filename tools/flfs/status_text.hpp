#ifndef FL_FLFS_STATUS_TEXT_HPP
#define FL_FLFS_STATUS_TEXT_HPP
// The facts of a status record in words, and words for what of them can be changed.

#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/file_time.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace flfs {

/// What is told by a word.
struct term
{
    char const *description; ///< to people: "junction or volume mount point"
    char const *identifier;  ///< to programs, after the library's constants: "reparse_file"
};

term type_of(fl::filesystem::file_status const &status);

/// The permission bits as four octal digits: "0644".
std::string octal_permissions(unsigned int perms);

/// The permission bits of owner, group and others: "rw-r--r--".
std::string permission_letters(unsigned int perms);

struct attribute_flag
{
    unsigned int bit;
    char letter; ///< as `flfs chmod` takes it
    term name;
};

/// Every attribute flag that a permission word can hold, in the order of their bits.
inline constexpr attribute_flag attribute_flags[] = {
    {fl::filesystem::file_status::archive_file, 'a', {"archive", "archive_file"}},
    {fl::filesystem::file_status::system_file, 's', {"system", "system_file"}},
    {fl::filesystem::file_status::hidden_file, 'h', {"hidden", "hidden_file"}},
    {fl::filesystem::file_status::non_indexed_file, 'i', {"not indexed", "non_indexed_file"}},
};

/// The permission word, for the library's `permissions`, that `text` stands for: a sign and
/// letters out of "rwxashi". Nothing if it is no such word, or a `+` or `-` alone, which would
/// say nothing.
///
///     +w    perms_add | 0222
///     -ah   perms_remove | archive_file | hidden_file
///     =rw   0666
///     =     no_perms
std::optional<unsigned int> permission_word(std::string_view text);

/// A time in UTC as ISO 8601 has it: "2024-02-29T12:00:00.25Z". Nothing if it is no time,
/// or in the year 10,000 or later: disks can hold such times, this notation can't.
std::optional<std::string> iso_time(boost::posix_time::ptime const &time);

/// The same with all seven digits that the system keeps: "2024-02-29T12:00:00.2500000Z".
std::string iso_time(fl::filesystem::file_time_type time);

} // namespace flfs

#endif
