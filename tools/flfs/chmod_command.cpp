#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/argument_guard.hpp"
#include "flfs/command.hpp"
#include "flfs/permission_words.hpp"

#include <CLI/CLI.hpp>

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

} // namespace

void add_chmod_command(CLI::App &app, session &session)
{
    command chmod(
        app, session, "chmod", "Change whether names are read-only, hidden and so on",
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
    chmod.raw().set_help_flag("--help", "Print this help and exit"); // `-h` is a word
    option const word = chmod.word("WORD", "what to change: +w, -w, =rw, +h, ...", complaint_about);
    option const paths = chmod.words("PATH", "file or directory to change");
    option const links = chmod.flag("--links", "Change PATH itself if it is a link");
    auto const make = [word, links](arguments const &names) {
        unsigned int const whose = links.is_given() ? fs::file_status::perms_symlink : 0;
        fs::permissions(names.front(), permission_word(word.word()).value() | whose);
        return "changed";
    };
    chmod.changes(each(paths), {make, [](failure &what_failed, arguments &) {
                                    advise(what_failed, fs::fsys_excp_access_denied,
                                           "You have no right to change its attributes. Ask who "
                                           "owns it.");
                                }});
}

} // namespace flfs
