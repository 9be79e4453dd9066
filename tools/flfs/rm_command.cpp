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

void advise_on_read_only(failure &what_failed)
{
    if (what_failed.id == fs::fsys_excp_access_denied)
        what_failed.sentence =
            "It is read-only, which `flfs chmod +w` changes, or you have no right "
            "to remove it.";
}

enum class removal
{
    name,
    tree,
    file,
    directory
};

void remove_one(std::u16string const &pathname, removal how)
{
    switch (how) {
    case removal::name:
        return fs::remove(pathname);
    case removal::tree:
        return fs::remove_all(pathname);
    case removal::file:
        return fs::remove_file(pathname);
    case removal::directory:
        return fs::remove_directory(pathname);
    }
}

int remove_names(session &session, std::vector<std::u16string> const &pathnames, removal how)
{
    auto const make = [how](std::u16string const &pathname) {
        remove_one(pathname, how);
        return happened_to(pathname);
    };
    bool const minds_read_only = how == removal::tree || how == removal::file;
    return make_changes(session, pathnames, {make, minds_read_only ? advise_on_read_only : advise});
}

removal removal_as(std::string const &kind)
{
    return kind == "file" ? removal::file : removal::directory;
}

} // namespace

void add_rm_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "rm", "Remove files, links and empty directories",
        "Nothing is asked back, and nothing goes to a bin. A link is removed itself, and\n"
        "never what it leads to.\n"
        "With -r, a read-only file ends the removal of its PATH, and what was removed by\n"
        "then stays removed. Without it, read-only files are removed, too.");
    CLI::Option *paths = refuse_stops_and_blanks(add_pathnames(*command, "PATH", "name to remove"));
    auto const recursive = std::make_shared<bool>(false);
    CLI::Option *tree = add_flag(*command, "-r,--recursive", *recursive,
                                 "Remove directories with all that is in them");
    auto const kind = std::make_shared<std::string>();
    command->add_option("--as", *kind, "Remove nothing else: file (not if read-only) or directory")
        ->check(CLI::IsMember({"file", "directory"}), "")
        ->excludes(tree)
        ->option_text("KIND");
    tree->option_text(" ");
    set_disk_action(*command, session, disk_use::change, [&session, paths, recursive, kind] {
        removal const how = *recursive ? removal::tree : removal::name;
        return remove_names(session, pathnames_of(*paths), kind->empty() ? how : removal_as(*kind));
    });
}

} // namespace flfs
