#ifndef FL_FILESYSTEM_TEXT_HPP
#define FL_FILESYSTEM_TEXT_HPP
// Public. Paths, records and failures as text for people: to streams, by std::format where the
// standard library has it, and by {fmt} where its header was included before this one. One
// line describes an exception. UTF-8 to and from texts is in utf8.hpp, which this includes.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/utf8.hpp>

#include <boost/date_time/posix_time/posix_time_config.hpp>

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#if __has_include(<version>)
#include <version>
#endif
#ifdef __cpp_lib_format
#include <format>
#endif

namespace fl::filesystem {

class directory_entry; // in directory.hpp, which who has one has included

/// Returns the system's own words for a code, in its language and without a line break, as
/// `FormatMessageW` tells them; nothing if it has none.
///
///     2        The system cannot find the file specified.
///     99999    (empty)
[[nodiscard]] FL_FILESYSTEM_API std::u16string system_message(unsigned int code);

namespace detail {

/// What a reader wouldn't see, and what would turn the direction of writing, end the line or
/// end the quotes: names are forged with them. An unpaired surrogate is no character.
constexpr bool is_hidden(char32_t point) noexcept
{
    return point < 0x20 || (point >= 0x7F && point <= 0x9F) || point == U'"' || point == 0x61C ||
           (point >= 0x200B && point <= 0x200F) || (point >= 0x2028 && point <= 0x202E) ||
           (point >= 0x2060 && point <= 0x206F) || (point >= 0xD800 && point <= 0xDFFF) ||
           point == 0xFEFF || (point >= 0xFFF9 && point <= 0xFFFB) || (point | 1) == 0xFFFF;
}

inline void append_number(std::string &line, std::uint64_t number, std::uint64_t base,
                          std::size_t digits = 1)
{
    std::string reversed;
    for (; number != 0 || reversed.size() < digits; number /= base)
        reversed += "0123456789ABCDEF"[number % base];
    line.append(reversed.rbegin(), reversed.rend());
}

inline void append_visible(std::string &line, char32_t point)
{
    if (!is_hidden(point)) {
        append_utf8(line, point);
        return;
    }
    line += "\\u";
    append_number(line, point, 16, 4);
}

/// In quotes, with an escape such as `\u202E` for what can't be seen.
inline std::string in_quotes(std::u16string_view text)
{
    std::string line = "\"";
    while (!text.empty())
        append_visible(line, take_code_point(text));
    return line += '"';
}

/// The text of another's exception: UTF-8, or bytes of who knows which encoding.
inline std::string visible(std::string_view bytes)
{
    std::string line;
    while (!bytes.empty()) {
        char32_t const point = take_utf8_sequence(bytes);
        if (point == U'"') {
            line += '"'; // there are no quotes around it
        } else if (point <= 0x10FFFF) {
            append_visible(line, point);
        } else {
            line += "\\x";
            append_number(line, static_cast<unsigned char>(bytes[0]), 16, 2);
            bytes.remove_prefix(1);
        }
    }
    return line;
}

/// What the class of a failure says, in words.
constexpr char const *reason_of(fsys_excp_id id) noexcept
{
    switch (id) {
    case fsys_excp_invalid_argument:
        return "the argument makes no sense";
    case fsys_excp_invalid_operation:
        return "this can't be done in the present state";
    case fsys_excp_file_name_too_large:
        return "the pathname, or a name in it, is longer than the system takes";
    case fsys_excp_file_name_conversion_failure:
        return "the text isn't UTF-8";
    case fsys_excp_cvt_invalid_character:
        return "a character can't be converted";
    case fsys_excp_access_denied:
        return "the caller may not do this";
    case fsys_excp_path_not_found:
        return "the name, or a directory on the way to it, isn't there";
    case fsys_excp_not_directory_error:
        return "a directory is needed here, and this is something else";
    case fsys_excp_directory_not_empty:
        return "the directory isn't empty";
    case fsys_excp_file_is_directory:
        return "a file is needed here, and this is a directory";
    case fsys_excp_file_exists_error:
        return "something of that name is there already";
    case fsys_excp_path_name_comparison_failure:
        return "the pathnames can't be compared";
    case fsys_excp_system_error:
        return "the system refused";
    case fsys_excp_temp_env_not_specified:
        return "no folder for temporary files is known";
    }
    return "it failed";
}

/// Identifier and reason. The text of an `InvalidArgument` has its message between them and
/// its pathname, which is told in quotes afterwards.
inline std::string headline_of(FsysExceptionBase const &failure)
{
    std::string line = failure.what();
    if (failure.get_excp_id() == fsys_excp_invalid_argument) {
        // as the class writes it: 32 to 127 as they are, all else as escapes
        std::string named = ": {";
        for (char16_t const unit : failure.get_path_name()) {
            if (unit >= 32 && unit <= 127) {
                named += static_cast<char>(unit);
            } else {
                named += "\\u";
                append_number(named, unit, 16, 4);
            }
        }
        named += '}';
        if (line.size() > named.size() &&
            line.compare(line.size() - named.size(), named.size(), named) == 0)
            line.resize(line.size() - named.size());
        if (line.find(": ") != std::string::npos)
            return visible(line);
    }
    return visible(line) + ": " + reason_of(failure.get_excp_id());
}

inline std::string description_of(FsysExceptionBase const &failure)
{
    std::string line = headline_of(failure);
    char const *separator = ": ";
    auto const append_name = [&](std::u16string const &name) {
        if (name.empty())
            return;
        line += separator + in_quotes(name);
        separator = ", ";
    };
    append_name(failure.get_path_name());
    for (std::u16string const &name : failure.get_additional_path_names())
        append_name(name);

    unsigned int const code = failure.get_error_code();
    if (code == 0 && failure.get_excp_id() != fsys_excp_system_error)
        return line;
    line += " (code ";
    append_number(line, code, 10);
    if (code != 0) {
        std::string const words = visible(to_utf8(system_message(code)));
        if (!words.empty())
            line += ": " + words;
    }
    return line += ')';
}

/// An exception of any class. That its description is asked for by way of this leaves calls
/// of another `describe`, such as a program may have for these classes, to that.
class any_exception
{
public:
    any_exception(std::exception const &exception) noexcept : exception_(exception) {}
    std::exception const &get() const noexcept { return exception_; }

private:
    std::exception const &exception_;
};

} // namespace detail

/// Returns one line, in UTF-8, that tells all about an exception: of the library's, its
/// identifier, the reason in words, each pathname in quotes, and the code with the system's
/// words for it. What can't be seen in a name, such as a line break, a mark that turns the
/// direction of writing, or half of a surrogate pair, stands as an escape. (A code that an
/// operation makes up, as `copy` does, gets the system's words like any other.)
///
///     fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't there:
///         "C:\dir\x"
///     fl:filesystem:InvalidArgument: Empty Path not permitted
///     fl:filesystem:SystemError: the system refused: "C:\a", "C:\b" (code 32: The process
///         cannot access the file because it is being used by another process.)
///     foundation::ustring::CtypeInvalidCharacter: Invalid character error.
///
/// (Each is one line.) Of any other it is its own text, with the number of a
/// `std::system_error` behind it.
[[nodiscard]] inline std::string describe(detail::any_exception const &exception)
{
    std::exception const &any = exception.get();
    if (auto const *ours = dynamic_cast<FsysExceptionBase const *>(&any))
        return detail::description_of(*ours);
    std::string line = detail::visible(any.what());
    if (dynamic_cast<foundation::ustring::CtypeInvalidCharacter const *>(&any) != nullptr)
        return "foundation::ustring::CtypeInvalidCharacter: " + line;
    if (dynamic_cast<foundation::ustring::CtypeExceptionBase const *>(&any) != nullptr)
        return "foundation::ustring::CtypeExceptionBase: " + line;
    if (auto const *coded = dynamic_cast<std::system_error const *>(&any))
        line += " (" + detail::visible(coded->code().category().name()) + " code " +
                std::to_string(coded->code().value()) + ')';
    return line;
}

namespace detail {

inline char const *type_in_words(unsigned int type) noexcept
{
    if ((type & file_status::file_not_found) == file_status::file_not_found)
        return "not found";
    switch (type & file_status::file_type_mask) {
    case file_status::regular_file:
        return "file";
    case file_status::directory_file:
        return "directory";
    case file_status::symlink_file:
        return "symbolic link";
    case file_status::reparse_file:
        return "junction or volume mount point";
    case file_status::block_file:
        return "block device";
    case file_status::character_file:
        return "character device";
    case file_status::fifo_file:
        return "FIFO";
    case file_status::socket_file:
        return "socket";
    default:
        return "unknown type";
    }
}

/// Permissions in octal and what else the word says.
inline void append_permissions(std::string &line, unsigned int perms)
{
    if ((perms & file_status::perms_mask) == file_status::perms_unknown) {
        line += ", unknown permissions";
        return;
    }
    line += ", ";
    append_number(line, perms & 07777U, 8, 4);
    if ((perms & file_status::archive_file) != 0)
        line += ", archive";
    if ((perms & file_status::hidden_file) != 0)
        line += ", hidden";
    if ((perms & file_status::system_file) != 0)
        line += ", system";
    if ((perms & file_status::non_indexed_file) != 0)
        line += ", not indexed";
}

/// Year, month and day, by the number of days since 1601-01-01, where four centuries begin.
/// Boost's own can't tell years beyond 9999, which Windows can.
inline void append_date(std::string &line, std::int64_t days)
{
    constexpr std::int64_t year_days = 365, four_years = 1461, century = 36524, cycle = 146097;
    std::int64_t const cycles = (days >= 0 ? days : days - cycle + 1) / cycle;
    std::int64_t rest = days - cycles * cycle;
    // the last day of a cycle, and of four years, is one more than equal parts have
    std::int64_t const centuries = rest / century < 4 ? rest / century : 3;
    rest -= centuries * century;
    std::int64_t const leaps = rest / four_years;
    rest -= leaps * four_years;
    std::int64_t const years = rest / year_days < 4 ? rest / year_days : 3;
    rest -= years * year_days;
    bool const is_leap = years == 3 && (leaps != 24 || centuries == 3);

    constexpr int month_days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    unsigned int month = 0;
    for (;; ++month) {
        std::int64_t const length = month_days[month] + (month == 1 && is_leap ? 1 : 0);
        if (rest < length)
            break;
        rest -= length;
    }
    append_number(
        line, static_cast<std::uint64_t>(1601 + cycles * 400 + centuries * 100 + leaps * 4 + years),
        10, 4);
    line += '-';
    append_number(line, month + 1, 10, 2);
    line += '-';
    append_number(line, static_cast<std::uint64_t>(rest) + 1, 10, 2);
}

inline void append_time(std::string &line, boost::posix_time::ptime const &time)
{
    if (time.is_special()) {
        line += ", no time";
        return;
    }
    using duration = boost::posix_time::time_duration;
    boost::posix_time::ptime const first(boost::gregorian::date(1601, 1, 1));
    constexpr std::int64_t day = 86400;
    std::int64_t const ticks = (time - first).ticks();
    std::int64_t const per_second = duration::ticks_per_second();
    std::int64_t const seconds =
        ticks / per_second - (ticks < 0 && ticks % per_second != 0 ? 1 : 0);
    std::int64_t const days = (seconds >= 0 ? seconds : seconds - day + 1) / day;
    auto const of_day = static_cast<std::uint64_t>(seconds - days * day);
    line += ", ";
    append_date(line, days);
    line += ' ';
    append_number(line, of_day / 3600, 10, 2);
    line += ':';
    append_number(line, of_day / 60 % 60, 10, 2);
    line += ':';
    append_number(line, of_day % 60, 10, 2);
    line += " UTC";
}

inline void append_size(std::string &line, std::uint64_t size)
{
    line += ", ";
    append_number(line, size, 10);
    line += size == 1 ? " byte" : " bytes";
}

// One value as text in UTF-8. Templates over the path, so that nothing is made a path here.

template <typename Native, typename Portable, typename Traits>
std::string text_of(basic_path<Native, Portable, Traits> const &path)
{
    return path.string();
}

template <typename Type>
using if_entry = std::enable_if_t<std::is_same_v<Type, directory_entry>, int>;

template <typename Entry, if_entry<Entry> = 0>
std::string text_of(Entry const &entry)
{
    return entry.path().string();
}

inline std::string text_of(file_status const &status)
{
    std::string line = type_in_words(status.get_type());
    if (!file_status::exists(status))
        return line;
    append_permissions(line, status.get_perms());
    append_size(line, status.get_size());
    append_time(line, status.get_mtime());
    return line;
}

inline std::string text_of(file_status_light const &status)
{
    std::string line = type_in_words(status.get_type());
    if (!file_status_light::exists(status))
        return line;
    append_size(line, status.get_size());
    append_time(line, status.get_mtime());
    return line;
}

inline std::string text_of(FsysExceptionBase const &failure)
{
    return description_of(failure);
}

/// The same in the characters of a stream: UTF-8, or the units of the system's type.
template <typename Char, typename Value>
std::basic_string<Char> text_in(Value const &value)
{
    static_assert(std::is_same_v<Char, char> || std::is_same_v<Char, wchar_t>,
                  "narrow and wide text only");
    if constexpr (std::is_same_v<Char, char>) {
        return text_of(value);
    } else {
        std::u16string const units = from_utf8(text_of(value));
        return std::wstring(units.begin(), units.end());
    }
}

} // namespace detail

/// Writes the text of a path: in UTF-8 to a narrow stream, unit for unit to a wide one. The
/// standard writes it in quotes and doubles each backslash.
template <typename Char, typename Native, typename Portable, typename Traits>
std::basic_ostream<Char> &operator<<(std::basic_ostream<Char> &out,
                                     basic_path<Native, Portable, Traits> const &path)
{
    return out << detail::text_in<Char>(path);
}

/// Writes the text of an entry's pathname, as that of a path.
template <typename Char, typename Entry, detail::if_entry<Entry> = 0>
std::basic_ostream<Char> &operator<<(std::basic_ostream<Char> &out, Entry const &entry)
{
    return out << detail::text_in<Char>(entry);
}

/// Writes type, permissions and attributes, size, and time of the last write.
///
///     file, 0666, archive, 1234 bytes, 2026-11-21 22:09:23 UTC
///     directory, 0666, 0 bytes, 2026-11-21 22:09:23 UTC
///     not found
template <typename Char>
std::basic_ostream<Char> &operator<<(std::basic_ostream<Char> &out, file_status const &status)
{
    return out << detail::text_in<Char>(status);
}

/// The same without permissions.
template <typename Char>
std::basic_ostream<Char> &operator<<(std::basic_ostream<Char> &out, file_status_light const &status)
{
    return out << detail::text_in<Char>(status);
}

/// Writes what `describe` returns.
template <typename Char>
std::basic_ostream<Char> &operator<<(std::basic_ostream<Char> &out,
                                     FsysExceptionBase const &failure)
{
    return out << detail::text_in<Char>(failure);
}

} // namespace fl::filesystem

#ifdef __cpp_lib_format

// With the options of a text: width, precision, fill. What is written is what goes to a stream.

namespace fl::filesystem::detail {

template <typename Value, typename Char>
struct standard_formatter : std::formatter<std::basic_string_view<Char>, Char>
{
    template <typename Context>
    auto format(Value const &value, Context &context) const
    {
        std::basic_string<Char> const text = text_in<Char>(value);
        return std::formatter<std::basic_string_view<Char>, Char>::format(text, context);
    }
};

} // namespace fl::filesystem::detail

template <typename Char>
struct std::formatter<fl::filesystem::upath, Char>
    : fl::filesystem::detail::standard_formatter<fl::filesystem::upath, Char>
{
};
template <typename Char>
struct std::formatter<fl::filesystem::directory_entry, Char>
    : fl::filesystem::detail::standard_formatter<fl::filesystem::directory_entry, Char>
{
};
template <typename Char>
struct std::formatter<fl::filesystem::file_status, Char>
    : fl::filesystem::detail::standard_formatter<fl::filesystem::file_status, Char>
{
};
template <typename Char>
struct std::formatter<fl::filesystem::file_status_light, Char>
    : fl::filesystem::detail::standard_formatter<fl::filesystem::file_status_light, Char>
{
};
template <typename Failure, typename Char>
requires std::is_base_of_v<fl::filesystem::FsysExceptionBase, Failure>
struct std::formatter<Failure, Char>
    : fl::filesystem::detail::standard_formatter<fl::filesystem::FsysExceptionBase, Char>
{
};

#endif

#ifdef FMT_VERSION

// The same for {fmt}. Each type by itself: {fmt} has templates of its own for what can be
// walked, as a path can, and for all exceptions.

namespace fl::filesystem::detail {

template <typename Value, typename Char>
struct fmt_formatter : fmt::formatter<fmt::basic_string_view<Char>, Char>
{
    template <typename Context>
    auto format(Value const &value, Context &context) const
    {
        std::basic_string<Char> const text = text_in<Char>(value);
        return fmt::formatter<fmt::basic_string_view<Char>, Char>::format(
            fmt::basic_string_view<Char>(text.data(), text.size()), context);
    }
};

} // namespace fl::filesystem::detail

#define FL_FILESYSTEM_FMT_FORMATTER(type, as)                                                      \
    template <>                                                                                    \
    struct fmt::formatter<fl::filesystem::type, char>                                              \
        : fl::filesystem::detail::fmt_formatter<fl::filesystem::as, char>                          \
    {                                                                                              \
    };                                                                                             \
    template <>                                                                                    \
    struct fmt::formatter<fl::filesystem::type, wchar_t>                                           \
        : fl::filesystem::detail::fmt_formatter<fl::filesystem::as, wchar_t>                       \
    {                                                                                              \
    };

FL_FILESYSTEM_FMT_FORMATTER(upath, upath)
FL_FILESYSTEM_FMT_FORMATTER(directory_entry, directory_entry)
FL_FILESYSTEM_FMT_FORMATTER(file_status, file_status)
FL_FILESYSTEM_FMT_FORMATTER(file_status_light, file_status_light)
FL_FILESYSTEM_FMT_FORMATTER(FsysExceptionBase, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(InvalidArgument, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(InvalidOperation, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(FileNameTooLarge, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(FileNameConversionFailure, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(CvtInvalidCharacter, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(AccessDenied, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(PathNotFound, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(NotDirectoryError, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(DirectoryNotEmpty, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(FileIsDirectory, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(FileExistsError, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(PathNameComparisonFailure, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(SystemError, FsysExceptionBase)
FL_FILESYSTEM_FMT_FORMATTER(TempEnvNotSpecified, FsysExceptionBase)

#undef FL_FILESYSTEM_FMT_FORMATTER

#endif

#endif
