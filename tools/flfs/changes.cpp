#include "flfs/changes.hpp"

#include <ostream>

namespace flfs {

namespace {

std::string shown(arguments const &names)
{
    std::string line;
    for (std::u16string const &name : names)
        line += (line.empty() ? "" : " -> ") + shown_native(name);
    return line;
}

} // namespace

int make_changes(session &session, std::vector<arguments> const &rounds, change const &what)
{
    int exit_code = exit_success;
    for (arguments const &names : rounds) {
        std::string happened;
        std::optional<failure> what_failed = failure_of([&] { happened = what.make(names); });
        if (!what_failed) {
            session.out << happened << ' ' << shown(names) << '\n';
            continue;
        }
        arguments blamed = names;
        what.advise(*what_failed, blamed);
        print_failure(session.err, *what_failed, blamed);
        exit_code = exit_failure;
        if (what.stops_at_failure)
            break;
    }
    return exit_code;
}

void advise(failure &what_failed, fl::filesystem::fsys_excp_id id, char const *sentence)
{
    if (what_failed.id == id)
        what_failed.sentence = sentence;
}

void advise_on_links(failure &what_failed)
{
    constexpr unsigned int privilege_not_held = 1314; // ERROR_PRIVILEGE_NOT_HELD
    if (what_failed.code == privilege_not_held)
        what_failed.sentence = "You have no right to make symbolic links. Turn on Windows' "
                               "developer mode, or be an administrator.";
}

} // namespace flfs
