#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_report.hpp"
#include "flfs/text.hpp"

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

/// What the failure means for somebody who makes directories.
failure describe_for_mkdir(fs::FsysExceptionBase const &exception, bool parents)
{
    failure described = describe(exception);
    if (described.id == fs::fsys_excp_path_not_found)
        described.sentence =
            parents ? "A drive or share on the way to it doesn't exist. Check the spelling."
                    : "The directory above it doesn't exist. Use --parents to make it, too.";
    if (described.id == fs::fsys_excp_access_denied)
        described.sentence = "You have no right to make it. Check the permissions above it.";
    return described;
}

/// Stops at the first failure: what follows may have been meant to stand in it.
int make_directories(session &session, std::vector<std::u16string> const &pathnames, bool parents)
{
    for (std::u16string const &pathname : pathnames) {
        try {
            if (parents)
                fs::create_directories(pathname);
            else
                fs::create_directory(pathname);
        } catch (fs::FsysExceptionBase const &exception) {
            print_failure(session.err, describe_for_mkdir(exception, parents), pathname);
            return exit_failure;
        }
        session.out << "made " << displayed_value(fs::upath(pathname).native()) << '\n';
    }
    return exit_success;
}

} // namespace

void add_mkdir_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "mkdir", "Make directories, long pathnames included",
        "The PATHs are made in order, up to the first failure. A directory that is there\n"
        "already is a failure, too.");
    CLI::Option *paths = add_pathnames(*command, "PATH", "directory to make");
    auto const parents = std::make_shared<bool>(false);
    add_flag(*command, "-p,--parents", *parents, "Make missing directories above PATH, too");
    set_disk_action(*command, session, disk_use::change, [&session, paths, parents] {
        return make_directories(session, pathnames_of(*paths), *parents);
    });
}

} // namespace flfs
