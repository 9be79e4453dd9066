#include "flfs/process.hpp"

#include <unistd.h>

namespace flfs {

std::vector<std::string> process_arguments(int argc, char **argv)
{
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool has_terminal()
{
    return ::isatty(STDERR_FILENO) != 0;
}

// Bytes go through as they are, and terminals take UTF-8.
process_streams::process_streams() = default;
process_streams::~process_streams() = default;

} // namespace flfs
