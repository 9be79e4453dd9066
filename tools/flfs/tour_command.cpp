#include "flfs/commands.hpp"

#include <fl/filesystem/path.hpp>

#include "flfs/command_line.hpp"
#include "flfs/process_state.hpp"
#include "flfs/tour/tour.hpp"

#include <chrono>
#include <memory>
#include <ostream>

namespace flfs {

namespace {

/// A folder for temporary files that isn't there yet, or nothing if nobody says where to.
std::optional<std::u16string> fresh_folder()
{
    std::optional<std::u16string> temporary = environment_variable(u"TEMP");
    if (!temporary)
        temporary = environment_variable(u"TMP");
    if (!temporary)
        return std::nullopt;
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    std::string const number = std::to_string(now / std::chrono::microseconds(1));
    std::u16string const name = u"flfs-tour-" + std::u16string(number.begin(), number.end());
    return (fl::filesystem::upath(*temporary) / fl::filesystem::upath(name)).native();
}

int run_command(session &session, std::optional<std::u16string> const &folder, bool keeps)
{
    if (folder)
        return tour::run_tour(session, *folder, keeps);
    session.err << "flfs: No temporary folder is known. Set the environment variable TEMP, or say "
                   "FOLDER.\n";
    return exit_failure;
}

} // namespace

void add_tour_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "tour", "Run through all that the library does, on real files, telling and checking",
        "Each step says what it does, calls the library, shows what comes out, and compares\n"
        "it with what must. Exits 0 if all is as expected, else 1, and tells the steps. The\n"
        "tour makes its folder and removes it at the end.");
    CLI::Option *folder = add_optional_word(
        *command, "FOLDER", "a name that isn't there yet; if left out, a temporary one");
    auto const keeps = std::make_shared<bool>(false);
    add_flag(*command, "--keep", *keeps, "Leave the folder behind");
    set_disk_action(*command, session, disk_use::change, [&session, folder, keeps] {
        return run_command(
            session, is_given(*folder) ? pathnames_of(*folder).front() : fresh_folder(), *keeps);
    });
}

} // namespace flfs
