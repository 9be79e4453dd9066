#ifndef FL_FILESYSTEM_QUERIES_HPP
#define FL_FILESYSTEM_QUERIES_HPP
// Public. The rest of the standard's list of operations, in the words of operations.hpp: what
// a name is, in one question; sizes and times; links of the other kinds; and the folder for
// temporary files. Those that are made of other operations are header-only.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/file_time.hpp>
#include <fl/filesystem/mixed_arguments.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/path.hpp>

#include <chrono>
#include <cstdint>
#include <string>
#include <type_traits>

namespace fl::filesystem {

/// Returns whether `p` leads to a directory. False for a name that isn't there. Throws as
/// `status` does; so the two that follow.
[[nodiscard]] inline bool is_directory(upath const &p)
{
    return file_status::is_directory(status(p));
}
[[nodiscard]] inline bool is_directory(std::u16string const &p)
{
    return file_status::is_directory(status(p));
}

/// Returns whether `p` leads to a file.
[[nodiscard]] inline bool is_regular_file(upath const &p)
{
    return file_status::is_regular(status(p));
}
[[nodiscard]] inline bool is_regular_file(std::u16string const &p)
{
    return file_status::is_regular(status(p));
}

/// Returns whether `p` leads to something that is neither a file nor a directory. What this
/// system has in its folders is one of the two, once links are followed.
[[nodiscard]] inline bool is_other(upath const &p)
{
    file_status const found = status(p);
    return file_status::exists(found) && !file_status::is_regular(found) &&
           !file_status::is_directory(found);
}
[[nodiscard]] inline bool is_other(std::u16string const &p)
{
    return is_other(upath(p));
}

/// Returns whether the name `p` itself is a symbolic link. Throws as `symlink_status` does, and
/// so the next one.
[[nodiscard]] inline bool is_symlink(upath const &p)
{
    return file_status::is_symlink(symlink_status(p));
}
[[nodiscard]] inline bool is_symlink(std::u16string const &p)
{
    return file_status::is_symlink(symlink_status(p));
}

/// Returns whether the name `p` itself is a junction or the mount point of a volume.
[[nodiscard]] inline bool is_junction(upath const &p)
{
    return file_status::is_reparse(symlink_status(p));
}
[[nodiscard]] inline bool is_junction(std::u16string const &p)
{
    return file_status::is_reparse(symlink_status(p));
}

/// Returns the size in bytes of the file that `p` leads to, links followed by the system, as
/// `GetFileInformationByHandle` tells it.
///
/// Throws `InvalidArgument` "Empty Path not permitted" without a pathname; otherwise, about `p`
/// as it was given, `FileIsDirectory` for a directory, `PathNotFound` for a missing name or a
/// broken link, and what any other code stands for.
[[nodiscard]] FL_FILESYSTEM_API std::uint64_t file_size(upath const &p);
[[nodiscard]] FL_FILESYSTEM_API std::uint64_t file_size(std::u16string const &p);

/// Returns whether `p` leads to a directory without entries or a file without content. Throws
/// as `status`, `directory_iterator` and `file_size` do.
[[nodiscard]] inline bool is_empty(upath const &p)
{
    return is_directory(p) ? directory_iterator(p) == directory_iterator() : file_size(p) == 0;
}
[[nodiscard]] inline bool is_empty(std::u16string const &p)
{
    return is_empty(upath(p));
}

/// Returns how many names there are for what `p` leads to: 1 for a directory. Throws as
/// `file_size`, but not about directories.
[[nodiscard]] FL_FILESYSTEM_API std::uint64_t hard_link_count(upath const &p);
[[nodiscard]] FL_FILESYSTEM_API std::uint64_t hard_link_count(std::u16string const &p);

/// Returns when what `p` leads to was written to for the last time, in UTC and to the last digit
/// that its disk keeps. Throws as `file_size`, but not about directories.
[[nodiscard]] FL_FILESYSTEM_API file_time_type last_write_time(upath const &p);
[[nodiscard]] FL_FILESYSTEM_API file_time_type last_write_time(std::u16string const &p);

/// Sets that time, with `SetFileInformationByHandle`, also of a read-only file and of a
/// directory. A time of `file_status` is given as `to_file_time` makes it.
///
/// Throws `InvalidArgument` without a pathname, "Empty Path not permitted", and "Time not
/// valid" for one that the system can't keep: at the start of 1601, ahead of it, or beyond the
/// year 30828. Otherwise as `file_size`, but not about directories.
FL_FILESYSTEM_API void last_write_time(upath const &p, file_time_type time);
FL_FILESYSTEM_API void last_write_time(std::u16string const &p, file_time_type time);

namespace detail {

/// A time that has more digits than those of files.
template <typename Duration>
using if_finer = std::enable_if_t<
    !std::is_convertible_v<std::chrono::time_point<std::chrono::system_clock, Duration>,
                           file_time_type>,
    int>;

} // namespace detail

/// The same with a time that counts in less than 100 nanoseconds, as
/// `std::chrono::system_clock::now()` does with GCC: cut to those, so that no time moves forward.
template <typename Duration, detail::if_finer<Duration> = 0>
void last_write_time(upath const &p,
                     std::chrono::time_point<std::chrono::system_clock, Duration> time)
{
    last_write_time(p, std::chrono::floor<file_time_type::duration>(time));
}
template <typename Duration, detail::if_finer<Duration> = 0>
void last_write_time(std::u16string const &p,
                     std::chrono::time_point<std::chrono::system_clock, Duration> time)
{
    last_write_time(p, std::chrono::floor<file_time_type::duration>(time));
}

/// Makes the file that `p` leads to `size` bytes long: cuts it, or adds zeros. Throws as
/// `file_size`; a read-only file, or no right to write, is `AccessDenied`, and no room on the
/// disk `SystemError` 112.
FL_FILESYSTEM_API void resize_file(upath const &p, std::uint64_t size);
FL_FILESYSTEM_API void resize_file(std::u16string const &p, std::uint64_t size);

/// Gives the file `existing` one more name, `link`, with `CreateHardLinkW`. A symbolic link gets
/// one itself. Both must be on one volume, and a file can have 1024 names.
///
/// Throws, about the pathnames as they were given, as `rename` does: `PathNotFound` naming
/// `existing`, `FileExistsError` naming `link`, `AccessDenied` naming `link` for a directory
/// `existing` and naming `existing` for a link to one, `SystemError` 17 and both for another
/// volume. `InvalidArgument` "Empty Path not permitted", without a pathname, if either is empty.
FL_FILESYSTEM_API void create_hard_link(upath const &existing, upath const &link);
FL_FILESYSTEM_API void create_hard_link(std::u16string const &existing, std::u16string const &link);

/// Makes the symbolic link `link` to a directory: `create_symlink` with `directory_file`.
inline void create_directory_symlink(upath const &target, upath const &link)
{
    create_symlink(target, link, file_status::directory_file);
}
inline void create_directory_symlink(std::u16string const &target, std::u16string const &link)
{
    create_symlink(target, link, file_status::directory_file);
}

/// Makes the junction `link` to the directory `target`, for which no right is needed that others
/// lack. `target` is made absolute as `absolute` does; whether it is there isn't looked at.
///
/// Throws `InvalidArgument` "Empty Path not permitted" without a pathname if either is empty;
/// `InvalidArgument` "The path type of the given path is not valid", naming `target`, if that
/// isn't on a drive: a junction can't lead to a server; `FileNameTooLarge` naming `target` if
/// it has more units than a junction has room for, about 4000; and, about `link` as it was
/// given, what `create_directory` throws, and what other codes stand for. Then there is no `link`.
FL_FILESYSTEM_API void create_junction(upath const &target, upath const &link);
FL_FILESYSTEM_API void create_junction(std::u16string const &target, std::u16string const &link);

/// Returns the target in the shortcut file `p`, as it is stored and in native form: environment
/// variables unexpanded, and cut to the 259 units that the shell hands over. Empty for a
/// shortcut to something that is no file, such as the control panel. Asks the shell link
/// object, which may look for a target that was moved; initialises COM on the calling thread
/// and uninitialises it again.
///
/// Throws `InvalidArgument` "Shortcut path input must have .lnk file extension", in just these
/// letters, without a pathname; what the code in a failed HRESULT stands for, or `SystemError`
/// 14077 if there is none, about `p` as it was given; and what
/// `detail::windows::make_native_access_form_bridge` throws.
[[nodiscard]] FL_FILESYSTEM_API upath read_shortcut(upath const &p);
[[nodiscard]] FL_FILESYSTEM_API std::u16string read_shortcut(std::u16string const &p);

/// Returns the folder for temporary files: the first of the environment variables `TMP`, `TEMP`
/// and `USERPROFILE` that is set, made absolute. It is a directory, or a link to one. Unlike
/// `GetTempPathW` it makes none up.
///
/// Throws `TempEnvNotSpecified` if none of them is set, and, about the folder, `PathNotFound` if
/// it isn't there, `NotDirectoryError` if it is something else, and what `status` throws.
[[nodiscard]] FL_FILESYSTEM_API upath temp_directory_path();

/// Creates the directory `p` as `create_directory(p)` does, with the attributes of the directory
/// `existing`, links to which are followed: hidden, system, read-only, and whether it is to be
/// archived and indexed.
///
/// Throws as that does, about an empty `p` first. Then, and ahead of all else, it throws about
/// `existing` as it was given: `PathNotFound` if it is missing, `NotDirectoryError` if it is no
/// directory, and what other codes stand for. If the attributes can't be set, there is no `p` and
/// its failure is told.
FL_FILESYSTEM_API void create_directory(upath const &p, upath const &existing);
FL_FILESYSTEM_API void create_directory(std::u16string const &p, std::u16string const &existing);

/// Creates the directory `p` and every missing directory above it, and returns whether it
/// created `p`. Unlike `create_directories` it takes a directory that is there, or a link to
/// one, for none to be created; anything else there is a `FileExistsError`. Throws as
/// `create_directories` does.
FL_FILESYSTEM_API bool ensure_directories(upath const &p);
FL_FILESYSTEM_API bool ensure_directories(std::u16string const &p);

// With a path and a literal: see mixed_arguments.hpp.

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void create_hard_link(First const &existing, Second const &link)
{
    create_hard_link(detail::as_path(existing), detail::as_path(link));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void create_directory_symlink(First const &target, Second const &link)
{
    create_directory_symlink(detail::as_path(target), detail::as_path(link));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void create_junction(First const &target, Second const &link)
{
    create_junction(detail::as_path(target), detail::as_path(link));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void create_directory(First const &p, Second const &existing)
{
    create_directory(detail::as_path(p), detail::as_path(existing));
}

} // namespace fl::filesystem

#endif
