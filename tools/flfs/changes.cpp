#include "flfs/changes.hpp"

#include <fl/filesystem/path.hpp>

#include "flfs/text.hpp"

#include <ostream>

namespace flfs {

int make_changes(session &session, std::vector<std::u16string> const &pathnames, change const &what)
{
    int exit_code = exit_success;
    for (std::u16string const &pathname : pathnames) {
        char const *happened = "";
        std::optional<failure> what_failed = failure_of([&] { happened = what.make(pathname); });
        if (what_failed) {
            what.advise(*what_failed);
            print_failure(session.err, *what_failed, pathname);
            exit_code = exit_failure;
            continue;
        }
        session.out << happened << ' ' << displayed_value(fl::filesystem::upath(pathname).native())
                    << '\n';
    }
    return exit_code;
}

} // namespace flfs
