#include "flfs/commands.hpp"

#include "flfs/command_line.hpp"
#include "flfs/link_report.hpp"

#include <memory>

namespace flfs {

void add_readlink_command(CLI::App &app, session &session)
{
    CLI::App *command =
        add_command(app, "readlink",
                    "Show what kind of link a name is, and the text in it; nothing is followed",
                    "Symbolic links, junctions, volume mount points, other reparse points, and\n"
                    "shortcut files, whose names end in .lnk.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "link or shortcut to read");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, as_json] {
        return report_links(session, pathnames_of(*paths), *as_json);
    });
}

} // namespace flfs
