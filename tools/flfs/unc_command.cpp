#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/answers.hpp"
#include "flfs/command_line.hpp"

#include <memory>

namespace flfs {

void add_unc_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "unc", "Show the name by which other machines know a file on a network drive",
        "What isn't on a drive that stands for a share is a failure, \\\\server\\share included,\n"
        "unless it is tolerated.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname on a network drive");
    auto const tolerant = std::make_shared<bool>(false);
    add_flag(*command, "--tolerant", *tolerant, "Show the absolute pathname of what isn't on one");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, tolerant, as_json] {
        return report_pathnames(session, pathnames_of(*paths), *as_json,
                                [tolerant](std::u16string const &pathname) {
                                    return fl::filesystem::get_unc_path(pathname, *tolerant);
                                });
    });
}

} // namespace flfs
