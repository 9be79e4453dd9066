#include <fl/filesystem/file_status.hpp>

#include <type_traits>

namespace fl::filesystem {
namespace {

using boost::posix_time::ptime;

// The numbers of MSVC's std::filesystem::file_type. Other standard libraries have
// others, but the records are read by code that knows these.
enum standard_type : std::uint32_t
{
    standard_not_found = 1,
    standard_regular = 2,
    standard_directory = 3,
    standard_symlink = 4,
    standard_block = 5,
    standard_character = 6,
    standard_fifo = 7,
    standard_socket = 8,
    standard_unknown = 9
};

/// What MSVC's `std::filesystem::perms` takes: all but the attribute flags.
constexpr std::uint32_t standard_perms_mask = 07777;

constexpr bool is_not_found(std::uint32_t type)
{
    return (type & file_status::file_not_found) == file_status::file_not_found;
}

standard_type to_standard_type(std::uint32_t type)
{
    if (is_not_found(type)) // before its lower half, which may name a type
        return standard_not_found;
    switch (type & file_status::file_type_mask) {
    case file_status::regular_file:
        return standard_regular;
    case file_status::directory_file:
        return standard_directory;
    case file_status::symlink_file:
        return standard_symlink;
    case file_status::block_file:
        return standard_block;
    case file_status::character_file:
        return standard_character;
    case file_status::fifo_file:
        return standard_fifo;
    case file_status::socket_file:
        return standard_socket;
    default:
        return standard_unknown;
    }
}

std::uint32_t to_standard_perms(std::uint32_t perms)
{
    return perms == file_status::perms_unknown ? perms : perms & standard_perms_mask;
}

// Code outside the library reads and copies the records' bytes.
template <typename Record>
constexpr bool is_plain_value = std::is_standard_layout_v<Record>
    &&std::is_trivially_copyable_v<Record> &&std::is_trivially_destructible_v<Record>;
static_assert(is_plain_value<file_status> && is_plain_value<file_status_light>);

} // namespace

// Constructors of their own and not defaults of arguments: those would be explicit, too, and
// then `return {};` isn't allowed.
file_status::file_status() : file_status(file_not_found) {}

file_status::file_status(unsigned int type_word, unsigned int perms_word, ptime const &access_time,
                         ptime const &write_time, ptime const &creation_time,
                         std::uint64_t size_in_bytes)
    : std_type(to_standard_type(type_word)), std_perms(to_standard_perms(perms_word)),
      type(type_word), perms(perms_word), atime(access_time), mtime(write_time),
      ctime(creation_time), size(size_in_bytes)
{
}

void file_status::clear()
{
    *this = file_status(file_type_unknown, perms_unknown);
}

unsigned int file_status::get_type() const
{
    return type;
}

unsigned int file_status::get_perms() const
{
    return perms;
}

ptime file_status::get_atime() const
{
    return atime;
}

ptime file_status::get_mtime() const
{
    return mtime;
}

ptime file_status::get_ctime() const
{
    return ctime;
}

std::uint64_t file_status::get_size() const
{
    return size;
}

void file_status::set_type(unsigned int type_word)
{
    type = type_word;
    std_type = to_standard_type(type_word);
}

void file_status::set_perms(unsigned int perms_word)
{
    perms = perms_word;
    std_perms = to_standard_perms(perms_word);
}

void file_status::set_atime(ptime const &access_time)
{
    atime = access_time;
}

void file_status::set_mtime(ptime const &write_time)
{
    mtime = write_time;
}

void file_status::set_ctime(ptime const &creation_time)
{
    ctime = creation_time;
}

void file_status::set_size(std::uint64_t size_in_bytes)
{
    size = size_in_bytes;
}

file_status_light::file_status_light() : file_status_light(file_status::file_not_found) {}

file_status_light::file_status_light(unsigned int type_word, ptime const &write_time,
                                     std::uint64_t size_in_bytes)
    : std_type(to_standard_type(type_word)), std_perms(file_status::perms_unknown), type(type_word),
      mtime(write_time), size(size_in_bytes)
{
}

void file_status_light::clear()
{
    *this = file_status_light(file_status::file_type_unknown);
}

unsigned int file_status_light::get_type() const
{
    return type;
}

ptime file_status_light::get_mtime() const
{
    return mtime;
}

std::uint64_t file_status_light::get_size() const
{
    return size;
}

bool file_status::exists(file_status const &status)
{
    return !is_not_found(status.type);
}

bool file_status::is_regular(file_status const &status)
{
    return status.std_type == standard_regular;
}

bool file_status::is_directory(file_status const &status)
{
    return status.std_type == standard_directory;
}

bool file_status::is_symlink(file_status const &status)
{
    return status.std_type == standard_symlink;
}

bool file_status::is_block(file_status const &status)
{
    return status.std_type == standard_block;
}

bool file_status::is_character(file_status const &status)
{
    return status.std_type == standard_character;
}

bool file_status::is_fifo(file_status const &status)
{
    return status.std_type == standard_fifo;
}

bool file_status::is_socket(file_status const &status)
{
    return status.std_type == standard_socket;
}

bool file_status::is_reparse(file_status const &status)
{
    return (status.type & file_type_mask) == reparse_file;
}

bool file_status::is_unknown_file_type(file_status const &status)
{
    return status.type == file_type_unknown;
}

bool file_status_light::exists(file_status_light const &status)
{
    return !is_not_found(status.type);
}

bool file_status_light::is_regular(file_status_light const &status)
{
    return status.std_type == standard_regular;
}

bool file_status_light::is_directory(file_status_light const &status)
{
    return status.std_type == standard_directory;
}

bool file_status_light::is_symlink(file_status_light const &status)
{
    return status.std_type == standard_symlink;
}

bool file_status_light::is_block(file_status_light const &status)
{
    return status.std_type == standard_block;
}

bool file_status_light::is_character(file_status_light const &status)
{
    return status.std_type == standard_character;
}

bool file_status_light::is_fifo(file_status_light const &status)
{
    return status.std_type == standard_fifo;
}

bool file_status_light::is_socket(file_status_light const &status)
{
    return status.std_type == standard_socket;
}

bool file_status_light::is_reparse(file_status_light const &status)
{
    return (status.type & file_status::file_type_mask) == file_status::reparse_file;
}

bool file_status_light::is_unknown_file_type(file_status_light const &status)
{
    return status.type == file_status::file_type_unknown;
}

// Their values are in the header; these are the objects that the library exports
// for code that takes an address. GCC for Windows exports no other; for other compilers
// the header says enough.
constexpr unsigned int file_status::file_not_found;
constexpr unsigned int file_status::file_type_unknown;
constexpr unsigned int file_status::file_type_auto;
constexpr unsigned int file_status::fifo_file;
constexpr unsigned int file_status::character_file;
constexpr unsigned int file_status::directory_file;
constexpr unsigned int file_status::block_file;
constexpr unsigned int file_status::regular_file;
constexpr unsigned int file_status::symlink_file;
constexpr unsigned int file_status::socket_file;
constexpr unsigned int file_status::reparse_file;
constexpr unsigned int file_status::file_type_mask;
constexpr unsigned int file_status::no_perms;
constexpr unsigned int file_status::owner_read;
constexpr unsigned int file_status::owner_write;
constexpr unsigned int file_status::owner_exec;
constexpr unsigned int file_status::owner_all;
constexpr unsigned int file_status::group_read;
constexpr unsigned int file_status::group_write;
constexpr unsigned int file_status::group_exec;
constexpr unsigned int file_status::group_all;
constexpr unsigned int file_status::others_read;
constexpr unsigned int file_status::others_write;
constexpr unsigned int file_status::others_exec;
constexpr unsigned int file_status::others_all;
constexpr unsigned int file_status::perms_all;
constexpr unsigned int file_status::sticky_bit;
constexpr unsigned int file_status::set_gid_on_exec;
constexpr unsigned int file_status::set_uid_on_exec;
constexpr unsigned int file_status::archive_file;
constexpr unsigned int file_status::system_file;
constexpr unsigned int file_status::hidden_file;
constexpr unsigned int file_status::non_indexed_file;
constexpr unsigned int file_status::perms_mask;
constexpr unsigned int file_status::perms_unknown;
constexpr unsigned int file_status::perms_add;
constexpr unsigned int file_status::perms_remove;
constexpr unsigned int file_status::perms_symlink;

} // namespace fl::filesystem
