#include "flfs/commands.hpp"

#include <fl/filesystem/path.hpp>

#include "flfs/command.hpp"
#include "flfs/process_state.hpp"
#include "flfs/tour/tour.hpp"

#include <chrono>
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

int run_tour_in(session &session, std::optional<std::u16string> const &folder, bool keeps)
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
    command tour(
        app, session, "tour",
        "Run through all that the library does, on real files, telling and checking",
        "Each step says what it does, calls the library, shows what comes out, and compares\n"
        "it with what must. Exits 0 if all is as expected, else 1, and tells the steps. The\n"
        "tour makes its folder and removes it at the end.");
    option const folder =
        tour.optional_word("FOLDER", "a name that isn't there yet; if left out, a temporary one");
    option const keeps = tour.flag("--keep", "Leave the folder behind");
    tour.on_disk(disk_use::change, [&session, folder, keeps] {
        return run_tour_in(session, folder.is_given() ? folder.pathname() : fresh_folder(),
                           keeps.is_given());
    });
}

} // namespace flfs
