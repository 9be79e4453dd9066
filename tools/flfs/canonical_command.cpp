#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/answers.hpp"
#include "flfs/command_line.hpp"

#include <memory>

namespace flfs {

void add_canonical_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "canonical", "Show where a pathname ends, without links, . and ..",
        "Shortcut files are followed, too, and nothing has a long prefix. What isn't there is\n"
        "a failure. With --weakly the end of PATH may be missing; where nothing of PATH is\n"
        "there it stays as it is, a relative one relative.\n"
        "`flfs resolve` shows each link on the way.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to resolve");
    CLI::Option *base = add_base(*command);
    auto const weakly = std::make_shared<bool>(false);
    exclude(*add_flag(*command, "--weakly", *weakly, "Resolve as much as is there"), *base);
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, base, weakly, as_json] {
        auto const answer = [weakly, below = base_of(*base)](std::u16string const &pathname) {
            return *weakly ? fl::filesystem::weakly_canonical(pathname)
                           : fl::filesystem::canonical(pathname, below);
        };
        return report_pathnames(session, pathnames_of(*paths), *as_json, answer);
    });
}

} // namespace flfs
