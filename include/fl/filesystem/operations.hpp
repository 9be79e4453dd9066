#ifndef FL_FILESYSTEM_OPERATIONS_HPP
#define FL_FILESYSTEM_OPERATIONS_HPP
// Public. Everything that reads or changes the file system. Each operation takes
// path objects or texts; a text is brought to native form on the way in, and where
// an exception names a pathname "as it was given", it is that form. Pathnames may be
// as long as the system takes them with a long prefix, 32,767 units; a NUL in one
// ends it, as everywhere in Windows. All failures are exceptions out of
// exceptions.hpp.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/path.hpp>

#include <string>

namespace fl::filesystem {

/// Returns `p` as an absolute pathname in native form: joined to `base` if `p`
/// needs one and `base` isn't empty, then expanded by `GetFullPathNameW`, which
/// supplies the process's current directories and drops "." and "..". Doesn't ask
/// whether the name exists. Both empty: the empty path.
///
///     p         base      result
///     foo       C:\dir    C:\dir\foo
///     (empty)   C:\dir    C:\dir
///     C:\foo    rel       C:\foo       (the base is not needed, nor looked at)
///     foo       (empty)   C:\work\foo  (the current directory is C:\work)
///     C:\a\..\b (empty)   C:\b
///     \foo      C:\dir    C:\foo       (can't be joined: C is the current drive)
///
/// Throws `InvalidArgument` "Invalid path type for base path", without a pathname,
/// if a base is needed and isn't absolute; otherwise what the code of the failed
/// call stands for, about `p` as it was given and not the joined pathname.
FL_FILESYSTEM_API upath absolute(upath const &p, upath const &base = upath());
FL_FILESYSTEM_API std::u16string absolute(std::u16string const &p,
                                          std::u16string const &base = std::u16string());

/// Creates the directory `p` with `CreateDirectoryW`. Its parent must exist, and
/// `p` itself must not: to find a directory there is a failure, too.
///
/// Throws, about `p` as it was given and never the string that went to the system:
///
///     `p` is a directory or a file already   FileExistsError
///     its parent is missing                  PathNotFound
///     no right to create it, or a drive      AccessDenied
///     any other code                         what it stands for
///
/// An `InvalidArgument` names no pathname: "Empty Path not permitted" if `p` is
/// empty, "Long UNC path without root not permitted" if it is a device, or a server
/// without a share, beyond 247 units, and the system's refusal of a name.
FL_FILESYSTEM_API void create_directory(upath const &p);
FL_FILESYSTEM_API void create_directory(std::u16string const &p);

/// Creates the directory `p` and every missing directory above it, from the root
/// downward, each with one `CreateDirectoryW`. Levels that exist are passed over,
/// but the last one must have been created here: a chain that exists already is a
/// `FileExistsError`, and so is a file that stands in the way. What failed above a
/// last level that could be created is no failure. Levels created before a failure
/// stay.
///
/// Throws as `create_directory` does, about `p` and never the level that failed: of
/// several failing levels it is the last one with a reason better than missing.
FL_FILESYSTEM_API void create_directories(upath const &p);
FL_FILESYSTEM_API void create_directories(std::u16string const &p);

/// Returns the text of the symbolic link, junction or volume mount point `p` in native
/// form, as the link states it: the name that it shows to people, or the one that the
/// system follows if it has no other. A relative text stays relative, and a prefix
/// `\??\` stays. One `DeviceIoControl` reads it; nothing is followed. A shortcut file
/// is no link here. The empty path: the empty path.
///
///     link                                        result
///     symbolic link with the text ../x            ..\x
///     junction, shown as C:\dir\                  C:\dir
///     junction, shown as nothing, for \??\C:\x\   \??\C:\x
///     mount point for \??\Volume{1}\              \??\Volume{1}
///
/// Throws, about `p` as it was given and never the string that went to the system:
///
///     `p` or a directory above it is missing   PathNotFound
///     no right to open it                      AccessDenied
///     another kind of reparse point            SystemError with the code 4393
///     any other code                           what it stands for
///
/// An `InvalidArgument` names no pathname: "The file or directory is not a reparse
/// point." for anything else that is there, "Long UNC path without root not permitted"
/// if `p` is a device, or a server without a share, beyond 247 units, and the system's
/// refusal of a name.
FL_FILESYSTEM_API upath read_symlink(upath const &p);
FL_FILESYSTEM_API std::u16string read_symlink(std::u16string const &p);

/// Returns the record of what `p` finally leads to: symbolic links and junctions are
/// followed, hop by hop, as `GetFileAttributesExW` and their reparse data tell. The type
/// is `directory_file` or `regular_file`, the permissions go by the name of the target,
/// the times are in UTC and the size is in bytes. A name that isn't there, that leads to
/// none, or that can be none is no failure, and neither is the empty text: their record
/// is a default-constructed one, of type `file_not_found`.
///
///     file, directory                       its own record
///     link to either                        the record of the target
///     broken link                           not found
///     volume mount point                    its own record, a directory
///     any other reparse point               its own record
///     link on a server or a mapped drive    its own record: it isn't followed
///     shortcut file                         its own record: a regular file
///
/// Throws `SystemError` 8246, naming the pathname that it came to, if 20 links in a row
/// lead nowhere else, also for a link to itself; `AccessDenied` and whatever else a
/// failed call stands for, naming the string that went to the system; and
/// `foundation::ustring::CtypeInvalidCharacter` if the last full stop of the target's
/// pathname has three units behind it and one of them is above 127.
FL_FILESYSTEM_API file_status status(upath const &p);
FL_FILESYSTEM_API file_status status(std::u16string const &p);

/// Returns the record of the name `p` itself: no link at its end is followed. The type of
/// a symbolic link is `symlink_file`, that of a junction or volume mount point
/// `reparse_file`, on a network, too; everything else is as in `status`.
FL_FILESYSTEM_API file_status symlink_status(upath const &p);
FL_FILESYSTEM_API file_status symlink_status(std::u16string const &p);

/// Returns type, time of the last write and size of what `p` leads to, for callers that
/// ask about many files: `p` goes to the system as it stands, with a long prefix if it has
/// 260 units or more, and a missing name costs no exception. Links are followed as in
/// `status`. The empty text and a name that isn't there give a default-constructed record.
///
/// Throws `InvalidArgument` "Long UNC path without root not permitted", without a
/// pathname, if a text of 260 units or more is relative; `SystemError` 8246 and what failed
/// calls stand for, as `status` does.
FL_FILESYSTEM_API file_status_light status_express_light(std::u16string const &p);

/// Returns whether `p` leads to something, links followed by the system itself. It is
/// false for a name that can't be reached, on a disk or on a network, and for a reparse
/// point that nobody can look behind (code 1920).
///
/// Throws `AccessDenied`, naming `p` as it was given, if the caller may not look, and what
/// any other code stands for.
FL_FILESYSTEM_API bool exists(upath const &p);
FL_FILESYSTEM_API bool exists(std::u16string const &p);

} // namespace fl::filesystem

#endif
