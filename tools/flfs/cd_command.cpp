#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_json.hpp"
#include "flfs/process_state.hpp"
#include "flfs/text.hpp"

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;
using json = nlohmann::ordered_json;

namespace {

struct place
{
    std::u16string directory;
    std::optional<std::u16string> variable; ///< the value of `=X:`, if it is set
};

struct outcome
{
    std::u16string pathname; ///< as the user wrote it
    std::u16string drive;    ///< `C:`, or empty if it is on none
    place before, after;
    std::optional<failure> what_failed;
};

/// The drive whose variable goes with `pathname`. A long prefix hides it.
std::u16string drive_of(std::u16string const &pathname)
{
    std::u16string const full = fs::absolute(pathname);
    return full.size() > 1 && full[1] == u':' ? full.substr(0, 2) : std::u16string();
}

place place_now(std::u16string const &drive)
{
    place now{fs::get_current_path(), {}};
    if (!drive.empty())
        now.variable = environment_variable(u'=' + drive);
    return now;
}

outcome change_to(std::u16string const &pathname)
{
    outcome one{pathname, {}, {}, {}, {}};
    one.what_failed = failure_of([&one] {
        one.drive = drive_of(one.pathname);
        one.before = place_now(one.drive);
        fs::change_current_path(one.pathname);
        one.after = place_now(one.drive);
    });
    return one;
}

json to_json(place const &one)
{
    return {{"directory", escaped_surrogates(one.directory)},
            {"variable", one.variable ? json(escaped_surrogates(*one.variable)) : json(nullptr)}};
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(outcome const &one)
{
    json object = {{"pathname", escaped_surrogates(one.pathname)},
                   {"name_of_variable", nullptr},
                   {"before", nullptr},
                   {"after", nullptr},
                   {"failure", nullptr}};
    if (one.what_failed) {
        object["failure"] = flfs::to_json(*one.what_failed);
        return object;
    }
    if (!one.drive.empty())
        object["name_of_variable"] = escaped_surrogates(u'=' + one.drive);
    object["before"] = to_json(one.before);
    object["after"] = to_json(one.after);
    return object;
}

std::string shown(std::optional<std::u16string> const &variable)
{
    return variable ? displayed_value(*variable) : "(not set)";
}

void print(std::ostream &out, outcome const &one)
{
    out << "directory  " << displayed_value(one.before.directory) << " -> "
        << displayed_value(one.after.directory) << '\n';
    if (!one.drive.empty())
        out << displayed(u'=' + one.drive) << "        " << shown(one.before.variable) << " -> "
            << shown(one.after.variable) << '\n';
}

int report_change(session &session, std::u16string const &pathname, bool as_json)
{
    outcome const one = change_to(pathname);
    if (as_json)
        session.out << to_json(one).dump(2) << '\n';
    else if (one.what_failed)
        print_failure(session.err, *one.what_failed, pathname);
    else
        print(session.out, one);
    return one.what_failed ? exit_failure : exit_success;
}

} // namespace

void add_cd_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "cd", "Change the current directory of flfs itself, and show what has changed",
        "The directory before and after, and the environment variable of the drive, by which\n"
        "pathnames such as C:name go. It is set from PATH as seen from the new directory, so\n"
        "give a whole pathname to have it right. A server has none, and a long prefix sets\n"
        "none. When flfs ends, your shell is where it was.");
    CLI::Option *path = add_word(*command, "PATH", "directory to go to; empty: to stay");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print a JSON object");
    set_disk_action(*command, session, disk_use::read, [&session, path, as_json] {
        return report_change(session, pathnames_of(*path).front(), *as_json);
    });
}

} // namespace flfs
