#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_report.hpp"
#include "flfs/link_advice.hpp"
#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

struct link_options
{
    bool symbolic = false;
    bool shortcut = false;
    bool to_file = false;
    bool to_directory = false;
};

unsigned int type_for(link_options const &options)
{
    if (options.to_directory)
        return fs::file_status::directory_file;
    return options.to_file ? fs::file_status::regular_file : fs::file_status::file_type_auto;
}

/// What an exception without a pathname is about: what is refused as an argument may be
/// either, and everything else is about the link, for nobody looks whether TARGET exists.
std::vector<std::u16string> to_blame(failure const &what_failed, std::u16string const &target,
                                     std::u16string const &link)
{
    bool const may_be_either = !what_failed.id || what_failed.id == fs::fsys_excp_invalid_argument;
    return may_be_either ? std::vector{target, link} : std::vector{link};
}

int make_link(session &session, std::u16string const &target, std::u16string const &link,
              link_options const &options)
{
    std::optional<failure> what_failed = failure_of([&] {
        if (options.shortcut)
            fs::create_shortcut(target, link);
        else
            fs::create_symlink(target, link, type_for(options));
    });
    if (what_failed) {
        advise_on_links(*what_failed);
        print_failure(session.err, *what_failed, to_blame(*what_failed, target, link));
        return exit_failure;
    }
    session.out << "made " << displayed_value(fs::upath(link).native()) << " -> "
                << displayed_value(fs::upath(target).native()) << '\n';
    return exit_success;
}

} // namespace

void add_ln_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "ln", "Make a symbolic link or a shortcut",
        "Windows keeps symbolic links to files and to directories apart. Without --file and\n"
        "--directory, TARGET tells which it is, looked at from the current directory. The\n"
        "link holds it as it is written, and Windows then reads it from the link's\n"
        "directory. A shortcut holds TARGET as an absolute pathname, its name ends in .lnk,\n"
        "and a file of that name is replaced. Hard links are made by cp --hard-links.");
    CLI::Option *target = add_word(*command, "TARGET", "where it leads, which need not exist");
    CLI::Option *link = add_word(*command, "LINK", "link to make");
    auto const options = std::make_shared<link_options>();
    CLI::Option *symbolic =
        add_flag(*command, "-s,--symbolic", options->symbolic, "Make a symbolic link");
    CLI::Option *shortcut =
        add_flag(*command, "--shortcut", options->shortcut, "Make a shortcut file instead");
    CLI::Option *to_file = add_flag(*command, "--file", options->to_file,
                                    "With -s: a link to a file, whatever TARGET is");
    CLI::Option *to_directory = add_flag(*command, "--directory", options->to_directory,
                                         "With -s: a link to a directory, whatever TARGET is");
    shortcut->excludes(symbolic);
    to_file->needs(symbolic)->excludes(to_directory);
    to_directory->needs(symbolic);
    for (CLI::Option *option : {symbolic, shortcut, to_file, to_directory})
        option->option_text(" "); // the descriptions tell what excludes what
    command->parse_complete_callback([options] {
        if (!options->symbolic && !options->shortcut)
            throw CLI::ValidationError("Say -s for a symbolic link or --shortcut for a shortcut. "
                                       "Hard links are made by `flfs cp --hard-links`");
    });
    set_disk_action(*command, session, disk_use::change, [&session, target, link, options] {
        return make_link(session, pathnames_of(*target).front(), pathnames_of(*link).front(),
                         *options);
    });
}

} // namespace flfs
