#ifndef FL_FILESYSTEM_TESTS_TOOLS_RUN_FLFS_HPP
#define FL_FILESYSTEM_TESTS_TOOLS_RUN_FLFS_HPP
// Runs flfs in this process and keeps all that a user would see of it.

#include "flfs/commands.hpp"
#include "flfs/run.hpp"

#include <fl/filesystem/utf8.hpp>

#include <nlohmann/json.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace test_support {

struct flfs_result
{
    int exit_code;
    std::string out;
    std::string err;
};

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

/// What is said of a name that isn't there, and then of an empty one.
inline std::string told_of_missing_and_empty(std::string const &label, std::string const &missing)
{
    return "flfs: fl:filesystem:PathNotFound\n  " + label + ": " + missing +
           "\n"
           "  code:     0\n"
           "  The name, or a directory on the way to it, doesn't exist. Check the spelling.\n"
           "flfs: fl:filesystem:InvalidArgument\n"
           "  argument: (empty)\n"
           "  code:     0\n"
           "  Empty Path not permitted.\n";
}

/// The one object of `flfs inspect --json -- text`. Throws on JSON that isn't well
/// formed.
inline nlohmann::ordered_json inspect_as_json(std::string const &text)
{
    return nlohmann::ordered_json::parse(run_flfs({"inspect", "--json", "--", text}).out).at(0);
}

} // namespace test_support

#endif
