#ifndef FL_FILESYSTEM_SRC_STANDARD_FILESYSTEM_HPP
#define FL_FILESYSTEM_SRC_STANDARD_FILESYSTEM_HPP
// The standard library's filesystem facility as it behaves on Windows, over Win32
// calls: what the facility of one toolchain knows of drives, shares and links,
// that of another doesn't, and what is tested must be what ships.
//
// Names, arguments and results are those of `std::filesystem`, with a wide text
// for a path. Only the error-code forms are here. A code is the system's own, in
// the system category, or `ERROR_GEN_FAILURE` where a call failed and told none; success
// clears it.

#include "platform/filled_buffer.hpp"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace fl::filesystem::detail::standard {

/// Whether `text` has a drive with a separator behind it, or any other root name:
/// a server, or one of the prefixes `\\?\`, `\\.\` and `\??\`. Pure text.
template <typename Char>
bool is_absolute(std::basic_string_view<Char> text);

extern template bool is_absolute(std::u16string_view);
extern template bool is_absolute(std::wstring_view);

/// Returns what `GetFullPathNameW` makes of `text`; the empty text is answered
/// without a call.
std::wstring absolute(std::wstring const &text, std::error_code &ec);

/// The same in `buffer`, of a text that ends in a NUL.
std::wstring_view absolute(wchar_t const *text, text_buffer &buffer, std::error_code &ec);

/// Returns the process's current directory.
std::wstring current_path(std::error_code &ec);

/// Changes it.
void current_path(std::wstring const &text, std::error_code &ec);

/// Returns `text` without elements `.`, with each `..` applied to the name ahead of it, and
/// with single backslashes. Pure text, so what `..` leads to behind a link isn't asked.
/// What nothing is left of is `.`.
std::wstring lexically_normal(std::wstring_view text);

/// Returns how to come from `base` to `text`, as text: nothing if they have different
/// roots, or if `base` goes up further than it goes down. A drive behind a long prefix is a
/// root if it is one in both.
std::wstring lexically_relative(std::wstring_view text, std::wstring_view base);

/// Returns the pathname, without a long prefix, of the file that `text` leads to through
/// all links, as the system knows it. On a volume that has neither a letter nor a directory
/// to show it, that is a pathname behind `\\?\GLOBALROOT`, which stays.
std::wstring canonical(std::wstring const &text, std::error_code &ec);

/// The same for as much of `text` as exists, the rest of it joined behind and normal.
std::wstring weakly_canonical(std::wstring const &text, std::error_code &ec);

/// Returns how to come from `base` to `text`, links followed as far as there is something.
std::wstring relative(std::wstring const &text, std::wstring const &base, std::error_code &ec);

/// Whether two pathnames lead to one file or directory, links followed.
bool equivalent(std::wstring const &left, std::wstring const &right, std::error_code &ec);

/// Returns the type and the permissions of what `text` leads to, links followed by the
/// system. After a failure the type is `not_found` where the code says that the name can't
/// be reached, on a disk or on a network, and otherwise `none`; the code stays in either
/// case. Of a file that refuses every opening (code 32) what its directory says counts.
std::filesystem::file_status status(std::wstring const &text, std::error_code &ec);

/// The type of junctions and mount points, which not every toolchain's list has.
inline constexpr auto junction = static_cast<std::filesystem::file_type>(10);

/// The same for the name itself: a symbolic link is one, a mount point a `junction`, and
/// every other reparse point what its attributes say.
std::filesystem::file_status symlink_status(std::wstring const &text, std::error_code &ec);

/// Creates one directory and returns whether it did. That a directory is there
/// already is no error.
bool create_directory(std::wstring const &text, std::error_code &ec);

/// Creates each element of `text` behind its root, from the root downward, and
/// returns whether the last one was created. A level that exists is no error, and a
/// root alone is false without one. If the last level ends well there is no error at
/// all. Otherwise it is the last error that wasn't of a not-found kind, so that the
/// reason why a level couldn't be made isn't hidden by the levels missing below it,
/// or the last level's own if all were of that kind.
bool create_directories(std::wstring const &text, std::error_code &ec);

/// Returns the text of a symbolic link or mount point as it stands: the name for
/// people, or the one that the system follows if it has no other. Another kind of
/// reparse point is code 4393, and no memory for its data code 8.
std::wstring read_symlink(std::wstring const &text, std::error_code &ec);

/// Creates a symbolic link with the text `target`, its separators made single backslashes.
/// No memory for that is code 12 in the generic category.
void create_symlink(std::wstring const &target, std::wstring const &link, std::error_code &ec);
void create_directory_symlink(std::wstring const &target, std::wstring const &link,
                              std::error_code &ec);

/// Creates a symbolic link of the same kind and with the same text as `existing`. Another
/// reparse point is code 4393, and no memory for its data code 8.
void copy_symlink(std::wstring const &existing, std::wstring const &link, std::error_code &ec);

/// Removes a file, a link itself or an empty directory, read-only or not, and returns
/// whether it did. A name that can't be found is no error. Other names of a read-only file
/// stay read-only.
bool remove(std::wstring const &text, std::error_code &ec);

/// Copies the content, attributes and times of a file with `CopyFileW`, and returns whether
/// it did. Of the options only those for an existing target count: without one it is code
/// 80, and with `skip_existing` or `update_existing` it is code 32 if the two are one file.
bool copy_file(std::wstring const &from, std::wstring const &to,
               std::filesystem::copy_options options, std::error_code &ec);

/// Copies a file, a link or a directory as `options` say, and stops at the first error.
/// What the facility refuses itself is in the generic category: 17 for a target that is the
/// same file, or one that a directory can't take the place of, 21 for a directory that is to
/// become symbolic links, 130 for kinds of files that can't be copied.
void copy(std::wstring const &from, std::wstring const &to, std::filesystem::copy_options options,
          std::error_code &ec);

/// Is told both pathnames when a name has been dealt with, a directory ahead of what is in it,
/// and returns whether to go on.
using copy_listener = std::function<bool(std::wstring const &from, std::wstring const &to)>;

/// The same with somebody who listens. Returns whether nobody stopped it.
bool copy(std::wstring const &from, std::wstring const &to, std::filesystem::copy_options options,
          std::error_code &ec, copy_listener const &listener);

/// Returns the bytes of the volume that `text`, a directory or file, is on: all, free, and
/// free for the caller. After a failure all three are the largest number.
std::filesystem::space_info space(std::wstring const &text, std::error_code &ec);

/// Moves a file or directory, a file to another volume, too. A file that has the new name is
/// replaced.
void rename(std::wstring const &from, std::wstring const &to, std::error_code &ec);

} // namespace fl::filesystem::detail::standard

#endif
