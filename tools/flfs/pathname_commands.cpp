#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command.hpp"
#include "flfs/text.hpp"

// The commands that make one pathname of another, or strings for the system.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

answer form(arguments const &about)
{
    using namespace fl::filesystem::detail;
    std::u16string const native = fl::filesystem::upath(about.front()).native();
    std::wstring const wide = to_filesystem(native);
    bool const is_clean = windows::is_path_clean_bridge(wide, wide.size());
    std::u16string const plain = from_filesystem(make_access_form(wide)); // never walked through
    std::u16string const resolved = from_filesystem(make_native_access_form(native));
    std::u16string const of_text =
        from_filesystem(make_native_access_form_with_cleanup(about.front()));
    answer one;
    one.values = {{"native", to_json(native)},
                  {"is_clean", is_clean},
                  {"access_form", to_json(plain)},
                  {"native_access_form", to_json(resolved)},
                  {"with_cleanup", to_json(of_text)}};
    one.attempt([&] {
        one.values["bridge"] =
            to_json(from_filesystem(windows::make_native_access_form_bridge(native)));
    });
    one.text = displayed_value(about.front()) + '\n' +
               facts(14)
                   .add(one.values, {{"clean", "is_clean"},
                                     {"access form", "access_form"},
                                     {"resolved", "native_access_form"},
                                     {"with cleanup", "with_cleanup"},
                                     {"bridge", "bridge"}})
                   .text();
    return one;
}

} // namespace

void add_absolute_command(CLI::App &app, session &session)
{
    command absolute(app, session, "absolute",
                     "Show the whole pathname of a relative one; no disk is looked at",
                     ". and .. are dropped by text, and links stay: see canonical.");
    option const paths = absolute.words("PATH", "pathname to complete");
    option const base = absolute.base();
    absolute.answers(each_as_written(paths), result_of([base](std::u16string const &pathname) {
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
    canonical.answers(each_as_written(paths),
                      result_of([base, weakly](std::u16string const &pathname) {
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
    question asked = result_of([tolerant](std::u16string const &pathname) {
        return fs::get_unc_path(pathname, tolerant.is_given());
    });
    asked.advise = [](failure &what_failed, arguments &) {
        if (what_failed.code == 0) // the network tells no more
            advise(what_failed, fs::fsys_excp_system_error,
                   "It isn't on a drive that stands for a share. `net use` lists these; "
                   "--tolerant shows the pathname.");
    };
    unc.answers(each(paths), std::move(asked));
}

void add_forms_command(CLI::App &app, session &session)
{
    command forms(app, session, "forms", "Show the strings that go to the system for a pathname",
                  R"(clean         whether a long prefix could go ahead of it as it is
access form   with a long prefix where the length needs it, and nothing else
resolved      absolute, without . and .., with a long prefix where it needs one, as most
              operations hand it over; as it is where that can't be done
with cleanup  the same of the text, brought to native form on the way
bridge        the same of the native form, insisting: else it is a failure)");
    option const paths = forms.words("PATH", "pathname to form");
    forms.answers(each_as_written(paths), {{"native", "is_clean", "access_form",
                                            "native_access_form", "with_cleanup", "bridge"},
                                           form});
}

} // namespace flfs
