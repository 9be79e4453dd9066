#ifndef FL_FILESYSTEM_OPERATIONS_HPP
#define FL_FILESYSTEM_OPERATIONS_HPP
// Public. Everything that reads or changes the file system. Each operation takes
// path objects or texts; a text is brought to native form on the way in. All
// pathnames may be longer than 260 units, and all failures are exceptions out of
// exceptions.hpp.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/path.hpp>

#include <string>

namespace fl::filesystem {

/// Returns `p` as an absolute pathname in native form: joined to `base` if `p`
/// needs one and `base` isn't empty, then expanded by `GetFullPathNameW`, which
/// supplies the process's current directories and drops "." and "..". Doesn't look
/// at the disk. Both empty: the empty path.
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
/// call stands for, naming `p` as it was given.
FL_FILESYSTEM_API upath absolute(upath const &p, upath const &base = upath());
FL_FILESYSTEM_API std::u16string absolute(std::u16string const &p,
                                          std::u16string const &base = std::u16string());

/// Creates the directory `p` with `CreateDirectoryW`. Its parent must exist, and
/// `p` itself must not: to find a directory there is a failure, too.
///
/// Every exception names `p` as it was given:
///
///     `p` is a directory or a file already   FileExistsError
///     its parent is missing                  PathNotFound
///     no right to create it                  AccessDenied
///
/// An empty `p` is `InvalidArgument` "Empty Path not permitted", without a
/// pathname. Other codes become what they stand for.
FL_FILESYSTEM_API void create_directory(upath const &p);
FL_FILESYSTEM_API void create_directory(std::u16string const &p);

/// Creates the directory `p` and every missing directory above it, from the root
/// downward, each with one `CreateDirectoryW`. Levels that exist are passed over,
/// but the last one must have been created here: a chain that exists already is a
/// `FileExistsError`, and so is a file that stands in the way. Levels created
/// before a failure stay.
///
/// Throws as `create_directory` does, naming `p` and never the level that failed.
FL_FILESYSTEM_API void create_directories(upath const &p);
FL_FILESYSTEM_API void create_directories(std::u16string const &p);

} // namespace fl::filesystem

#endif
