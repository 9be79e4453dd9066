#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/answers.hpp"
#include "flfs/command_line.hpp"

#include <memory>

namespace flfs {

void add_relative_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "relative", "Show how to come from one directory to a pathname",
        "Links are followed in both. (empty) says that there is no way, as from one drive to\n"
        "another.");
    CLI::Option *path = add_word(*command, "PATH", "where to come to");
    CLI::Option *base = add_word(*command, "BASE", "directory to come from");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print a JSON array with one object");
    set_disk_action(*command, session, disk_use::read, [&session, path, base, as_json] {
        return report_pathnames(
            session, pathnames_of(*path), *as_json,
            [from = pathnames_of(*base).front()](std::u16string const &pathname) {
                return fl::filesystem::relative(pathname, from);
            });
    });
}

} // namespace flfs
