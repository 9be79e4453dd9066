#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/answers.hpp"
#include "flfs/command_line.hpp"

#include <memory>

namespace flfs {

void add_exists_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "exists", "Tell whether a pathname leads to something",
        "The system follows the links. Exits 0 if all answers are yes, and 1 after a \"no\" or a\n"
        "failure.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to ask about");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, as_json] {
        return report_truths(
            session, pathnames_of(*paths), *as_json, "exists",
            [](std::u16string const &pathname) { return fl::filesystem::exists(pathname); });
    });
}

} // namespace flfs
