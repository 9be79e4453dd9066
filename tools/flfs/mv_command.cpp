#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_report.hpp"
#include "flfs/text.hpp"

#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

int move_name(session &session, std::u16string const &from, std::u16string const &to)
{
    if (auto const what_failed = failure_of([&] { fs::rename(from, to); })) {
        print_failure(session.err, *what_failed, {from, to});
        return exit_failure;
    }
    session.out << "moved " << displayed_value(fs::upath(from).native()) << " -> "
                << displayed_value(fs::upath(to).native()) << '\n';
    return exit_success;
}

} // namespace

void add_mv_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "mv", "Give a file or directory another name or place",
        "TO is the whole new pathname, also where a directory of that name is there. A\n"
        "file at TO is replaced. Files can go to another volume, directories can't. A\n"
        "link is renamed itself.");
    CLI::Option *from = refuse_stops_and_blanks(add_word(*command, "FROM", "what to rename"));
    CLI::Option *to = refuse_stops_and_blanks(add_word(*command, "TO", "its new pathname"));
    set_disk_action(*command, session, disk_use::change, [&session, from, to] {
        return move_name(session, pathnames_of(*from).front(), pathnames_of(*to).front());
    });
}

} // namespace flfs
