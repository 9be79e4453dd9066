#include "flfs/tour/tour.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/failure_report.hpp"
#include "flfs/text.hpp"

#include <chrono>
#include <exception>
#include <ostream>
#include <thread>

namespace flfs::tour {

namespace fs = fl::filesystem;

namespace {

/// "AccessDenied naming reports\may.txt, code 5".
std::string told(failure const &what_failed, place const &where)
{
    std::string line = what_failed.identifier.substr(what_failed.identifier.rfind(':') + 1);
    if (!what_failed.pathname.empty())
        line += " naming " + told(what_failed.pathname, where);
    if (what_failed.code != 0)
        line += ", code " + std::to_string(what_failed.code);
    return line;
}

/// Each chapter is put together when it is its turn: it may look at the disk for it.
int run_chapters(session &session, place const &where)
{
    guide guide(session, where);
    guide.run(pathnames());
    guide.run(directories(where));
    guide.run(files());
    guide.run(copies());
    guide.run(shortcuts(where));
    guide.run(symbolic_links());
    guide.run(process(where));
    guide.run(removal());
    return guide.close();
}

/// Runs the chapters with `where` as current directory, and returns from there.
int run_inside(session &session, place const &where)
{
    std::u16string const former = fs::get_current_path();
    int exit_code = exit_failure;
    std::exception_ptr ended_by;
    fs::change_current_path(where.folder);
    try {
        exit_code = run_chapters(session, where);
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

int run_in_fresh_folder(session &session, std::u16string const &folder, bool keeps)
{
    fs::create_directories(folder);
    place const where{fs::canonical(folder)};
    session.out << "A tour of fl::filesystem in " << displayed_value(where.folder)
                << ",\nwhich is <folder> from here on, and the current directory. It is "
                << (keeps ? "kept" : "removed") << " at the end.\n";
    int const exit_code = run_inside(session, where);
    if (!keeps)
        remove_folder(where.folder);
    return exit_code;
}

} // namespace

void guide::run(chapter const &one)
{
    session_.out << '\n' << one.title << '\n' << std::string(one.title.size(), '-') << "\n\n";
    for (step const &next : one.steps)
        run(next);
}

void guide::run(step const &one)
{
    std::string const number = std::to_string(++steps_);
    session_.out << std::string(number.size() < 2 ? 1 : 0, ' ') << number << ". " << one.sentence
                 << '\n'
                 << "        " << one.call << '\n';
    std::string const outcome = outcome_of(one);
    session_.out << "        = " << outcome << '\n';
    if (outcome == one.expected)
        return;
    session_.out << "        OTHERWISE THAN EXPECTED: " << one.expected << '\n';
    unexpected_.push_back(steps_);
}

std::string guide::outcome_of(step const &one) const
{
    std::string outcome;
    try {
        if (auto const what_failed = failure_of([&] { outcome = one.run(where_); }))
            return told(*what_failed, where_);
    } catch (std::exception const &exception) { // of the tour's own looking around
        return exception.what();
    }
    return outcome;
}

int guide::close()
{
    session_.out << '\n';
    if (unexpected_.empty()) {
        session_.out << steps_ << " steps, all as expected\n";
        return exit_success;
    }
    session_.out << steps_ << " steps, otherwise than expected:";
    for (int const number : unexpected_)
        session_.out << ' ' << number;
    session_.out << '\n';
    return exit_failure;
}

int run_tour(session &session, std::u16string const &folder, bool keeps)
{
    int exit_code = exit_failure;
    auto const what_failed =
        failure_of([&] { exit_code = run_in_fresh_folder(session, folder, keeps); });
    if (!what_failed)
        return exit_code;
    print_failure(session.err, *what_failed, {folder});
    return exit_failure;
}

} // namespace flfs::tour
