#ifndef FL_FILESYSTEM_DIRECTORY_HPP
#define FL_FILESYSTEM_DIRECTORY_HPP
// Public. What is in a directory, and in all directories below it: entries, and the
// iterators that find them. What is told here is told of listing alone; words such as "as it
// was given" and "the string that went to the system" are those of operations.hpp.
//
//     for (directory_entry const &entry : directory_iterator(u"C:\\dir"))
//         if (entry.is_regular_file())
//             total += entry.file_size();

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/file_time.hpp>
#include <fl/filesystem/path.hpp>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

FL_FILESYSTEM_BEGIN_CLASSES
namespace fl::filesystem {

namespace detail {
class directory_walk;
struct entry_record;
} // namespace detail

/// How a directory is listed; the values can be combined.
enum class directory_options : unsigned int
{
    none = 0, ///< links are told and not entered; what can't be listed is a failure
    /// Enter what symbolic links to directories, junctions and volume mount points lead to.
    follow_directory_symlink = 1,
    /// Take a directory that the caller may not list for an empty one.
    skip_permission_denied = 2
};

/// Options are combined and taken apart bit by bit.
constexpr directory_options operator|(directory_options left, directory_options right) noexcept
{
    return static_cast<directory_options>(static_cast<unsigned int>(left) |
                                          static_cast<unsigned int>(right));
}
constexpr directory_options operator&(directory_options left, directory_options right) noexcept
{
    return static_cast<directory_options>(static_cast<unsigned int>(left) &
                                          static_cast<unsigned int>(right));
}
constexpr directory_options operator^(directory_options left, directory_options right) noexcept
{
    return static_cast<directory_options>(static_cast<unsigned int>(left) ^
                                          static_cast<unsigned int>(right));
}
constexpr directory_options operator~(directory_options value) noexcept
{
    return static_cast<directory_options>(~static_cast<unsigned int>(value));
}
constexpr directory_options &operator|=(directory_options &left, directory_options right) noexcept
{
    return left = left | right;
}
constexpr directory_options &operator&=(directory_options &left, directory_options right) noexcept
{
    return left = left & right;
}
constexpr directory_options &operator^=(directory_options &left, directory_options right) noexcept
{
    return left = left ^ right;
}

/// One name in a directory, with what the listing told of it. A value: it stays as it is when
/// the iterator moves on, and copies share what is known.
///
/// What the listing told is the state of the name itself, a link not followed, as the
/// directory has it: of a file that somebody is writing to, or that has several names, size
/// and times may be older than the file's own. `refresh` asks the file.
class FL_FILESYSTEM_API directory_entry
{
public:
    /// No entry: the empty path, of a name that isn't there.
    directory_entry() noexcept;

    /// Looks `p` up, as `refresh` does. A name that isn't there is no failure. Throws
    /// `InvalidArgument` "Empty Path not permitted", without a pathname, and what `refresh`
    /// throws.
    explicit directory_entry(upath const &p);
    explicit directory_entry(std::u16string const &p);

    /// Returns the pathname: that of the directory as it was given to the iterator, joined
    /// with the name. So it is relative if that is.
    ///
    ///     directory     name     path
    ///     C:\dir        x        C:\dir\x
    ///     dir           x        dir\x
    ///     C:            x        C:x       (in the current directory of the drive)
    ///     C:\dir        x.       C:\dir\x. (see `is_nameable`)
    upath const &path() const noexcept;

    /// The same, for operations on the entry. Throws `InvalidArgument` "The name ends in a full
    /// stop or blank", naming the pathname, unless `is_nameable`: the operation would be done to
    /// another file.
    operator upath const &() const;

    /// Returns the name alone, exactly as the disk has it.
    std::u16string filename() const;

    /// Returns the string for the caller's own calls to the system: absolute, and with a long
    /// prefix wherever there can be one. It opens the entry whatever its name ends in, however
    /// long it is, and wherever the current directory has gone since. Empty for no entry.
    std::wstring access_form() const;

    /// Returns whether `path()` leads to this entry. It doesn't if the name ends in a full stop
    /// or blank: those are dropped from pathnames on the way to the system, and what they then
    /// lead to may be another file. `access_form` leads there, and the members do.
    bool is_nameable() const noexcept;

    // What is known. No call to the system.

    /// Returns type, permissions, times and size of the name itself, as `symlink_status` types
    /// them: a symbolic link is `symlink_file`, a junction or volume mount point `reparse_file`;
    /// the reparse tag tells them apart, and nothing is opened to read it. Where
    /// `symlink_status` throws about the extension of a name, there are no execute bits. The
    /// default-constructed record for a name that isn't there.
    file_status known() const;

    /// Returns the attributes as `WIN32_FIND_DATAW` has them, such as `FILE_ATTRIBUTE_HIDDEN`;
    /// 0 for a name that isn't there.
    std::uint32_t attributes() const noexcept;

    /// Returns the tag of a reparse point, such as `IO_REPARSE_TAG_SYMLINK`, or 0.
    std::uint32_t reparse_tag() const noexcept;

    /// Returns whether it is a symbolic link.
    bool is_symlink() const noexcept;
    /// Returns whether it is a junction or the mount point of a volume.
    bool is_junction() const noexcept;

    // About what the entry leads to, as the standard has it: known for all but links, for
    // which these ask, and then throw as `status` does, or as told.

    /// Returns whether there is something.
    bool exists() const;
    /// Returns whether it is a directory.
    bool is_directory() const;
    /// Returns whether it is a file.
    bool is_regular_file() const;
    /// Returns whether there is something that is neither file nor directory.
    bool is_other() const;

    /// Returns the size in bytes. Throws `FileIsDirectory` for a directory, `PathNotFound` for
    /// what isn't there, and what the code of a failed call stands for; all name `path()`.
    std::uint64_t file_size() const;

    /// Returns the time of the last write, in UTC. Throws as `file_size`, but of directories
    /// it is known, too.
    file_time_type last_write_time() const;

    // Asking again. What is known stays as it is.

    /// Returns the record of what the entry finally leads to, as `status` does of a pathname,
    /// and throws as that does. Answers also for names that can't be named (`is_nameable`).
    file_status status() const;

    /// Returns the present record of the name itself, as `symlink_status` does of a pathname.
    file_status symlink_status() const;

    /// Asks `GetFileAttributesExW`, and a reparse point for its tag, and keeps the answers: so
    /// `known` tells the present state. For a name that isn't there any more, that. Throws
    /// `AccessDenied` and whatever else a failed call stands for, naming `path()`, and then
    /// what is known stays.
    void refresh();

    /// By pathname, unit by unit, what a path drops from the end of a name included.
    friend bool operator==(directory_entry const &left, directory_entry const &right) noexcept
    {
        return left.compare(right) == 0;
    }
    friend bool operator!=(directory_entry const &left, directory_entry const &right) noexcept
    {
        return left.compare(right) != 0;
    }
    friend bool operator<(directory_entry const &left, directory_entry const &right) noexcept
    {
        return left.compare(right) < 0;
    }
    friend bool operator<=(directory_entry const &left, directory_entry const &right) noexcept
    {
        return left.compare(right) <= 0;
    }
    friend bool operator>(directory_entry const &left, directory_entry const &right) noexcept
    {
        return left.compare(right) > 0;
    }
    friend bool operator>=(directory_entry const &left, directory_entry const &right) noexcept
    {
        return left.compare(right) >= 0;
    }

private:
    friend class detail::directory_walk;
    explicit directory_entry(std::shared_ptr<detail::entry_record const> record) noexcept;

    detail::entry_record const &record() const noexcept;
    unsigned int followed_type() const;
    void demand_existence() const;
    /// By pathname, unit by unit, what a path drops from the end of a name included.
    int compare(directory_entry const &other) const noexcept;

    std::shared_ptr<detail::entry_record const> record_; // null: no entry
};

namespace detail {

/// What `it++` returns: the entry that was passed.
class passed_entry
{
public:
    explicit passed_entry(directory_entry entry) noexcept : entry_(std::move(entry)) {}
    directory_entry const &operator*() const noexcept { return entry_; }

private:
    directory_entry entry_;
};

} // namespace detail

/// Finds the entries of one directory in the order in which the system tells them, by
/// `FindFirstFileExW` and `FindNextFileW`, many at a time. The directory itself and the one above
/// are no entries. An input iterator: copies share one search, and when one moves, all do. The one
/// made without arguments is the end. The search is closed at the end, at a failure, and with the
/// last copy.
///
/// The directory may be a link, which is followed, a root, a share, or a pathname of any length.
/// What is added to it or removed from it during the search may be told or not.
class FL_FILESYSTEM_API directory_iterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = directory_entry;
    using difference_type = std::ptrdiff_t;
    using pointer = directory_entry const *;
    using reference = directory_entry const &;

    /// The end.
    directory_iterator() noexcept;

    /// Stands at the first entry of `p`, or is the end if there is none.
    ///
    /// Throws `InvalidArgument` "Empty Path not permitted" without a pathname. Otherwise, about
    /// `p` as it was given, what the code of the failed call stands for: `PathNotFound` if it is
    /// missing, `NotDirectoryError` for a file, `AccessDenied` unless `skip_permission_denied`.
    explicit directory_iterator(upath const &p,
                                directory_options options = directory_options::none);
    explicit directory_iterator(std::u16string const &p,
                                directory_options options = directory_options::none);

    /// Moves on, to the end after the last entry. Throws what the code of a failed call stands
    /// for, naming the directory, and is then the end, as its copies are.
    directory_iterator &operator++();
    detail::passed_entry operator++(int)
    {
        detail::passed_entry passed(**this);
        ++*this;
        return passed;
    }

    /// At the end these throw `InvalidOperation`, and so does moving.
    reference operator*() const;
    pointer operator->() const { return &**this; }

    /// Two are equal if they share a search, or both are the end.
    friend bool operator==(directory_iterator const &left, directory_iterator const &right) noexcept
    {
        return left.walk_ == right.walk_ || (left.is_end() && right.is_end());
    }
    friend bool operator!=(directory_iterator const &left, directory_iterator const &right) noexcept
    {
        return !(left == right);
    }

    /// What a loop over a range asks for. By value, as the standard's: ranges look for no others.
    friend directory_iterator begin(directory_iterator first) noexcept { return first; }
    friend directory_iterator end(directory_iterator) noexcept { return directory_iterator(); }

private:
    bool is_end() const noexcept;

    std::shared_ptr<detail::directory_walk> walk_; // null: the end
};

/// The same for a directory and all directories below it: each is told ahead of what is in
/// it. Needs one search for each level and no stack for them, so trees can be as deep as they
/// come.
///
/// Links are told and not entered. With `follow_directory_symlink` those to directories are, and
/// then a link that leads back to a directory on the way to it is a failure: `SystemError` 8246
/// naming the link. A link that leads nowhere is passed over.
///
/// A directory that has gone, or has become something else, when it is to be entered is passed
/// over, too. Between being told and being entered it can become a link, and what that leads to
/// is then listed: whoever removes what is listed uses `remove_all`.
class FL_FILESYSTEM_API recursive_directory_iterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = directory_entry;
    using difference_type = std::ptrdiff_t;
    using pointer = directory_entry const *;
    using reference = directory_entry const &;

    /// The end.
    recursive_directory_iterator() noexcept;

    /// Stands at the first entry of `p`, or is the end if there is none. Throws as
    /// `directory_iterator` does.
    explicit recursive_directory_iterator(upath const &p,
                                          directory_options options = directory_options::none);
    explicit recursive_directory_iterator(std::u16string const &p,
                                          directory_options options = directory_options::none);

    /// Moves on: into the entry if it is a directory to be entered, else to the next one, out of
    /// directories that have no more. Throws what the code of a failed call stands for, naming
    /// the directory or link that it was about, by the pathname that its entry has; the iterator
    /// is then the end, as its copies are.
    recursive_directory_iterator &operator++();
    detail::passed_entry operator++(int)
    {
        detail::passed_entry passed(**this);
        ++*this;
        return passed;
    }

    /// At the end these throw `InvalidOperation`, and so do all members below.
    reference operator*() const;
    pointer operator->() const { return &**this; }

    /// Returns how many directories below that of the beginning the entry is in: 0 there.
    int depth() const;

    /// Returns the options that it was made with.
    directory_options options() const;

    /// Returns whether moving on enters the entry, if that is a directory.
    bool recursion_pending() const;

    /// Has the next move pass the entry over, also if it is a directory.
    void disable_recursion_pending();

    /// Leaves the directory that the entry is in for what follows it in the one above; from the
    /// directory of the beginning, for the end. Throws as moving on does.
    void pop();

    /// Two are equal if they share a search, or both are the end.
    friend bool operator==(recursive_directory_iterator const &left,
                           recursive_directory_iterator const &right) noexcept
    {
        return left.walk_ == right.walk_ || (left.is_end() && right.is_end());
    }
    friend bool operator!=(recursive_directory_iterator const &left,
                           recursive_directory_iterator const &right) noexcept
    {
        return !(left == right);
    }

    /// What a loop over a range asks for.
    friend recursive_directory_iterator begin(recursive_directory_iterator first) noexcept
    {
        return first;
    }
    friend recursive_directory_iterator end(recursive_directory_iterator) noexcept
    {
        return recursive_directory_iterator();
    }

private:
    bool is_end() const noexcept;

    std::shared_ptr<detail::directory_walk> walk_; // null: the end
};

} // namespace fl::filesystem

FL_FILESYSTEM_END_CLASSES

#endif
