#include "flfs/status_text.hpp"

#include <fl/filesystem/text.hpp>

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/date_time/posix_time/time_formatters.hpp>

#include <chrono>

namespace flfs {

using fl::filesystem::file_status;

namespace {

/// 0 for what is no letter. Owner, group and others are one here: Windows has no three
/// sets of permissions.
unsigned int bits_of(char letter)
{
    if (letter == 'r')
        return file_status::owner_read | file_status::group_read | file_status::others_read;
    if (letter == 'w')
        return file_status::owner_write | file_status::group_write | file_status::others_write;
    if (letter == 'x')
        return file_status::owner_exec | file_status::group_exec | file_status::others_exec;
    for (attribute_flag const &flag : attribute_flags)
        if (flag.letter == letter)
            return flag.bit;
    return 0;
}

} // namespace

// what status queries answer
term type_of(file_status const &status)
{
    switch (status.get_type()) {
    case file_status::regular_file:
        return {"file", "regular_file"};
    case file_status::directory_file:
        return {"directory", "directory_file"};
    case file_status::symlink_file:
        return {"symbolic link", "symlink_file"};
    case file_status::reparse_file:
        return {"junction or volume mount point", "reparse_file"};
    case file_status::file_not_found:
        return {"not found", "file_not_found"};
    default:
        return {"unknown", "file_type_unknown"};
    }
}

std::string octal_permissions(unsigned int perms)
{
    constexpr unsigned int permission_bits = 07777; // the flags stand above them
    std::string digits;
    fl::filesystem::detail::append_number(digits, perms & permission_bits, 8, 4);
    return digits;
}

std::string permission_letters(unsigned int perms)
{
    std::string letters = "rwxrwxrwx";
    unsigned int bit = file_status::owner_read;
    for (char &letter : letters) {
        if ((perms & bit) == 0)
            letter = '-';
        bit >>= 1;
    }
    return letters;
}

std::optional<unsigned int> permission_word(std::string_view text)
{
    if (text.empty() || (text != "=" && text.size() == 1))
        return std::nullopt;
    unsigned int word = text.front() == '+' ? file_status::perms_add : 0;
    if (text.front() == '-')
        word = file_status::perms_remove;
    else if (text.front() != '+' && text.front() != '=')
        return std::nullopt;
    for (char const letter : text.substr(1)) {
        unsigned int const bits = bits_of(letter);
        if (bits == 0)
            return std::nullopt;
        word |= bits;
    }
    return word;
}

std::optional<std::string> iso_time(boost::posix_time::ptime const &time)
{
    static boost::posix_time::ptime const last_day(boost::gregorian::date(9999, 12, 31));
    if (time.is_special() || time >= last_day + boost::posix_time::hours(24))
        return std::nullopt;
    return boost::posix_time::to_iso_extended_string(time) + 'Z';
}

std::string iso_time(fl::filesystem::file_time_type time)
{
    auto const day = std::chrono::floor<std::chrono::days>(time);
    std::chrono::year_month_day const date(day);
    std::chrono::hh_mm_ss const clock(time - day);
    std::string text;
    auto const append = [&text](auto number, std::size_t digits, char end) {
        fl::filesystem::detail::append_number(text, static_cast<std::uint64_t>(number), 10, digits);
        text += end;
    };
    append(static_cast<int>(date.year()), 4, '-');
    append(static_cast<unsigned>(date.month()), 2, '-');
    append(static_cast<unsigned>(date.day()), 2, 'T');
    append(clock.hours().count(), 2, ':');
    append(clock.minutes().count(), 2, ':');
    append(clock.seconds().count(), 2, '.');
    append(clock.subseconds().count(), 7, 'Z');
    return text;
}

} // namespace flfs
