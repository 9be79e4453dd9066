#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command.hpp"
#include "flfs/process_state.hpp"
#include "flfs/report.hpp"
#include "flfs/tour/step.hpp"

#include <chrono>
#include <exception>
#include <ostream>
#include <sstream>
#include <thread>

// One narrated run through all that the library does, which checks itself.

namespace flfs {

namespace fs = fl::filesystem;

namespace tour {

std::string told(std::u16string text, std::u16string const &folder)
{
    // no name holds a `<`, so that it can't be taken for one
    constexpr char16_t const *stand_in = u"<folder>";
    for (std::size_t at = 0; (at = text.find(folder, at)) != text.npos;)
        text.replace(at, folder.size(), stand_in);
    return displayed_value(text);
}

namespace {

/// "AccessDenied naming reports\may.txt, code 5".
std::string told_failure(failure const &what_failed, std::u16string const &folder)
{
    std::string line = what_failed.identifier.substr(what_failed.identifier.rfind(':') + 1);
    if (!what_failed.pathname.empty())
        line += " naming " + told(what_failed.pathname, folder);
    if (what_failed.code != 0)
        line += ", code " + std::to_string(what_failed.code);
    return line;
}

std::string outcome_of(step const &one, std::u16string const &folder)
{
    std::string outcome;
    try {
        if (auto const what_failed = failure_of([&] { outcome = one.run(folder); }))
            return told_failure(*what_failed, folder);
    } catch (std::exception const &exception) { // of the tour's own looking around
        return exception.what();
    }
    return outcome;
}

/// Tells and checks a step; returns whether it came out as expected.
bool run_step(std::ostream &out, step const &one, std::string const &number,
              std::u16string const &folder, json &told_steps)
{
    out << (number.size() < 2 ? " " : "") << number << ". " << one.sentence << "\n        "
        << one.call << '\n';
    std::string const outcome = outcome_of(one, folder);
    told_steps.push_back({{"does", one.sentence},
                          {"call", one.call},
                          {"outcome", outcome},
                          {"expected", one.expected}});
    out << "        = " << outcome << '\n';
    if (outcome != one.expected)
        out << "        OTHERWISE THAN EXPECTED: " << one.expected << '\n';
    return outcome == one.expected;
}

int run_chapters(std::ostream &out, std::u16string const &folder, json &told_chapters)
{
    int steps = 0;
    std::string unexpected;
    for (auto const chapter_in_turn : chapters()) {
        chapter const one = chapter_in_turn();
        out << '\n' << one.title << '\n' << std::string(one.title.size(), '-') << "\n\n";
        json &told_steps = told_chapters.emplace_back(
            json{{"title", one.title}, {"steps", json::array()}})["steps"];
        for (step const &next : one.steps) {
            std::string const number = std::to_string(++steps);
            if (!run_step(out, next, number, folder, told_steps))
                unexpected += ' ' + number;
        }
    }
    out << '\n'
        << steps
        << (unexpected.empty() ? " steps, all as expected" : " steps, otherwise than expected:")
        << unexpected << '\n';
    return unexpected.empty() ? exit_success : exit_failure;
}

/// Runs the chapters with `folder` as current directory, and returns from there.
int run_inside(std::ostream &out, std::u16string const &folder, json &told_chapters)
{
    std::u16string const former = fs::get_current_path();
    int exit_code = exit_failure;
    std::exception_ptr ended_by;
    fs::change_current_path(folder);
    try {
        exit_code = run_chapters(out, folder, told_chapters);
    } catch (...) { // the directory can't be removed while we stand in it
        ended_by = std::current_exception();
    }
    fs::change_current_path(former);
    if (ended_by)
        std::rethrow_exception(ended_by);
    return exit_code;
}

/// Waits for others who stand in the folder: indexers and virus scanners, and a program that
/// Wine starts for each new shortcut, in our current directory.
void remove_folder(std::u16string const &folder)
{
    constexpr unsigned int sharing_violation = 32; // ERROR_SHARING_VIOLATION
    constexpr auto pause = std::chrono::milliseconds(100);
    for (int tries_left = 50;; --tries_left) {
        try {
            return fs::remove_all(folder);
        } catch (fs::SystemError const &error) {
            if (error.get_error_code() != sharing_violation || tries_left == 0)
                throw;
        }
        std::this_thread::sleep_for(pause);
    }
}

int run_in_fresh_folder(std::ostream &out, std::u16string const &wanted, bool keeps, json &all)
{
    fs::create_directories(wanted);
    std::u16string const folder = fs::canonical(wanted);
    all["folder"] = to_json(folder);
    out << "A tour of fl::filesystem in " << displayed_value(folder)
        << ",\nwhich is <folder> from here on, and the current directory. It is "
        << (keeps ? "kept" : "removed") << " at the end.\n";
    int const exit_code = run_inside(out, folder, all["chapters"]);
    if (!keeps)
        remove_folder(folder);
    return exit_code;
}

/// A folder for temporary files that isn't there yet, or nothing if nobody says where to.
std::optional<std::u16string> fresh_folder()
{
    std::optional<std::u16string> temporary = environment_variable(u"TEMP");
    if (!temporary)
        temporary = environment_variable(u"TMP");
    if (!temporary)
        return std::nullopt;
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    std::string const number = std::to_string(now / std::chrono::microseconds(1));
    std::u16string const name = u"flfs-tour-" + std::u16string(number.begin(), number.end());
    return (fs::upath(*temporary) / fs::upath(name)).native();
}

/// Returns the exit code: 1 if a step came out otherwise than expected, or if there is no way to
/// begin or to clean up.
int run(session &session, std::optional<std::u16string> const &folder, bool keeps, bool as_json)
{
    if (!folder) {
        session.err << "flfs: No temporary folder is known. Set the environment variable TEMP, or "
                       "say FOLDER.\n";
        return exit_failure;
    }
    int exit_code = exit_failure;
    json all = {{"folder", to_json(*folder)}, {"chapters", json::array()}, {"failure", nullptr}};
    std::ostringstream silenced;
    std::ostream &out = as_json ? silenced : session.out;
    auto const what_failed =
        failure_of([&] { exit_code = run_in_fresh_folder(out, *folder, keeps, all); });
    if (what_failed && as_json)
        all["failure"] = to_json(*what_failed);
    else if (what_failed)
        print_failure(session.err, *what_failed, {*folder}, session.warns_in_colours);
    if (as_json)
        print_json(session.out, all);
    return what_failed ? exit_failure : exit_code;
}

} // namespace

} // namespace tour

void add_tour_command(CLI::App &app, session &session)
{
    command tour(
        app, session, "tour",
        "Run through all that the library does, on real files, telling and checking",
        "Each step says what it does, calls the library, shows what comes out, and compares\n"
        "it with what must. Exits 0 if all is as expected, else 1, and tells the steps. The\n"
        "tour makes its folder and removes it at the end.");
    option const folder =
        tour.optional_word("FOLDER", "a name that isn't there yet; if left out, a temporary one");
    option const keeps = tour.flag("--keep", "Leave the folder behind");
    option const as_json = tour.flag("--json", "Print a JSON object");
    tour.on_disk(disk_use::change, [&session, folder, keeps, as_json] {
        return tour::run(session, folder.is_given() ? folder.pathname() : tour::fresh_folder(),
                         keeps.is_given(), as_json.is_given());
    });
}

} // namespace flfs
