#include "flfs/commands.hpp"

#include "flfs/command_line.hpp"
#include "flfs/resolution_report.hpp"
#include "flfs/system.hpp"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>

namespace flfs {

void add_resolve_command(CLI::App &app, session &session)
{
    CLI::App *command =
        app.add_subcommand("resolve", "Show each link that a pathname leads through, and its end");
    command->footer("A link is shown as LINK -> TEXT (KIND) => what the walk goes on with. A link\n"
                    "on a network that names a drive is kept as it is.\n"
                    "A .. in PATH is dropped by text first, together with the name ahead of it.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to walk through");
    auto const as_json = std::make_shared<bool>(false);
    command->add_flag("--json", *as_json, "Print one JSON array with an object for each PATH");
    command->callback([&session, paths, as_json] {
        if (system_is_simulated) {
            session.err << "flfs: resolve works on Windows only: there is no Windows file system "
                           "to read here.\n";
            session.exit_code = exit_usage;
            return;
        }
        session.exit_code = report_resolutions(session, pathnames_of(*paths), *as_json);
    });
}

} // namespace flfs
