#ifndef FL_FILESYSTEM_OPERATIONS_HPP
#define FL_FILESYSTEM_OPERATIONS_HPP
// Public. Everything that reads or changes the file system. Each operation takes path objects
// or texts, and all failures are exceptions out of exceptions.hpp, but where an operation
// names one of the standard library's.
//
// What becomes of a text:
// - It is brought to native form (see `detail::make_native_form`), and where an exception names
//   a pathname "as it was given" it is in that form. Full stops at its end stay in it.
// - Most operations then have the system make it full, which drops full stops and blanks from
//   its end: `C:\x.` and `C:\x\...` are `C:\x`, and a name that ends so can't be told.
// - A NUL ends it for the system, as everywhere in Windows.
// - "The string that went to the system" is what `make_native_access_form_bridge` of windows.hpp
//   makes of it. What that throws can come ahead of what an operation says.
//
// What is thrown without a pathname:
// - `FileNameTooLarge`, unless the pathname has more than 32,767 units, and `InvalidArgument`,
//   unless it says "The path type of the given path is not valid" of a full pathname.
// - `InvalidArgument` "Long UNC path without root not permitted", of a device or a server
//   without a share beyond 247 units, by operations that name pathnames as they were given.
// - `foundation::ustring::CtypeInvalidCharacter`, wherever links are followed, of a junction whose
//   name of more than ten units has one above 127 where others have `\??\Volume`.
//
// Limits:
// - A pathname may have 32,767 units with its long prefix, but where an operation says less.
// - The system may refuse without a code, as some systems do with a text of blanks alone. Most
//   operations make that `SystemError` 31, `ERROR_GEN_FAILURE`.
// - Each shortcut file that is read or written takes one initialisation of COM from a thread that
//   is in a multi-threaded apartment: `CoInitialize` fails there, and `CoUninitialize` runs all
//   the same. Such a caller holds one more for each, or its apartment ends with all that is in it.
//   `create_shortcut` writes one, `canonical` reads those on the way, and so does whatever follows
//   a link whose text leads through one to `.` or `..`.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/path.hpp>

#include <filesystem>
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
///     C:\x.     (empty)   C:\x         (the system drops what names can't end in)
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
///
/// A NUL in `p` ends it: the directory is what stands ahead of it.
FL_FILESYSTEM_API void create_directory(upath const &p);
FL_FILESYSTEM_API void create_directory(std::u16string const &p);

/// Creates the directory `p` and every missing directory above it, from the root
/// downward, each with one `CreateDirectoryW`. Levels that exist are passed over,
/// but the last one must have been created here: a chain that exists already is a
/// `FileExistsError`, and so is a file that stands in the way. A root alone, `C:\` or
/// `\\server`, has no level to create, and is one, too, also if there is no such drive or
/// server. What failed above a last level that could be created is no failure. Levels
/// created before a failure stay. A NUL in `p` ends it.
///
/// Throws as `create_directory` does, about `p` and never the level that failed: of
/// several failing levels it is the last one with a reason better than missing.
FL_FILESYSTEM_API void create_directories(upath const &p);
FL_FILESYSTEM_API void create_directories(std::u16string const &p);

/// Removes the name `p`: a file, a link itself, or an empty directory, also if it is
/// read-only. The file is opened and marked for deletion by `SetFileInformationByHandle`, so
/// that its name is free at once where the disk can do that. Other names of a read-only file
/// stay read-only. The empty path is passed over.
///
/// A name of full stops and blanks alone stands for what is ahead of it: `C:\x\...` removes
/// `C:\x`. A NUL in `p` ends it: what stands ahead of it is removed.
///
/// Throws, about `p` as it was given and never the string that went to the system:
///
///     `p` is missing, or no name at all    PathNotFound
///     a directory with entries             DirectoryNotEmpty
///     no right to remove it                AccessDenied
///     any other code                       what it stands for
///
/// An `InvalidArgument` "Long UNC path without root not permitted" names no pathname.
FL_FILESYSTEM_API void remove(upath const &p);
FL_FILESYSTEM_API void remove(std::u16string const &p);

/// Removes a file or a link to a file with `DeleteFileW`, and nothing else: unlike
/// `remove` it leaves read-only files alone. The empty path is passed over. A NUL in `p` ends
/// it: what stands ahead of it is removed.
///
/// Throws, naming the string that went to the system (see
/// `detail::windows::make_native_access_form_bridge`):
///
///     `p` is a directory          FileIsDirectory
///     `p` is missing              PathNotFound
///     read-only, or no right      AccessDenied
///     any other code              what it stands for
FL_FILESYSTEM_API void remove_file(upath const &p);
FL_FILESYSTEM_API void remove_file(std::u16string const &p);

/// Removes an empty directory or a link to a directory with `RemoveDirectoryW`. The empty
/// path is passed over. A NUL in `p` ends it: what stands ahead of it is removed.
///
/// Throws, naming the string that went to the system: `DirectoryNotEmpty` if there is
/// something in it, `NotDirectoryError` for a file, and what any other code stands for.
FL_FILESYSTEM_API void remove_directory(upath const &p);
FL_FILESYSTEM_API void remove_directory(std::u16string const &p);

/// Removes `p` with all that is in it, files and directories in the order in which
/// `FindNextFileW` tells them, a directory after its contents. Links are removed and never
/// followed, at any depth. A directory that is another kind of reparse point, such as one
/// that a program keeps in the cloud, isn't emptied: it goes if the system opens it and it is
/// empty. Names in `p` may end in a full stop or blank, and pathnames in it may be as long as
/// the system takes them. Needs memory for one pathname and two handles for each level, and
/// no stack for them. The empty path is passed over.
///
/// A name of full stops and blanks alone stands for what is ahead of it: `C:\x\...` removes
/// `C:\x` with all that is in it. A NUL in `p` ends it: what stands ahead of it is removed.
///
/// Not for a tree that others can write to while it runs: who puts a link in the place of a
/// directory at the right moment has names removed from where that leads.
///
/// A name that the system keeps for a device ends it: `nul`, and before Windows 11 also `aux` or
/// `nul.txt`. `DeleteFileW` or `RemoveDirectoryW` take such a name with a long prefix (see
/// `detail::windows::add_long_path_prefix_bridge`).
///
/// The first failure ends it, and what was removed by then stays removed: no attribute is
/// changed, and nothing is tried twice. A read-only file is such a failure. Throws
/// `PathNotFound` if `p` is missing, and what the code of the failed call stands for,
/// naming the string that went to the system: of a directory that can't be listed it is
/// the search pattern `...\*`. A search that can't be closed names nothing.
FL_FILESYSTEM_API void remove_all(upath const &p);
FL_FILESYSTEM_API void remove_all(std::u16string const &p);

/// Gives the file or directory `from` the name `to` with `MoveFileExW`. A file that has it
/// is replaced. A file can go to another volume, by copying and deleting; a directory
/// can't. A link is renamed itself.
///
/// A name of full stops and blanks alone stands for what is ahead of it: `C:\x\...` renames
/// `C:\x`. A NUL ends either pathname: what stands ahead of it is renamed or replaced.
///
/// Throws, about the pathnames as they were given:
///
///     `from` is missing                         PathNotFound naming `from`
///     the directory of `to` is missing          PathNotFound naming `to`, or `from` if that
///                                               is a link that leads nowhere
///     denied, and `from` is a symbolic link     AccessDenied naming `from`
///     denied, and `from` can be read            AccessDenied naming `to`
///     denied otherwise                          AccessDenied naming `from`
///     `to` is taken, isn't empty, too long      what the code (80, 183, 145, 206, 267) stands
///     or below a file                           for, naming `to`
///     any other code                            what it stands for, naming `from`;
///                                               `SystemError` names `from` and `to`
///
/// Denied is code 5, which the system also says if there is a directory, a link to one, a
/// read-only or an open file at `to`, none of which is replaced.
///
/// To find out whom to name, `exists` and `access` are asked about `from`, and what they
/// throw takes the place of it all.
FL_FILESYSTEM_API void rename(upath const &from, upath const &to);
FL_FILESYSTEM_API void rename(std::u16string const &from, std::u16string const &to);

/// Copies `from` to `to` as `options` say. Links are followed unless an option is about
/// them.
///
///     `from`            `to`, options                 effect
///     file              a directory                   a copy in it, with the same name
///     file              otherwise                     as `copy_file`
///     file              create_symlinks               a symbolic link to it, absolute
///     file              create_hard_links             one more name for it
///     link to a file    create_hard_links             one more name for the link
///     file              directories_only              nothing
///     directory         none                          a directory with copies of its files
///     directory         recursive                     and of all that is below
///     directory         directories_only              an empty directory
///     symbolic link     copy_symlinks                 a link with the same text
///     junction          copy_symlinks                 a junction with the same data, or
///                                                     nothing if there is something already
///     either            skip_symlinks                 nothing
///
/// An option about files goes ahead of what `to` is: a link or one more name doesn't go into a
/// directory `to`.
///
/// An existing directory `to` is filled up, through the links in it, too: with `recursive` names
/// are made outside of `to`, and with `overwrite_existing` files there are written to. A directory
/// that is copied into itself with `recursive` is copied into each of its copies, until the
/// system takes no longer pathname. The first failure ends it, and what was copied stays. A NUL
/// ends either pathname.
///
/// What lies in `from` and in `to` is addressed by adding names, so the system's limit
/// of 259 units, for a new directory 247, holds there unless `from` or `to` itself has 248 and
/// so goes with a long prefix. Names within that end in a full stop or blank are copied as they
/// are: they and what is below them go with the prefix, too.
///
/// Throws `InvalidArgument` without a pathname, before anything is looked at, for
/// `copy_symlinks` with `skip_symlinks` and for two of `skip_existing`,
/// `overwrite_existing` and `update_existing`. Otherwise, about the pathnames as they were
/// given, as `rename` does; and `FileIsDirectory` naming `from` for a directory with
/// `create_symlinks`. `SystemError` with the code 17 stands for `to` being `from`, whatever the
/// options, for a file where a directory is to go, and for a hard link to another volume, of
/// which the system says it; with 130 for a link onto something that exists. It names `from`, and
/// `to` beside it.
FL_FILESYSTEM_API void
copy(upath const &from, upath const &to,
     std::filesystem::copy_options options = std::filesystem::copy_options::none);
FL_FILESYSTEM_API void
copy(std::u16string const &from, std::u16string const &to,
     std::filesystem::copy_options options = std::filesystem::copy_options::none);

/// Copies the content, attributes and times of a file with `CopyFileW`. Where `to` is there:
///
///     none                  FileExistsError naming `to`
///     skip_existing         nothing happens
///     overwrite_existing    it is written to
///     update_existing       it is written to if it was written to before `from`
///
/// To be written to is to get the content, attributes and times of `from` and to stay the same
/// file: so do all its hard links, and through a symbolic link at `to` the file that it leads to.
/// A link at `to` that leads nowhere gets its target made. A NUL ends either pathname.
///
/// Throws as `copy` does: `PathNotFound` naming the one that is missing, `AccessDenied`
/// naming the one that is denied, and `SystemError` with the code 32 and both pathnames for a
/// copy onto itself with an option for an existing target.
FL_FILESYSTEM_API void
copy_file(upath const &from, upath const &to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none);
FL_FILESYSTEM_API void
copy_file(std::u16string const &from, std::u16string const &to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none);

/// Creates the empty directory `to` if `from` is a directory, and takes over nothing of it:
/// neither attributes nor times nor entries. A directory that is there is left as it is. A NUL
/// ends either pathname.
///
/// Throws `InvalidArgument` "Empty Path not permitted" without a pathname if either is empty;
/// `NotDirectoryError` naming `from` if that is a file; `PathNotFound` naming `from` if it is
/// missing; `FileExistsError` naming `to` if that is a file; and as `rename` does.
FL_FILESYSTEM_API void copy_directory(upath const &from, upath const &to);
FL_FILESYSTEM_API void copy_directory(std::u16string const &from, std::u16string const &to);

/// What `access` can be asked about; the values can be combined.
inline constexpr unsigned int access_exists = 1;
inline constexpr unsigned int access_read = 2;
inline constexpr unsigned int access_write = 4;
inline constexpr unsigned int access_execute = 8;

/// Returns whether the caller can do with `p` all that `mode` has, tried out by opening what
/// `p` leads to with `CreateFileW`. Links are followed hop by hop, but not on a network.
///
///     access_exists     it can be opened at all
///     access_read       a file's content, a directory's names; on a network, attributes
///     access_write      attributes; a read-only file can't be written, a directory can
///     access_execute    a file named `.exe`, `.bat`, `.com` or `.cmd`; no directory
///
/// A missing name and one that the caller may not look at are answered by the question:
///
///                                   missing          denied a look
///     with `access_exists`          false            AccessDenied
///     without                       PathNotFound     false
///
/// Throws `InvalidArgument` without a pathname, "Empty Path not permitted" or, for a mode
/// of 0 or beyond 15, "Unsupported Access Mode"; `PathNotFound` without a pathname, also
/// for a broken link; what `detail::windows::build_target_path_bridge` throws of a link that
/// leads to no pathname, such as a device; `AccessDenied` and what other codes stand for, naming
/// the string that went to the system; `SystemError` 8246 if it leads through 20 links or more;
/// and `foundation::ustring::CtypeInvalidCharacter` on an extension of three units with one above
/// 127, of a file that could be opened.
FL_FILESYSTEM_API bool access(upath const &p, unsigned int mode);
FL_FILESYSTEM_API bool access(std::u16string const &p, unsigned int mode);

/// Changes the attributes of `p` with `SetFileAttributesW` to what `perms`, a permission
/// word of `file_status`, says. Of the permissions there is only one: any write bit stands
/// for not being read-only. The four flags are attributes; all else has no meaning here.
///
///     perms                          effect
///     0                              read-only, and none of the four flags
///     owner_write | hidden_file      hidden, and neither read-only nor another flag
///     perms_add | owner_write        not read-only
///     perms_remove | owner_write     read-only
///     perms_add | system_file        system
///
/// A symbolic link or junction is followed by one hop, on a network, too; `perms_symlink`
/// has the link itself changed. A volume mount point is always itself. A NUL in `p` ends it:
/// what stands ahead of it is changed.
///
/// Throws `InvalidArgument` without a pathname: "Empty Path not permitted", and "File
/// Permission not valid" for `perms_add` together with `perms_remove` and for the word
/// `perms_unknown`, whatever stands above it. `PathNotFound` if `p` or what it leads to is
/// missing, and what other codes stand for, naming the string that went to the system;
/// what `detail::windows::build_target_path_bridge` throws of the link. `SystemError` with
/// the last error if a link has no text. `foundation::ustring::CtypeInvalidCharacter` as
/// `symlink_status` does.
FL_FILESYSTEM_API void permissions(upath const &p, unsigned int perms);
FL_FILESYSTEM_API void permissions(std::u16string const &p, unsigned int perms);

/// Makes the symbolic link `link` with the text `target` in native form, so with single
/// backslashes and without a long prefix, with `CreateSymbolicLinkW`. Neither is made absolute nor
/// gets a long prefix, so a relative text stays one, and `link` has at most 259 units. Windows
/// keeps links to files and links to directories apart; `type` says which it is:
///
///     directory_file     to a directory
///     file_type_auto     to a directory if `status` says that `target` is one, a relative
///                        `target` taken from the current directory and not from `link`
///     anything else      to a file; what `target` is isn't looked at
///
/// A NUL ends either text.
///
/// Throws what the code of the failed call stands for, without a pathname: `FileExistsError`
/// if `link` is there, `SystemError` 1314 without the right to make links; 12 if there is no
/// memory for the text; and what `status` throws.
FL_FILESYSTEM_API void create_symlink(upath const &target, upath const &link, unsigned int type);
FL_FILESYSTEM_API void create_symlink(std::u16string const &target, std::u16string const &link,
                                      unsigned int type);

/// Makes the symbolic link `new_link`, of the same kind as `existing` and with the text that
/// it shows to people, or else that the system follows. A relative text stays as it is, and
/// so may lead elsewhere from `new_link`. Pathnames go to the system as they stand, and a NUL
/// ends either.
///
/// Throws, without a pathname:
///
///     `existing` is missing                  PathNotFound
///     `existing` is no reparse point         InvalidArgument "The file or directory is not
///                                            a reparse point."
///     a junction or another reparse point    SystemError with the code 4393
///     any other code                         what it stands for
FL_FILESYSTEM_API void copy_symlink(upath const &existing, upath const &new_link);
FL_FILESYSTEM_API void copy_symlink(std::u16string const &existing, std::u16string const &new_link);

/// Writes the shortcut file `shortcut` through the shell link object, over a file that is
/// there. `target` is stored absolute and cleaned, with a long prefix if it has 260 units or
/// more, and whether it exists isn't looked at; an empty one is the current directory. A NUL ends
/// either pathname. A thread in a multi-threaded apartment loses one initialisation of COM (see
/// above) and holds one more for it.
///
/// Throws `InvalidArgument` without a pathname: "Shortcut path input must have .lnk file
/// extension", in just these letters, and "Empty path inputs not permitted" for a string for
/// the shell that comes out empty. What the code
/// in a failed HRESULT stands for, or `SystemError` 14077 if there is none, names
/// `shortcut` as it went to the shell. Throws what
/// `detail::windows::make_native_access_form_bridge` throws, for `target` first.
FL_FILESYSTEM_API void create_shortcut(upath const &target, upath const &shortcut);
FL_FILESYSTEM_API void create_shortcut(std::u16string const &target,
                                       std::u16string const &shortcut);

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
/// Throws `SystemError` 8246, naming the pathname that it came to, if `p` leads through 20
/// links or more, whatever is behind them; `AccessDenied` and whatever else a failed call
/// stands for, naming the string that went to the system; and
/// `foundation::ustring::CtypeInvalidCharacter` for a file if the last full stop of its
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
/// pathname, if a text of 260 units or more begins neither with a drive and a backslash, nor
/// with a server and a share behind backslashes, nor with a long prefix; `SystemError` 8246
/// and what failed calls stand for, as `status` does.
FL_FILESYSTEM_API file_status_light status_express_light(std::u16string const &p);

/// Returns whether `p` leads to something, links followed by the system itself. It is
/// false for a name that can't be reached, on a disk or on a network, or that can be none, and
/// for a reparse point that nobody can look behind (code 1920). Of a file that nobody can open,
/// such as the paging file, the word of its directory counts.
///
/// Throws `AccessDenied`, naming `p` as it was given, if the caller may not look, and what
/// any other code stands for, but for those that stand for an `InvalidArgument`: they are a no,
/// too.
FL_FILESYSTEM_API bool exists(upath const &p);
FL_FILESYSTEM_API bool exists(std::u16string const &p);

/// Returns the pathname of what `p` leads to, absolute and without a link, `.` or `..` in it,
/// and without a long prefix, however long it is. A relative `p` goes below `base`, or below
/// the current directory if that is empty. Shortcut files are followed, too, and a link at the
/// very end. Every element is asked about, by `GetFileAttributesExW`. The empty path: the
/// empty path.
///
/// A thread in a multi-threaded apartment loses one initialisation of COM by each shortcut file
/// (see above) and holds one more for each.
///
/// A link on a network that names a drive means one of the server's, and stays.
///
/// Throws `PathNotFound` with an empty pathname if there is nothing; `InvalidArgument` "The
/// path type of the given path is not valid" for a device or a server without a share; what
/// `absolute` and `detail::windows::build_target_path_bridge` throw; and what other codes stand
/// for, naming the string that went to the system.
FL_FILESYSTEM_API upath canonical(upath const &p, upath const &base = upath());
FL_FILESYSTEM_API std::u16string canonical(std::u16string const &p,
                                           std::u16string const &base = std::u16string());

/// Returns the same for as much of `p` as exists, with the rest joined behind it. If there
/// is a `.` or `..` in the rest, the whole is made normal by text. What doesn't exist from its
/// first element on stays as it is, relative or not; a server is such an element. The empty
/// path: the empty path.
///
///     C:\existing\missing\..\x      C:\existing\x
///     missing\file                  missing\file
///
/// Throws what `exists` and `canonical` throw, and `InvalidArgument` for a rest that can't be
/// joined.
FL_FILESYSTEM_API upath weakly_canonical(upath const &p);
FL_FILESYSTEM_API std::u16string weakly_canonical(std::u16string const &p);

/// Returns how to come from the directory `base` to `p`, links in both followed as far as
/// there is something. Both go to the system as they stand, without a long prefix. On two
/// drives, if `base` leads up into what can't be known, or if one of the two is relative and
/// nothing of it exists, the result is the empty path.
///
///     p              base         result
///     C:\a\b         C:\a\c       ..\b
///     C:\a           C:\a         .
///     D:\a           C:\a         (empty)
///
/// Throws what the code of a failed call stands for, naming `p` as it was given, also if
/// `base` is the one that can't be looked at.
FL_FILESYSTEM_API upath relative(upath const &p, upath const &base);
FL_FILESYSTEM_API std::u16string relative(std::u16string const &p, std::u16string const &base);

/// Returns whether `p1` and `p2` lead to one file or directory, by the identifiers of volume
/// and file. False if just one of them is there. What can't be looked at counts as not there.
///
/// Throws `PathNotFound` naming `p1` if neither is there. If both are and one can't be compared,
/// throws as `rename` does, with `p1` and `p2` for source and target.
FL_FILESYSTEM_API bool equivalent(upath const &p1, upath const &p2);
FL_FILESYSTEM_API bool equivalent(std::u16string const &p1, std::u16string const &p2);

/// Returns the process's current directory as `GetCurrentDirectoryW` tells it, a long prefix
/// included. Throws what the code stands for, without a pathname.
FL_FILESYSTEM_API std::u16string get_current_path();

/// Changes the process's current directory with `SetCurrentDirectoryW`, and the environment
/// variable `=X:` of the drive with it, by which pathnames such as `X:name` go. Threads that
/// change it through this operation take turns. Returns true; the empty path changes nothing
/// and is false. The system takes directories of up to 258 units with their backslash. A NUL in
/// `p` ends it.
///
/// The variable gets `p` as `GetFullPathNameW` makes it full once the directory has changed:
/// give an absolute pathname, for a relative one is then below itself. A directory on a server
/// sets no variable.
///
///     from C:\       directory       =C:
///     C:\x          C:\x            C:\x
///     x             C:\x            C:\x\x
///
/// Throws, about `p` as it was given, `PathNotFound`, `NotDirectoryError` for a file, and
/// what other codes stand for. If the variable can't be set the directory has changed all the
/// same; that is `std::filesystem::filesystem_error` "absolute" if the full pathname can't be
/// made.
FL_FILESYSTEM_API bool change_current_path(upath const &p);
FL_FILESYSTEM_API bool change_current_path(std::u16string const &p);

/// Returns the name by which other machines know `p`, on a mapped network drive
/// `\\server\share\file`, as `WNetGetUniversalNameW` tells it. For a pathname that isn't on
/// one the result is, with `tolerant`, the string for the system (see
/// `detail::windows::make_native_access_form_bridge`), absolute and cleaned; otherwise it is a
/// failure. The text may have a long prefix; the path object hasn't.
///
/// Throws, unless `tolerant`, `SystemError` with the code 0 (providers tell none) naming the
/// string for the system if `p` isn't on a mapped drive; and what making that string throws.
FL_FILESYSTEM_API upath get_unc_path(upath const &p, bool tolerant);
FL_FILESYSTEM_API std::u16string get_unc_path(std::u16string const &p, bool tolerant);

/// Bytes of a volume: `capacity`, `free`, and `available` to the caller.
using space_info = std::filesystem::space_info;

/// Returns the space on the volume that `p`, a directory or a file, is on, as
/// `GetDiskFreeSpaceExW` tells it. Throws `InvalidArgument` "Empty Path not permitted" without
/// a pathname, and what the code of a failed call stands for, about `p` as it was given.
FL_FILESYSTEM_API space_info space(upath const &p);

} // namespace fl::filesystem

// Each of them with a path and a literal: `rename(path, u"name")`.
#include <fl/filesystem/mixed_arguments.hpp>

#endif
