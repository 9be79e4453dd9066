#ifndef FL_FILESYSTEM_WINDOWS_HPP
#define FL_FILESYSTEM_WINDOWS_HPP
// Public. What code compiled into callers needs of the Windows side of the
// library: the functions whose names end in `_bridge`, and the types that they take.
// Includes no system header.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/windows_types.hpp>

#include <cstdint>
#include <string>

namespace fl::filesystem::detail::windows {

/// Returns the first `length` units of `path` behind a long prefix: `\\?\UNC\` in
/// place of the two leading backslashes if `path_type` has the server flag, else
/// `\\?\` ahead of everything. Doesn't look at the text, so a pathname that has a
/// long prefix already gets a second one.
FL_FILESYSTEM_API std::wstring add_long_path_prefix_bridge(std::wstring const &path,
                                                           std::uint64_t length,
                                                           path_type_enum path_type);

/// Returns the text that the reparse data in `data` has for its target, and sets
/// `link_type`. Pure bytes: touches no file.
///
///     link                                          result      link_type
///     symbolic link, relative, ..\x                 ..\x        link_type_symlink_relative
///     symbolic link, C:/x                           C:\x        link_type_symlink_absolute
///     junction, shown as C:\x\                      C:\x\       link_type_mount_point
///     junction, shown as nothing, for \??\C:\x\     C:\x        link_type_mount_point
///     mount point for \??\Volume{1}\                (empty)     link_type_volume_mount
///     any other tag                                 (empty)     as the values above tell
///
/// The name for people wins over the one that the system follows; slashes become
/// backslashes. Only a junction loses the prefix `\??\`, and a backslash at the end with
/// it. A symbolic link is relative if its flags are exactly 1.
///
/// Offsets and lengths that lead out of the buffer end with it. Throws
/// `foundation::ustring::CtypeInvalidCharacter` if a mount point's name of more than ten
/// units has a unit above 127 where it is compared with `\??\Volume`.
FL_FILESYSTEM_API std::wstring get_target_path_bridge(attrib_link_type &link_type,
                                                      reparse_data_context const &data);

/// Whether the first `length` units of `path` hold no element that is empty, `.` or
/// `..`, so that they can stand behind a long prefix. Only backslashes separate, and a
/// text with two of them ahead isn't clean: ask about what stands behind the root.
/// Elements within are looked for in all of `path`, also behind `length`.
///
///     a\b      clean
///     ...      clean: a name
///     .\a      not clean
///     a\..     not clean
///     a\\b     not clean
FL_FILESYSTEM_API bool is_path_clean_bridge(std::wstring const &path, std::uint64_t length);

/// Returns the pathname, with a long prefix, of what a link leads to: `link_path` is
/// the link's own pathname, `target_text` and `link_type` are what it says. A relative
/// text goes below the directory that holds the link, any other stands by itself. If it
/// is clean (`is_path_clean_bridge`), this is text alone, and what is there may be a
/// link again. Otherwise the whole pathname is walked on disk and every link in it
/// followed.
///
///     C:\d\l says x\y, relative      \\?\C:\d\x\y, no disk access
///     C:\x                           \\?\C:\x
///     \\?\C:\x                       as it is
///     \\server\share\x               \\?\UNC\server\share\x
///
/// A link on the walk that says `\\?\C:x` leads below the current directory of that drive, and
/// then the result has no long prefix.
///
/// The walk reads shortcut files, too: each initialises COM on the calling thread and
/// uninitialises it again. In a multi-threaded apartment `CoInitialize` fails, and `CoUninitialize`
/// takes one of the caller's own initialisations, who holds one more for each shortcut file.
///
/// Throws `PathNotFound` without a pathname for a target that leans on a drive's
/// current directory or ends in a share, `InvalidArgument` "Invalid Path Type" for one
/// that is no pathname or a device, and what the walk throws: `PathNotFound` without a pathname
/// for a `.` or `..` behind a file; `SystemError` 8246 on the 101st link, and 1462, without a
/// pathname, for a text beyond 2,147,483,647 units; what the code of a failed
/// `GetFileAttributesExW` or `GetFullPathNameW` stands for; of a shortcut file at the very end that
/// can't be read, what the code in the HRESULT stands for, or `SystemError` 14077 if there is none;
/// and what `get_target_path_bridge` throws.
FL_FILESYSTEM_API std::wstring build_target_path_bridge(std::wstring const &link_path,
                                                        std::wstring const &target_text,
                                                        attrib_link_type link_type);

/// Returns `path` as most operations hand it to a Win32 call: absolute, without `.` and
/// `..`, and with a long prefix if it has 260 units or more. `GetFullPathNameW` makes it full,
/// and applies `..` by text. Where that leaves one behind, the disk is asked, and it leads to
/// where the directory ahead of it really is, also behind a link. A link at the very end
/// stays one.
///
///     C:\a\.\b           C:\a\b
///     C:\link\..\x       C:\x, whatever the link leads to
///
/// Throws `InvalidArgument` "The path type of the given path is not valid", naming the
/// full pathname, for servers without a share and devices, what `absolute` throws, naming `path`,
/// and what the walk throws (see `build_target_path_bridge`).
FL_FILESYSTEM_API std::wstring make_native_access_form_bridge(std::u16string const &path);

/// Returns the record of what `link` leads to, a link in the form for the system. What
/// isn't a link is a failure here, but on a server, where each name answers for itself.
///
///     link to a file or directory    the record of that, further links followed
///     broken link                    a default-constructed record: not found
///     broken, on a mapped drive      the record of the link itself
///     volume mount point             of type `file_type_auto`, without times
///     any other reparse point        of type `file_not_found`
///
/// Throws `InvalidArgument` "The file or directory is not a reparse point." on a plain
/// name, `SystemError` 8246 if it leads through 20 links or more, what failed calls stand
/// for, naming the string that went to the system, what `build_target_path_bridge` and
/// `get_target_path_bridge` throw on the text of a link, and
/// `foundation::ustring::CtypeInvalidCharacter` as `status` does.
FL_FILESYSTEM_API file_status target_status_bridge(std::wstring const &link);

} // namespace fl::filesystem::detail::windows

#endif
