#include "flfs/commands.hpp"

#include "flfs/command_line.hpp"
#include "flfs/status_report.hpp"

#include <memory>

namespace flfs {

void add_stat_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "stat",
        "Show type, permissions, attributes, times and size of what a pathname leads to",
        "Times are in UTC. Exits 1 if a PATH isn't there, or leads to nothing: that is an\n"
        "answer and no failure, so it is told with the others.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to ask about");
    auto const options = std::make_shared<status_options>();
    std::vector<CLI::Option *> const queries = {
        add_flag(*command, "--links", options->links, "Ask about PATH itself if it is a link"),
        add_flag(*command, "--target", options->target,
                 "Ask about what PATH leads to; it must be a link"),
        add_flag(*command, "--express", options->express,
                 "Ask for type, time of the last write and size only")};
    for (CLI::Option *one : queries)
        for (CLI::Option *other : queries)
            if (one < other)
                exclude(*one, *other);
    add_flag(*command, "--json", options->as_json,
             "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, options] {
        return report_status(session, pathnames_of(*paths), *options);
    });
}

} // namespace flfs
