#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_json.hpp"
#include "flfs/text.hpp"

#include <array>
#include <cstdio>
#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;
using json = nlohmann::ordered_json;

namespace {

/// What came of one pathname: the space there, or the failure.
struct outcome
{
    std::u16string pathname; ///< as the user wrote it
    fs::space_info space;
    std::optional<failure> what_failed;
};

outcome ask(std::u16string const &pathname)
{
    outcome one{pathname, {}, {}};
    one.what_failed = failure_of([&one] { one.space = fs::space(fs::upath(one.pathname)); });
    return one;
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(outcome const &one)
{
    json object = {{"pathname", escaped_surrogates(one.pathname)},
                   {"capacity", nullptr},
                   {"free", nullptr},
                   {"available", nullptr},
                   {"failure", nullptr}};
    if (one.what_failed) {
        object["failure"] = flfs::to_json(*one.what_failed);
        return object;
    }
    object["capacity"] = one.space.capacity;
    object["free"] = one.space.free;
    object["available"] = one.space.available;
    return object;
}

/// "30.0 GiB": cut and not rounded, so that no more is promised than there is.
std::string readable(std::uintmax_t bytes)
{
    constexpr std::array<char const *, 7> units = {"bytes", "KiB", "MiB", "GiB",
                                                   "TiB",   "PiB", "EiB"};
    std::size_t unit = 0;
    std::uintmax_t tenths = 0;
    while (bytes >= 1024 && unit + 1 < units.size()) {
        tenths = bytes % 1024 * 10 / 1024;
        bytes /= 1024;
        ++unit;
    }
    std::string const number = std::to_string(bytes) + (unit ? '.' + std::to_string(tenths) : "");
    return number + ' ' + units[unit];
}

void print_line(std::ostream &out, char const *label, std::uintmax_t bytes)
{
    out << "    " << label << bytes << " bytes";
    if (bytes >= 1024)
        out << " (" << readable(bytes) << ')';
    out << '\n';
}

void print(std::ostream &out, outcome const &one)
{
    out << displayed_value(fs::upath(one.pathname).native()) << '\n';
    print_line(out, "capacity   ", one.space.capacity);
    print_line(out, "free       ", one.space.free);
    print_line(out, "available  ", one.space.available);
}

int report_space(session &session, std::vector<std::u16string> const &pathnames, bool as_json)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        outcome const one = ask(pathname);
        if (one.what_failed)
            exit_code = exit_failure;
        if (as_json)
            array.push_back(to_json(one));
        else if (one.what_failed)
            print_failure(session.err, *one.what_failed, pathname);
        else
            print(session.out, one);
    }
    if (as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

} // namespace

void add_df_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "df", "Show the space on the volume of a file or directory",
        "Available is what you may use: less than what is free where there are quotas.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "file or directory on the volume");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, as_json] {
        return report_space(session, pathnames_of(*paths), *as_json);
    });
}

} // namespace flfs
