#include "flfs/process.hpp"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace flfs {

std::vector<std::string> process_arguments(int argc, char **argv)
{
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool is_terminal(stream which)
{
    return ::isatty(which == stream::out ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

bool takes_colours(stream which)
{
    // One thread alone: NOLINTNEXTLINE(concurrency-mt-unsafe)
    char const *const refused = std::getenv("NO_COLOR");
    char const *const kind = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): the same
    return is_terminal(which) && (refused == nullptr || *refused == '\0') && kind != nullptr &&
           std::string_view(kind) != "dumb";
}

// Bytes go through as they are, and terminals take UTF-8.
process_streams::process_streams() = default;
process_streams::~process_streams() = default;

} // namespace flfs
