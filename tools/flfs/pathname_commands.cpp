#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command.hpp"
#include "flfs/text.hpp"

// The commands that make one pathname of another.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

question result_of(std::function<std::u16string(std::u16string const &)> const &make)
{
    return {{"result"}, [make](arguments const &about) {
                std::u16string const result = make(about.front());
                return answer{displayed_value(result) + '\n', {{"result", to_json(result)}}};
            }};
}

} // namespace

void add_absolute_command(CLI::App &app, session &session)
{
    command absolute(app, session, "absolute",
                     "Show the whole pathname of a relative one; no disk is looked at",
                     ". and .. are dropped by text, and links stay: see canonical.");
    option const paths = absolute.words("PATH", "pathname to complete");
    option const base = absolute.base();
    absolute.answers(each(paths), result_of([base](std::u16string const &pathname) {
                         return fs::absolute(pathname, base.pathname());
                     }));
}

void add_canonical_command(CLI::App &app, session &session)
{
    command canonical(
        app, session, "canonical", "Show where a pathname ends, without links, . and ..",
        "Shortcut files are followed, too, and nothing has a long prefix. What isn't there is\n"
        "a failure. With --weakly the end of PATH may be missing; where nothing of PATH is\n"
        "there it stays as it is, a relative one relative.\n"
        "`flfs resolve` shows each link on the way.");
    option const paths = canonical.words("PATH", "pathname to resolve");
    option const base = canonical.base();
    option const weakly = canonical.flag("--weakly", "Resolve as much as is there");
    exclude(weakly, base);
    canonical.answers(each(paths), result_of([base, weakly](std::u16string const &pathname) {
                          return weakly.is_given() ? fs::weakly_canonical(pathname)
                                                   : fs::canonical(pathname, base.pathname());
                      }));
}

void add_relative_command(CLI::App &app, session &session)
{
    command relative(
        app, session, "relative", "Show how to come from one directory to a pathname",
        "Links are followed in both. (empty) says that there is no way, as from one drive to\n"
        "another.");
    option const path = relative.word("PATH", "where to come to");
    option const base = relative.word("BASE", "directory to come from");
    relative.answers(each(path), result_of([base](std::u16string const &pathname) {
                         return fs::relative(pathname, base.pathname());
                     }),
                     "Print a JSON array with one object");
}

void add_unc_command(CLI::App &app, session &session)
{
    command unc(
        app, session, "unc", "Show the name by which other machines know a file on a network drive",
        "What isn't on a drive that stands for a share is a failure, \\\\server\\share included,\n"
        "unless it is tolerated.");
    option const paths = unc.words("PATH", "pathname on a network drive");
    option const tolerant =
        unc.flag("--tolerant", "Show the absolute pathname of what isn't on one");
    unc.answers(each(paths), result_of([tolerant](std::u16string const &pathname) {
                    return fs::get_unc_path(pathname, tolerant.is_given());
                }));
}

} // namespace flfs
