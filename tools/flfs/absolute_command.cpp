#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/answers.hpp"
#include "flfs/command_line.hpp"

#include <memory>

namespace flfs {

void add_absolute_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "absolute", "Show the whole pathname of a relative one; no disk is looked at",
        ". and .. are dropped by text, and links stay: see canonical.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to complete");
    CLI::Option *base = add_base(*command);
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, base, as_json] {
        return report_pathnames(session, pathnames_of(*paths), *as_json,
                                [below = base_of(*base)](std::u16string const &pathname) {
                                    return fl::filesystem::absolute(pathname, below);
                                });
    });
}

} // namespace flfs
