#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/argument_guard.hpp"
#include "flfs/changes.hpp"
#include "flfs/command_line.hpp"
#include "flfs/permission_words.hpp"

#include <CLI/CLI.hpp>

#include <memory>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

/// The message about a `word` that is none, or none.
std::string complaint_about(std::string const &word)
{
    std::string const plain = unprotected(word);
    if (permission_word(plain))
        return "";
    return (plain.empty() ? "(empty)" : plain) +
           " is no sign +, - or = with letters out of rwxashi";
}

void advise(failure &what_failed)
{
    if (what_failed.id == fs::fsys_excp_access_denied)
        what_failed.sentence = "You have no right to change its attributes. Ask who owns it.";
}

int change_permissions(session &session, std::vector<std::u16string> const &pathnames,
                       unsigned int word)
{
    auto const make = [word](std::u16string const &pathname) {
        fs::permissions(pathname, word);
        return "changed";
    };
    return make_changes(session, pathnames, {make, advise});
}

} // namespace

void add_chmod_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "chmod", "Change whether names are read-only, hidden and so on",
        "WORD is a sign, + to set, - to take away, = to set and take away all others,\n"
        "and letters. On Windows they are attributes:\n"
        "  w  not read-only, for everybody: there are no owner, group and others\n"
        "  a  archive: changed since the last backup\n"
        "  s  system\n"
        "  h  hidden\n"
        "  i  not indexed: its content is left out of searches\n"
        "  r  nothing: there is no such attribute\n"
        "  x  nothing: the name tells what can be run\n"
        "= alone makes it read-only and takes all four others away. A link is followed by\n"
        "one hop.");
    command->set_help_flag("--help", "Print this help and exit"); // `-h` is a word
    CLI::Option *word =
        add_word(*command, "WORD", "what to change: +w, -w, =rw, +h, ...", complaint_about);
    CLI::Option *paths = add_pathnames(*command, "PATH", "file or directory to change");
    auto const links = std::make_shared<bool>(false);
    add_flag(*command, "--links", *links, "Change PATH itself if it is a link");
    set_disk_action(*command, session, disk_use::change, [&session, word, paths, links] {
        unsigned int const perms = permission_word(word_of(*word)).value();
        unsigned int const whose = *links ? fs::file_status::perms_symlink : 0;
        return change_permissions(session, pathnames_of(*paths), perms | whose);
    });
}

} // namespace flfs
