#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command.hpp"
#include "flfs/process_state.hpp"
#include "flfs/text.hpp"

namespace flfs {

namespace fs = fl::filesystem;

namespace {

struct place
{
    std::u16string directory;
    std::optional<std::u16string> variable; ///< the value of `=X:`, if it is set
};

/// The drive whose variable goes with `pathname`, `C:`, or nothing. A long prefix hides it.
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

json values_of(place const &one)
{
    return {{"directory", to_json(one.directory)}, {"variable", to_json(one.variable)}};
}

std::string shown(std::optional<std::u16string> const &variable)
{
    return variable ? displayed_value(*variable) : "(not set)";
}

answer change_to(arguments const &about)
{
    std::u16string const drive = drive_of(about.front());
    place const before = place_now(drive);
    fs::change_current_path(about.front());
    place const after = place_now(drive);
    answer one;
    one.text = "directory  " + displayed_value(before.directory) + " -> " +
               displayed_value(after.directory) + '\n';
    one.values = {{"before", values_of(before)}, {"after", values_of(after)}};
    if (!drive.empty()) {
        one.text += displayed(u'=' + drive) + "        " + shown(before.variable) + " -> " +
                    shown(after.variable) + '\n';
        one.values["name_of_variable"] = to_json(u'=' + drive);
    }
    return one;
}

} // namespace

void add_cd_command(CLI::App &app, session &session)
{
    command cd(
        app, session, "cd",
        "Change the current directory of flfs itself, and show what has changed",
        "The directory before and after, and the environment variable of the drive, by which\n"
        "pathnames such as C:name go. It is set from PATH as seen from the new directory, so\n"
        "give a whole pathname to have it right. A server has none, and a long prefix sets\n"
        "none. When flfs ends, your shell is where it was.");
    option const path = cd.word("PATH", "directory to go to; empty: to stay");
    cd.answers(together({path}), {{"name_of_variable", "before", "after"}, change_to},
               "Print a JSON object");
}

} // namespace flfs
