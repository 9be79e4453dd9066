#ifndef FL_FILESYSTEM_FILE_STATUS_HPP
#define FL_FILESYSTEM_FILE_STATUS_HPP
// Public. What the system knows about one name, as a value. Asks the system
// nothing, allocates nothing and throws nothing.

#include <fl/filesystem/config.hpp>

#include <boost/date_time/posix_time/ptime.hpp>

#include <cstdint>

FL_FILESYSTEM_BEGIN_CLASSES
namespace fl::filesystem {

/// Type, permissions, times and size of one name.
///
/// A record made without arguments says that the name isn't there; a cleared one
/// says that nothing is known about it. Those are two different states, and
/// `clear` doesn't lead back to the first.
///
/// `get_type` and `get_perms` return the words as they were passed in. The record
/// also begins with both in the numbers of MSVC's `std::filesystem::file_status`
/// (1 not found, 2 regular, 3 directory, 4 symbolic link, 5 block, 6 character,
/// 7 FIFO, 8 socket, 9 unknown; the permissions without the attribute flags), and
/// most predicates ask those numbers. They follow every change of the words.
class FL_FILESYSTEM_API file_status
{
public:
    // Type words. A whole word, or its part under `file_type_mask`.

    /// No such name. All of the upper half set means that, whatever the lower says.
    static constexpr unsigned int file_not_found = 0xFFFF0000;
    static constexpr unsigned int file_type_unknown = 0;
    static constexpr unsigned int file_type_auto = 1;
    static constexpr unsigned int fifo_file = 0x1000;
    static constexpr unsigned int character_file = 0x2000;
    static constexpr unsigned int directory_file = 0x4000;
    static constexpr unsigned int block_file = 0x6000;
    static constexpr unsigned int regular_file = 0x8000;
    static constexpr unsigned int symlink_file = 0xA000;
    static constexpr unsigned int socket_file = 0xC000;
    /// A junction or the mount point of a volume.
    static constexpr unsigned int reparse_file = 0xE000;
    static constexpr unsigned int file_type_mask = 0xF000;

    /// Permission bits, named after what they are elsewhere. Windows knows whether a name is
    /// read-only, and by its extension whether it can be executed.
    static constexpr unsigned int no_perms = 0;
    static constexpr unsigned int owner_read = 0400;
    static constexpr unsigned int owner_write = 0200;
    static constexpr unsigned int owner_exec = 0100;
    static constexpr unsigned int owner_all = 0700;
    static constexpr unsigned int group_read = 040;
    static constexpr unsigned int group_write = 020;
    static constexpr unsigned int group_exec = 010;
    static constexpr unsigned int group_all = 070;
    static constexpr unsigned int others_read = 04;
    static constexpr unsigned int others_write = 02;
    static constexpr unsigned int others_exec = 01;
    static constexpr unsigned int others_all = 07;
    static constexpr unsigned int perms_all = 0777;
    static constexpr unsigned int sticky_bit = 01000;
    static constexpr unsigned int set_gid_on_exec = 02000;
    static constexpr unsigned int set_uid_on_exec = 04000;

    // Attribute flags, in the permission word. Type words have the same values,
    // but stand in the other word: ask this one bit by bit and that one under
    // its mask.

    /// `FILE_ATTRIBUTE_ARCHIVE`
    static constexpr unsigned int archive_file = 0x1000;
    /// `FILE_ATTRIBUTE_SYSTEM`
    static constexpr unsigned int system_file = 0x2000;
    /// `FILE_ATTRIBUTE_HIDDEN`
    static constexpr unsigned int hidden_file = 0x4000;
    /// `FILE_ATTRIBUTE_NOT_CONTENT_INDEXED`
    static constexpr unsigned int non_indexed_file = 0x8000;

    /// The part of the permission word that names bits.
    static constexpr unsigned int perms_mask = 0xFFFF;
    /// The permission word when nothing is known.
    static constexpr unsigned int perms_unknown = 0xFFFF;
    /// Argument of `permissions`: add the named bits.
    static constexpr unsigned int perms_add = 0x10000;
    /// Argument of `permissions`: remove the named bits.
    static constexpr unsigned int perms_remove = 0x20000;
    /// Argument of `permissions`: act on a link itself.
    static constexpr unsigned int perms_symlink = 0x40000;

    /// Not found, no permissions, no times, size 0.
    file_status();

    /// Holds the arguments; mind the order of the times: access, write, creation.
    explicit file_status(unsigned int type, unsigned int perms = no_perms,
                         boost::posix_time::ptime const &atime = boost::posix_time::ptime(),
                         boost::posix_time::ptime const &mtime = boost::posix_time::ptime(),
                         boost::posix_time::ptime const &ctime = boost::posix_time::ptime(),
                         std::uint64_t size = 0);
    file_status(file_status const &) = default;
    file_status &operator=(file_status const &) = default;
    ~file_status() = default;

    /// Makes the record say that nothing is known: type `file_type_unknown`, so
    /// that the name counts as one that exists, permissions `perms_unknown`, all
    /// times `not_a_date_time`, size 0.
    void clear();

    /// Returns the type word as it was passed in.
    unsigned int get_type() const;

    /// Returns the permission word as it was passed in, attribute flags included.
    unsigned int get_perms() const;

    /// Returns the time of the last access, in UTC; `not_a_date_time` if the
    /// record was not filled from the file system. So the other two.
    ///
    /// Windows can hold times beyond the year 9999. Such a time compares and
    /// subtracts as any other, but Boost throws where its date or text is asked for.
    boost::posix_time::ptime get_atime() const;

    /// Returns the time of the last write, in UTC; see `get_atime`.
    boost::posix_time::ptime get_mtime() const;

    /// Returns the time of creation, in UTC; see `get_atime`.
    boost::posix_time::ptime get_ctime() const;

    /// Returns the size in bytes; that of a directory is what its file system
    /// reports.
    std::uint64_t get_size() const;

    /// Changes one field; what it was is forgotten.
    void set_type(unsigned int type);
    void set_perms(unsigned int perms);
    void set_atime(boost::posix_time::ptime const &atime);
    void set_mtime(boost::posix_time::ptime const &mtime);
    void set_ctime(boost::posix_time::ptime const &ctime);
    void set_size(std::uint64_t size);

    /// Returns false for a name that isn't there. A type that is not known is
    /// that of an existing name.
    static bool exists(file_status const &status);

    /// Returns whether the type under its mask is the one of that name, of a name that is there.
    static bool is_regular(file_status const &status);
    static bool is_directory(file_status const &status);
    static bool is_symlink(file_status const &status);
    static bool is_block(file_status const &status);
    static bool is_character(file_status const &status);
    static bool is_fifo(file_status const &status);
    static bool is_socket(file_status const &status);

    /// Returns whether the type under its mask is `reparse_file`, which is none of
    /// the types above.
    static bool is_reparse(file_status const &status);

    /// Returns whether the whole type word is `file_type_unknown`; that of
    /// `file_type_auto`, for one, is not.
    static bool is_unknown_file_type(file_status const &status);

private:
    // The layout is shared with code outside the library: keep the order.
    std::uint32_t std_type;
    std::uint32_t std_perms;
    std::uint32_t type;
    std::uint32_t perms;
    boost::posix_time::ptime atime;
    boost::posix_time::ptime mtime;
    boost::posix_time::ptime ctime;
    std::uint64_t size;
};

/// What the cheap query knows of a name: type, last write and size. The constants
/// are those of `file_status`, and so are the predicates.
///
/// Begins with the same two numbers as `file_status`; that of the permissions
/// always says that they are unknown.
class FL_FILESYSTEM_API file_status_light
{
public:
    /// Not found, no time, size 0.
    file_status_light();

    /// Holds the arguments.
    explicit file_status_light(unsigned int type,
                               boost::posix_time::ptime const &mtime = boost::posix_time::ptime(),
                               std::uint64_t size = 0);
    file_status_light(file_status_light const &) = default;
    file_status_light &operator=(file_status_light const &) = default;
    ~file_status_light() = default;

    /// Makes the record say that nothing is known: type `file_type_unknown`, so
    /// that the name counts as one that exists, time `not_a_date_time`, size 0.
    void clear();

    /// Returns the type word as it was passed in.
    unsigned int get_type() const;

    /// Returns the time of the last write, in UTC; see `file_status::get_atime`.
    boost::posix_time::ptime get_mtime() const;

    /// Returns the size in bytes; that of a directory is what its file system
    /// reports.
    std::uint64_t get_size() const;

    /// Returns false for a name that isn't there. A type that is not known is
    /// that of an existing name.
    static bool exists(file_status_light const &status);

    /// Returns whether the type under its mask is the one of that name, of a name that is there.
    static bool is_regular(file_status_light const &status);
    static bool is_directory(file_status_light const &status);
    static bool is_symlink(file_status_light const &status);
    static bool is_block(file_status_light const &status);
    static bool is_character(file_status_light const &status);
    static bool is_fifo(file_status_light const &status);
    static bool is_socket(file_status_light const &status);

    /// Returns whether the type under its mask is `reparse_file`, which is none of
    /// the types above.
    static bool is_reparse(file_status_light const &status);

    /// Returns whether the whole type word is `file_type_unknown`; that of
    /// `file_type_auto`, for one, is not.
    static bool is_unknown_file_type(file_status_light const &status);

private:
    // The layout is shared with code outside the library: keep the order.
    std::uint32_t std_type;
    [[maybe_unused]] std::uint32_t std_perms; // never read in here
    std::uint32_t type;
    boost::posix_time::ptime mtime;
    std::uint64_t size;
};

// Records are passed between modules that are compiled apart. Boost's switch to
// nanoseconds makes its times twice as large.
static_assert(sizeof(boost::posix_time::ptime) == 8,
              "fl::filesystem is built without BOOST_DATE_TIME_POSIX_TIME_STD_CONFIG");
static_assert(sizeof(file_status) == 48 && sizeof(file_status_light) == 32,
              "the layout is shared with code outside the library");

} // namespace fl::filesystem

FL_FILESYSTEM_END_CLASSES

#endif
