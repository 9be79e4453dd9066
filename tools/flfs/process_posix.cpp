#include "flfs/process.hpp"

namespace flfs {

std::vector<std::string> process_arguments(int argc, char **argv)
{
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

// Bytes go through as they are, and terminals take UTF-8.
process_streams::process_streams() = default;
process_streams::~process_streams() = default;

} // namespace flfs
