#ifndef FL_FILESYSTEM_PATHNAME_HPP
#define FL_FILESYSTEM_PATHNAME_HPP
// Public. Pathnames as text: taken apart, put together, brought to native form.
// Nothing here looks at the disk, and only `make_expanded_path` asks the system
// anything. The path object that most callers want is in path.hpp.

#include <fl/filesystem/config.hpp>

#include <cstdint>
#include <string>

namespace fl::filesystem {

/// A pathname taken apart in one pass by `detail::extract_pathname_elements`.
template <typename Char>
struct pathname_element_context
{
    std::basic_string<Char> parent_path; ///< the pathname without its filename
    std::basic_string<Char> filename;    ///< the last element; a root names itself
    std::basic_string<Char> stem;        ///< the filename without its extension
    std::basic_string<Char> extension;   ///< what follows its last full stop
};

extern template struct FL_FILESYSTEM_TEMPLATE_DECLARATION pathname_element_context<char16_t>;

// The functions below expect native form (see `make_native_form`): only the
// backslash separates elements for them. None of them fails unless it says so.

namespace detail {

/// Returns the length of the root of `text` in code units, a trailing backslash
/// included. For a server pathname the root ends behind the server; the share is
/// the first element after it.
///
///     C:\foo                 3
///     C:foo                  2
///     \foo                   1
///     \\server\share\foo     9    (behind the server)
///     \\?\C:\foo             7
///     \\.\COM1               1    (a device has no root of its own)
///     foo                    0
FL_FILESYSTEM_API std::uint64_t get_root_path_length(std::u16string const &text);

/// Returns the drive or server of `text`, without a backslash behind it.
///
///     C:\foo                 C:
///     C:foo                  C:
///     \\server\share\foo     \\server
///     \foo                   (empty)
FL_FILESYSTEM_API std::u16string extract_root_name(std::u16string const &text);

/// Returns the backslash that ends the root of `text`, or nothing if there is
/// none.
///
///     C:\foo                 \        (the one behind the drive)
///     \foo                   \        (the root is nothing else)
///     C:foo                  (empty)
///     \\server               (empty)
FL_FILESYSTEM_API std::u16string extract_root_directory(std::u16string const &text);

/// Returns root name and root directory together: the first
/// `get_root_path_length` units.
///
///     C:\foo                 C:\          (its backslash included)
///     \\server\share\foo     \\server\    (the share is not in it)
///     C:foo                  C:
FL_FILESYSTEM_API std::u16string extract_root_path(std::u16string const &text);

/// Returns what follows the root.
///
///     C:\foo\bar             foo\bar
///     \\server\share\foo     share\foo
///     C:\                    (empty)
FL_FILESYSTEM_API std::u16string extract_relative_path(std::u16string const &text);

/// Returns `text` without its last element, as `remove_filename` makes it.
///
///     C:\foo\bar             C:\foo
///     C:\foo                 C:\      (a parent that is a root keeps it)
///     C:\                    C:       (a root itself loses its backslash)
///     foo                    (empty)
FL_FILESYSTEM_API std::u16string extract_parent_path(std::u16string const &text);

/// Returns the last element of `text`.
///
///     C:\foo\bar.txt         bar.txt
///     foo\                   (empty: the text ends in a separator)
///     C:\                    \        (a root directory names itself)
///     C:                     C:       (and so does a bare drive)
///     a/b                    a/b      (only the backslash separates here)
FL_FILESYSTEM_API std::u16string extract_filename(std::u16string const &text);

/// Returns the filename up to its last full stop.
///
///     a.b.c                  a.b
///     foo.                   foo
///     .bashrc                (empty: a leading full stop counts)
///     ..                     ..
FL_FILESYSTEM_API std::u16string extract_stem(std::u16string const &text);

/// Returns what follows the last full stop of the filename, without the stop.
///
///     a.b.c                  c
///     foo.                   (empty)
///     .bashrc                bashrc
///     ..                     (empty)
FL_FILESYSTEM_API std::u16string extract_extension(std::u16string const &text);

/// Returns the element that a walk over `text` starts with. `root_length` is
/// `get_root_path_length` of the text.
///
///     C:\foo                 C:
///     \foo                   \        (the root directory)
///     foo\bar                foo
FL_FILESYSTEM_API std::u16string extract_first_element(std::u16string const &text,
                                                       std::uint64_t root_length);

/// Takes `text` apart in one pass. Unlike the functions above, it counts the
/// share to the root, has `C:` for the parent of what is relative to a drive, keeps
/// a trailing full stop in the stem, and has no special case for "." and "..".
///
///     text                   parent_path          filename   stem   extension
///     C:\foo\bar.txt         C:\foo               bar.txt    bar    txt
///     \\server\share\foo     \\server\share\      foo        foo
///     C:foo                  C:                   foo        foo
///     foo.                                        foo.       foo.
FL_FILESYSTEM_API pathname_element_context<char16_t>
extract_pathname_elements(std::u16string const &text);

/// Steps a walk over `text` one element toward its end. A walk starts with
/// position 0 and `extract_first_element`, and has ended when the position is
/// the size of the text. A root name and its root directory are two elements.
///
///     C:\foo\bar             C:   \   foo   bar
///     \\server\share\foo     \\server   \   share   foo
FL_FILESYSTEM_API void move_down(std::u16string const &text, std::uint64_t root_length,
                                 std::uint64_t &position, std::u16string &element);

/// Steps a walk over `text` one element toward its front, from the size of the
/// text and an empty element at the earliest. From the end of a text that ends in
/// a backslash behind its root it makes no progress: a caller that loops stops
/// when the position does not change.
FL_FILESYSTEM_API void move_up(std::u16string const &text, std::uint64_t root_length,
                               std::uint64_t &position, std::u16string &element);

/// Joins `addition`, brought to native form, to `base` and returns `base`. An
/// empty base takes any addition. The `bool` has no effect.
///
///     base        addition    result
///     C:\foo      bar         C:\foo\bar
///     C:          foo         C:\foo   (not the drive-relative C:foo)
///     \\server    \share      \\server\share
///     foo         (empty)     foo\     (ready for a name)
///
/// Throws `InvalidArgument` without a pathname and leaves `base` as it was:
/// "Absolute path not permitted" if the addition has a drive or server, and "Path
/// name can not start with \" if it starts with a backslash and the base is
/// neither a bare drive nor a bare server.
FL_FILESYSTEM_API std::u16string &concatenate_pathname(std::u16string &base,
                                                       std::u16string const &addition, bool = true);

/// Removes the last element of `text` and returns `text`.
///
///     C:\foo\bar             C:\foo
///     C:\foo                 C:\          (the root stays whole)
///     C:\                    C:
///     \\server\share         \\server\    (the root ends behind the server)
///     C:foo                  (empty)
FL_FILESYSTEM_API std::u16string &remove_filename(std::u16string &text);

/// Replaces the extension of the last element of `pathname`, or adds one, and
/// returns `pathname`. `new_extension` may begin with its full stop or not; an empty
/// one removes nothing. What ends in a colon or a backslash, a server, a share, "."
/// and ".." stay as they are, and then the extension isn't looked at. (Behind a
/// drive without a backslash, as in `C:..`, dots are a name like any other.)
///
///     foo.txt     doc         foo.doc
///     foo         .doc        foo.doc
///     .bashrc     txt         .txt
///     C:\         txt         C:\      (a root has no extension)
///
/// Otherwise throws `InvalidArgument` "Invalid extension" without a pathname, and
/// leaves `pathname` as it was, if the extension is a full stop alone, begins with two,
/// or holds a separator of either kind.
FL_FILESYSTEM_API std::u16string &replace_extension(std::u16string &pathname,
                                                    std::u16string const &new_extension);

/// Returns `text` in native form, the one notation that the library works on:
/// backslashes only, doubled ones made one, trailing blanks cut, a long prefix
/// dropped, and the backslash behind a last name dropped. "." and ".." stay, and so do full
/// stops behind a name, which the system drops when it makes the pathname full. Every
/// text has a native form; that of a bare prefix is empty. The `bool` has no effect.
///
///     C:/foo//bar/           C:\foo\bar
///     C:\x.                  C:\x.
///     \\?\C:\foo             C:\foo
///     \\?\UNC\server\share   \\server\share
///     \\server\share\        \\server\share\    (a share may keep its backslash)
///     C:a\                   C:a\             (so may one unit behind a drive)
///     foo\ and two blanks    as it is         (blanks there are a name)
///
/// It is made once: the native form of what stood behind a prefix, or of a name that
/// ended in a blank, may be another one.
///
/// Allocates the result once, and once more only if separators were doubled.
FL_FILESYSTEM_API std::u16string make_native_form(std::u16string const &text, bool = true);

/// Returns `text` with every backslash turned into a forward slash, those of a
/// prefix included.
///
///     \\?\C:\foo             //?/C:/foo
FL_FILESYSTEM_API std::u16string make_generic_form(std::u16string const &text);

/// Returns the absolute pathname of a rooted or drive-relative `text`, from the
/// process's current directories as `GetFullPathNameW` reports them, and a copy
/// of any other text without asking the system. The `bool` has no effect.
///
///     \foo                   C:\foo           (the current drive is C)
///     C:foo                  C:\work\foo      (the current directory of C)
///     foo                    foo              (nothing is expanded)
///
/// Throws what the code of a failed call stands for, with the pathname that the
/// call was given.
FL_FILESYSTEM_API std::u16string make_expanded_path(std::u16string const &text, bool = true);

/// Returns whether the root of `text` is longer than 2 units. Goes by its length
/// alone.
///
///     C:\foo                 true
///     \\server               true
///     \foo                   false
///     C:foo                  false
FL_FILESYSTEM_API bool is_absolute(std::u16string const &text);

/// Returns whether `text` is a full pathname, with a drive and a backslash or a
/// server and a share, or one that `make_expanded_path` makes into one. Asks the
/// system nothing. The `bool` has no effect.
///
///     \foo                   true
///     C:foo                  true
///     C:\foo                 true
///     \\server               false    (no share)
///     \\?\C:foo              false    (nothing expands it)
FL_FILESYSTEM_API bool is_absolute_path_when_expanded(std::u16string const &text, bool = true);

/// Gives the path object its text functions. That of `upath` is empty: its
/// members call the functions above. The other two offer the same logic to code
/// that is written over the character type.
template <typename Native, typename Portable>
struct path_traits;

template <>
struct path_traits<wchar_t, char16_t>
{
};

/// The functions of these names above, over the system's character type.
template <>
struct FL_FILESYSTEM_API path_traits<wchar_t, wchar_t>
{
    /// As the function of this name above.
    static std::wstring &concatenate_pathname(std::wstring &base, std::wstring const &addition,
                                              bool = true);
    static std::wstring extract_filename(std::wstring const &text);
    static bool is_absolute(std::wstring const &text);
    static std::wstring make_native_form(std::wstring const &text, bool = true);
    static std::wstring &remove_filename(std::wstring &text);
};

/// The same over the type in which callers hold text.
template <>
struct FL_FILESYSTEM_API path_traits<char16_t, char16_t>
{
    /// As the function of this name above.
    static std::u16string make_native_form(std::u16string const &text, bool = true);
};

} // namespace detail

} // namespace fl::filesystem

#endif
