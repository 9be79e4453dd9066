#ifndef FL_FILESYSTEM_TESTS_TOOLS_RUN_FLFS_HPP
#define FL_FILESYSTEM_TESTS_TOOLS_RUN_FLFS_HPP
// Runs flfs in this process and keeps all that a user would see of it.

// Includes what nearly every test of it does.

#include "flfs/commands.hpp"
#include "flfs/run.hpp"
#include "support/workspace.hpp"

#include <fl/filesystem/utf8.hpp>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#if FLFS_SYSTEM_IS_SIMULATED
#include <simulation/machine.hpp>
#endif

#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

using nlohmann::ordered_json;

struct flfs_result
{
    int exit_code;
    std::string out;
    std::string err;

    bool operator==(flfs_result const &) const = default;
};

inline void PrintTo(flfs_result const &result, std::ostream *stream)
{
    *stream << "exit code " << result.exit_code << "\n" << result.out;
    if (!result.err.empty())
        *stream << "told as an error:\n" << result.err;
}

/// The result of a command that does what it is asked for.
inline flfs_result printed(std::string out)
{
    return {0, std::move(out), ""};
}

/// The result of one that can do nothing of it.
inline flfs_result refused(int exit_code, std::string err)
{
    return {exit_code, "", std::move(err)};
}

inline flfs_result run_flfs(std::vector<std::string> const &arguments)
{
    std::ostringstream out;
    std::ostringstream err;
    int const exit_code = flfs::run(arguments, out, err);
    return {exit_code, out.str(), err.str()};
}

/// The same for a command on a disk, also where that is the simulated machine's.
inline flfs_result run_flfs_on_disk(std::vector<std::string> const &arguments)
{
    std::ostringstream out;
    std::ostringstream err;
    flfs::session session{out, err};
    session.has_disk = true;
    int const exit_code = flfs::run(arguments, session);
    return {exit_code, out.str(), err.str()};
}

/// A text as a user writes it.
inline std::string utf8(std::u16string const &text)
{
    return fl::filesystem::to_utf8(text);
}

/// The same for a command that reports on pathnames.
inline flfs_result run_flfs_on_disk(char const *command,
                                    std::vector<std::u16string> const &pathnames, bool as_json)
{
    std::vector<std::string> arguments = {command};
    if (as_json)
        arguments.push_back("--json");
    arguments.push_back("--");
    for (std::u16string const &pathname : pathnames)
        arguments.push_back(utf8(pathname));
    return run_flfs_on_disk(arguments);
}

/// What flfs tells of one failure of the library; `blame` is what stands ahead of the pathname.
inline std::string report_of(std::string const &identifier, std::string const &blame,
                             std::vector<std::string> const &pathnames, std::string const &advice,
                             int code = 0)
{
    std::string text = "flfs: fl:filesystem:" + identifier + "\n  " + blame + ": " + pathnames[0];
    if (pathnames.size() == 2)
        text += "\n  and:      " + pathnames[1];
    return text + "\n  code:     " + std::to_string(code) + "\n  " + advice + "\n";
}

inline constexpr char not_there[] =
    "The name, or a directory on the way to it, doesn't exist. Check the spelling.";

/// What is said of a name that isn't there, and then of an empty one.
inline std::string told_of_missing_and_empty(std::string const &label, std::string const &missing)
{
    return report_of("PathNotFound", label, {missing}, not_there) +
           report_of("InvalidArgument", "argument", {"(empty)"}, "Empty Path not permitted.");
}

/// The one object of `flfs inspect --json -- text`. Throws on JSON that isn't well
/// formed.
inline ordered_json inspect_as_json(std::string const &text)
{
    return ordered_json::parse(run_flfs({"inspect", "--json", "--", text}).out).at(0);
}

} // namespace test_support

#endif
