#ifndef FL_FILESYSTEM_PATHNAME_TRAITS_HPP
#define FL_FILESYSTEM_PATHNAME_TRAITS_HPP
// Public. The characters and prefixes that pathnames are made of, once for each
// of the two character types. Asks the system nothing.

#include <fl/filesystem/config.hpp>

#include <string>

namespace fl::filesystem {

namespace detail {

// Written as arrays of units, so that one definition serves both character types.
template <typename Char>
struct pathname_literals
{
    static constexpr Char separator[] = {'\\', 0};
    static constexpr Char long_prefix[] = {'\\', '\\', '?', '\\', 0};
    static constexpr Char long_unc_prefix[] = {'\\', '\\', '?', '\\', 'U', 'N', 'C', '\\', 0};
    static constexpr Char unc_prefix[] = {'\\', '\\', 0};
    static constexpr Char volume_separator[] = {':', 0};
    static constexpr Char current_directory[] = {'.', 0};
    static constexpr Char parent_directory[] = {'.', '.', 0};
    static constexpr Char device_prefix[] = {'\\', '\\', '.', '\\', 0};
    static constexpr Char mount_point_prefix[] = {'\\', '?', '?', '\\', 0};
    static constexpr Char volume_name_prefix[] = {'\\', '?', '?', '\\', 'V', 'o',
                                                  'l',  'u', 'm', 'e',  0};
    static constexpr Char list_separator[] = {';', 0};
};

} // namespace detail

/// The characters and prefixes of Windows pathnames, for `char16_t` (pathnames
/// as callers hold them) and `wchar_t` (pathnames as the system takes them).
/// Both hold the same UTF-16 code units. Every text ends in a NUL.
template <typename Char>
struct pathname_traits
{
    /// Backslash, colon, full stop and slash.
    static constexpr Char PATHNAME_SEPARATOR_CHARACTER = '\\';
    static constexpr Char VOLUME_SEPARATOR_CHARACTER = ':';
    static constexpr Char DOT_CHARACTER = '.';
    static constexpr Char GENERIC_PATHNAME_SEPARATOR_CHARACTER = '/';
    /// Stands between the pathnames of a search list, not inside a pathname.
    static constexpr Char PATH_SEPARATOR_CHAR = ';';

    /// Stands between the elements of one pathname.
    static constexpr Char const *PATHNAME_SEPARATOR = detail::pathname_literals<Char>::separator;
    /// What decomposition returns for a root directory.
    static constexpr Char const *ROOT_PATHNAME = detail::pathname_literals<Char>::separator;
    /// `\\?\`, which lifts the length limit from a drive pathname.
    static constexpr Char const *LONG_PATHNAME_PREFIX =
        detail::pathname_literals<Char>::long_prefix;
    /// `\\?\UNC\`, the same for a server pathname, where it stands in place of
    /// the two leading backslashes.
    static constexpr Char const *LONG_UNC_PATHNAME_PREFIX =
        detail::pathname_literals<Char>::long_unc_prefix;
    /// Two backslashes, the start of a server pathname.
    static constexpr Char const *UNC_PREFIX = detail::pathname_literals<Char>::unc_prefix;
    /// Closes a drive letter.
    static constexpr Char const *VOLUME_SEPARATOR =
        detail::pathname_literals<Char>::volume_separator;
    /// One full stop.
    static constexpr Char const *CURRENT_DIRECTORY =
        detail::pathname_literals<Char>::current_directory;
    /// Two full stops.
    static constexpr Char const *PARENT_DIRECTORY =
        detail::pathname_literals<Char>::parent_directory;
    /// `\\.\`, the start of a device pathname.
    static constexpr Char const *DEVICE_PATHNAME_PREFIX =
        detail::pathname_literals<Char>::device_prefix;
    /// `\??\`, with which the substitute name of a mount point begins.
    static constexpr Char const *MOUNT_POINT_PREFIX =
        detail::pathname_literals<Char>::mount_point_prefix;
    /// `\??\Volume`, with which it begins if it names a volume.
    static constexpr Char const *VOLUME_NAME_PREFIX =
        detail::pathname_literals<Char>::volume_name_prefix;
    /// Stands between the pathnames of a search list, not inside a pathname.
    static constexpr Char const *PATH_SEPARATOR = detail::pathname_literals<Char>::list_separator;

    pathname_traits() = default;
    pathname_traits(pathname_traits const &) = default;
    pathname_traits(pathname_traits &&) noexcept = default;
    pathname_traits &operator=(pathname_traits const &) noexcept;
    pathname_traits &operator=(pathname_traits &&) noexcept;
    ~pathname_traits() = default;

    /// Returns `text` in the system's character type, code unit for code unit.
    /// Checks nothing: unpaired surrogates and NULs pass through.
    static std::wstring to_filesystem(std::basic_string<Char> const &text);

    /// The way back: returns `text` code unit for code unit. Checks nothing.
    static std::basic_string<Char> from_filesystem(std::wstring const &text);

    /// Returns a copy of `text`: on Windows a tilde is an ordinary character.
    static std::basic_string<Char> replace_tilde_with_home_dir(std::basic_string<Char> const &text);
};

extern template struct FL_FILESYSTEM_TEMPLATE_DECLARATION pathname_traits<char16_t>;
extern template struct FL_FILESYSTEM_TEMPLATE_DECLARATION pathname_traits<wchar_t>;

/// The texts that callers need to build and take apart pathnames of their own.
struct FL_FILESYSTEM_API upath_constant
{
    /// What stands between the elements of one pathname: in generic form, in native form.
    static constexpr char16_t const *GENERIC_PATHNAME_SEPARATOR = u"/";
    static constexpr char16_t const *PATHNAME_SEPARATOR = u"\\";
    /// Stands between the pathnames of a search list, not inside a pathname.
    static constexpr char16_t const *PATH_SEPARATOR = u";";
    /// The full stop ahead of an extension, the two names for directories, and what stands for
    /// any name in a search.
    static constexpr char16_t const *FILE_EXTENSION_SEPARATOR = u".";
    static constexpr char16_t const *CURRENT_DIRECTORY = u".";
    static constexpr char16_t const *PARENT_DIRECTORY = u"..";
    static constexpr char16_t const *WILD_CARD = u"*";

    upath_constant() = default;
    upath_constant(upath_constant const &) = default;
    upath_constant(upath_constant &&) = default;
    upath_constant &operator=(upath_constant const &) = default;
    upath_constant &operator=(upath_constant &&) = default;
    ~upath_constant() = default;
};

} // namespace fl::filesystem

#endif
