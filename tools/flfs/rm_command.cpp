#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/changes.hpp"
#include "flfs/command_line.hpp"

#include <CLI/CLI.hpp>

#include <memory>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

char const *happened_to(std::u16string const &pathname)
{
    return pathname.empty() ? "passed over" : "removed"; // as the library does
}

void advise(failure &what_failed)
{
    if (what_failed.id == fs::fsys_excp_directory_not_empty)
        what_failed.sentence = "The directory isn't empty. Use -r to remove what is in it, too.";
    if (what_failed.id == fs::fsys_excp_access_denied)
        what_failed.sentence = "You have no right to remove it. Check the permissions.";
}

void advise_recursively(failure &what_failed)
{
    if (what_failed.id == fs::fsys_excp_access_denied)
        what_failed.sentence =
            "It is read-only, which `flfs chmod +w` changes, or you have no right "
            "to remove it.";
}

int remove_names(session &session, std::vector<std::u16string> const &pathnames)
{
    auto const make = [](std::u16string const &pathname) {
        fs::remove(pathname);
        return happened_to(pathname);
    };
    return make_changes(session, pathnames, {make, advise});
}

int remove_trees(session &session, std::vector<std::u16string> const &pathnames)
{
    auto const make = [](std::u16string const &pathname) {
        fs::remove_all(pathname);
        return happened_to(pathname);
    };
    return make_changes(session, pathnames, {make, advise_recursively});
}

} // namespace

void add_rm_command(CLI::App &app, session &session)
{
    CLI::App *command = app.add_subcommand("rm", "Remove files, links and empty directories");
    command->footer(
        "Nothing is asked back, and nothing goes to a bin. A link is removed itself, and\n"
        "never what it leads to.\n"
        "With -r, a read-only file ends the removal of its PATH, and what was removed by\n"
        "then stays removed. Without it, read-only files are removed, too.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "name to remove");
    auto const recursive = std::make_shared<bool>(false);
    command->add_flag("-r,--recursive", *recursive, "Remove directories with all that is in them");
    set_disk_action(*command, session, disk_use::change, [&session, paths, recursive] {
        std::vector<std::u16string> const pathnames = pathnames_of(*paths);
        return *recursive ? remove_trees(session, pathnames) : remove_names(session, pathnames);
    });
}

} // namespace flfs
