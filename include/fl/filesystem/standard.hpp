#ifndef FL_FILESYSTEM_STANDARD_HPP
#define FL_FILESYSTEM_STANDARD_HPP
// Public. Together with the standard library: paths to and from `std::filesystem::path`, and
// file streams for pathnames of any length.

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/config.hpp>
#include <fl/filesystem/path.hpp>

#include <filesystem>
#include <fstream>
#include <ios>
#include <string>
#include <type_traits>

namespace fl::filesystem {

namespace detail {

// What a `std::filesystem::path` holds is what Windows takes, and elsewhere UTF-8.

inline std::u16string units_of(std::wstring const &text)
{
    return path_source<std::wstring>::of(text);
}
inline std::u16string units_of(std::string const &text)
{
    return from_utf8(text);
}

template <typename Text>
Text standard_text_of(std::wstring form)
{
    if constexpr (std::is_same_v<Text, std::wstring>)
        return form;
    else
        return to_utf8(units_of(form));
}

/// The text unit for unit, or out of UTF-8 with what `from_utf8` throws.
template <>
struct path_source<std::filesystem::path>
{
    static constexpr bool is_one = true;
    static std::u16string of(std::filesystem::path const &path) { return units_of(path.native()); }
};

// What a stream needs of its file.
inline constexpr unsigned int stream_reads = 1;
inline constexpr unsigned int stream_writes = 2;
inline constexpr unsigned int stream_creates = 4;

/// Throws the reason why a stream couldn't open `p`, found out by opening it once more with
/// `CreateFileW`, and then closing it: what the code of the failed call stands for, naming the
/// string that went to the system; `SystemError` 110 if it can be opened now; and
/// `InvalidArgument` "Unsupported open mode" without a pathname if `needs` is 0. Leaves no file
/// behind. Never returns.
[[noreturn]] FL_FILESYSTEM_API void throw_stream_failure(upath const &p, unsigned int needs);

/// What a stream of this mode needs, or 0 if there are no streams of it.
inline unsigned int stream_needs(std::ios_base::openmode mode)
{
    using ios = std::ios_base;
    bool const appends = (mode & ios::app) != 0;
    bool const truncates = (mode & ios::trunc) != 0;
    bool const writes = (mode & ios::out) != 0 || appends;
    bool const reads = (mode & ios::in) != 0;
    if ((truncates && (appends || !writes)) || (!reads && !writes))
        return 0;
    bool const creates = writes && (appends || truncates || !reads);
    return (reads ? stream_reads : 0U) | (writes ? stream_writes : 0U) |
           (creates ? stream_creates : 0U);
}

} // namespace detail

/// Returns the pathname by which the standard library, and whatever takes its paths, finds
/// the very file that this library's operations mean by `p`, at any length: the string that
/// they hand to the system, absolute, with `..` behind links resolved, and with a long prefix
/// if it has 260 units or more (see `detail::make_native_access_form`). So it is for opening;
/// `p` itself is for showing. Where that string can't be formed it is `p` unit for unit. Never
/// fails. The empty path: the empty path.
///
///     C:/dir//a.txt        C:\dir\a.txt
///     a.txt                C:\work\a.txt    (the current directory is C:\work)
///     C:\ and 257 units    \\?\ ahead of it
///
///     std::ifstream in(to_standard(p));
[[nodiscard]] inline std::filesystem::path to_standard(upath const &p)
{
    if (p.empty())
        return {};
    using text = std::filesystem::path::string_type;
    return detail::standard_text_of<text>(detail::make_native_access_form(p.native()));
}

/// The way back: the native form of the text, so without a long prefix. (A
/// `std::filesystem::path` becomes a `upath` of itself, too, once this header is included.)
///
///     \\?\C:\dir\a.txt    C:\dir\a.txt
///     C:/dir/             C:\dir
[[nodiscard]] inline upath from_standard(std::filesystem::path const &p)
{
    return upath(p);
}

/// Opens a file of any pathname as a stream, by what `to_standard` makes of it. `mode` is that
/// of the standard's streams: without `out` or with `in | out` the file must be there, and
/// `out` alone empties it.
///
/// Where the stream isn't open afterwards the reason is found out by `CreateFileW` and thrown:
/// `PathNotFound`, `AccessDenied` (also for a directory), `SystemError` 32 for a file that others
/// hold, and what other codes stand for, naming the string that went to the system;
/// `SystemError` 110 if nothing stands in the way any longer; `InvalidArgument` "Unsupported
/// open mode" for one that no stream has. It is as open as streams can tell: exceptions of
/// its later life are the stream's own.
[[nodiscard]] inline std::fstream
open(upath const &p, std::ios_base::openmode mode = std::ios_base::in | std::ios_base::out)
{
    std::fstream stream(to_standard(p), mode);
    if (!stream.is_open())
        detail::throw_stream_failure(p, detail::stream_needs(mode));
    return stream;
}

} // namespace fl::filesystem

#endif
