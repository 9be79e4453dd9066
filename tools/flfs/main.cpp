#include "flfs/commands.hpp"
#include "flfs/process.hpp"
#include "flfs/run.hpp"

#include <iostream>

int main(int argc, char **argv)
{
    flfs::process_streams const streams;
    int const exit_code = flfs::run(flfs::process_arguments(argc, argv), std::cout, std::cerr);
    // a full disk behind a redirection must not look like success
    if (!std::cout.flush()) {
        std::cerr << "flfs: The output couldn't be written.\n";
        return flfs::exit_failure;
    }
    return exit_code;
}
