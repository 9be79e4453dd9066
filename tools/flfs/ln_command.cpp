#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command.hpp"

#include <CLI/CLI.hpp>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

unsigned int type_for(option const &to_file, option const &to_directory)
{
    if (to_directory.is_given())
        return fs::file_status::directory_file;
    return to_file.is_given() ? fs::file_status::regular_file : fs::file_status::file_type_auto;
}

/// Without a pathname, what is refused as an argument may be either, TARGET first, and
/// everything else is about the link, for nobody looks whether TARGET exists.
void advise_on_making(failure &what_failed, arguments &blamed)
{
    bool const may_be_either = !what_failed.id || what_failed.id == fs::fsys_excp_invalid_argument;
    blamed = may_be_either ? arguments{blamed.at(1), blamed.at(0)} : arguments{blamed.at(0)};
    advise_on_links(what_failed);
}

} // namespace

void add_ln_command(CLI::App &app, session &session)
{
    command ln(
        app, session, "ln", "Make a symbolic link or a shortcut",
        "Windows keeps symbolic links to files and to directories apart. Without --file and\n"
        "--directory, TARGET tells which it is, looked at from the current directory. The\n"
        "link holds it as it is written, and Windows then reads it from the link's\n"
        "directory. A shortcut holds TARGET as an absolute pathname, its name ends in .lnk,\n"
        "and a file of that name is replaced. Hard links are made by cp --hard-links.");
    option const target = ln.word("TARGET", "where it leads, which need not exist");
    option const link = ln.word("LINK", "link to make");
    option const symbolic = ln.flag("-s,--symbolic", "Make a symbolic link");
    option const shortcut = ln.flag("--shortcut", "Make a shortcut file instead");
    option const to_file = ln.flag("--file", "With -s: a link to a file, whatever TARGET is");
    option const to_directory =
        ln.flag("--directory", "With -s: a link to a directory, whatever TARGET is");
    exclude(shortcut, symbolic);
    exclude(to_file, to_directory);
    to_file.raw().needs(&symbolic.raw());
    to_directory.raw().needs(&symbolic.raw());
    ln.check([symbolic, shortcut] {
        return symbolic.is_given() || shortcut.is_given()
                   ? ""
                   : "Say -s for a symbolic link or --shortcut for a shortcut. Hard links are "
                     "made by `flfs cp --hard-links`";
    });
    auto const make = [shortcut, to_file, to_directory](arguments const &names) {
        if (shortcut.is_given())
            fs::create_shortcut(names.at(1), names.at(0));
        else
            fs::create_symlink(names.at(1), names.at(0), type_for(to_file, to_directory));
        return "made";
    };
    ln.changes(together({link, target}), {make, advise_on_making});
}

} // namespace flfs
