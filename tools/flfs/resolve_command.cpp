#include "flfs/commands.hpp"

#include "flfs/command_line.hpp"
#include "flfs/resolution_report.hpp"

#include <memory>

namespace flfs {

void add_resolve_command(CLI::App &app, session &session)
{
    CLI::App *command =
        add_command(app, "resolve", "Show each link that a pathname leads through, and its end",
                    "A link is shown as LINK -> TEXT (KIND) => what the walk goes on with. A link\n"
                    "on a network that names a drive is kept as it is.\n"
                    "A .. in PATH is dropped by text first, together with the name ahead of it.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to walk through");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, as_json] {
        return report_resolutions(session, pathnames_of(*paths), *as_json);
    });
}

} // namespace flfs
