#include "flfs/commands.hpp"

#include <fl/filesystem/queries.hpp>

#include "flfs/command.hpp"
#include "flfs/status_text.hpp"

#include <chrono>

// The commands that tell and set the time of the last write, to the last digit.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

/// The time in a text such as "2024-02-29T12:00:00.25Z", in UTC; what is left out at its end is
/// zero, but for the day. Nothing if it is no such text, or no time.
std::optional<fs::file_time_type> time_in(std::string text)
{
    constexpr std::string_view pattern = "0000-00-00T00:00:00.0000000";
    if (text.ends_with('Z'))
        text.pop_back();
    std::string shape = text;
    for (char &one : shape)
        if (one >= '1' && one <= '9')
            one = '0';
    std::size_t const size = text.size();
    bool const is_whole = size == 10 || size == 16 || size == 19 || size > 20;
    if (!is_whole || !pattern.starts_with(shape))
        return std::nullopt;
    text += pattern.substr(size);
    auto const number = [&text](std::size_t at, std::size_t digits) {
        return std::stoi(text.substr(at, digits));
    };
    std::chrono::year_month_day const date(std::chrono::year(number(0, 4)),
                                           std::chrono::month(static_cast<unsigned>(number(5, 2))),
                                           std::chrono::day(static_cast<unsigned>(number(8, 2))));
    if (!date.ok() || number(11, 2) > 23 || number(14, 2) > 59 || number(17, 2) > 59)
        return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(number(11, 2)) +
           std::chrono::minutes(number(14, 2)) + std::chrono::seconds(number(17, 2)) +
           fs::file_time_type::duration(number(20, 7));
}

std::string complaint_about_time(std::string const &word)
{
    return time_in(word)
               ? ""
               : (word.empty() ? "(empty)" : word) + " is no time such as 2024-02-29T12:00:00Z";
}

} // namespace

void add_time_command(CLI::App &app, session &session)
{
    command time(app, session, "time", "Show when it was last written to, to the last digit",
                 "In UTC, and as fine as the disk keeps it. Links are followed.");
    option const paths = time.words("PATH", "file or directory to ask about");
    time.answers(each(paths), {{"written"}, [](arguments const &about) {
                                   auto const written =
                                       iso_time(fs::last_write_time(about.front()));
                                   return value_of(about.front(), "written", written, written);
                               }});
}

void add_touch_command(CLI::App &app, session &session)
{
    command touch(
        app, session, "touch", "Set the time of the last write",
        "To the present, unless it is said. A TIME is in UTC, as `flfs time` shows it, and\n"
        "may end earlier: 2024-02-29T12:00 or 2024-02-29. Links are followed, read-only\n"
        "files are changed, too, and what isn't there isn't made.");
    option const paths = touch.words("PATH", "file or directory to change");
    option const time = touch.value("--time", "TIME", "Set this time", complaint_about_time);
    option const like = touch.value("--like", "FILE", "Set the time that this has");
    exclude(time, like);
    auto const make = [time, like](arguments const &names) {
        auto const now =
            std::chrono::floor<fs::file_time_type::duration>(std::chrono::system_clock::now());
        if (time.is_given())
            fs::last_write_time(names.front(), time_in(time.word()).value());
        else
            fs::last_write_time(names.front(),
                                like.is_given() ? fs::last_write_time(like.pathname()) : now);
        return "changed";
    };
    touch.changes(each(paths), make);
}

} // namespace flfs
