#include "flfs/commands.hpp"
#include "flfs/process.hpp"
#include "flfs/run.hpp"

#include <iostream>

int main(int argc, char **argv)
{
    flfs::process_streams const streams;
    flfs::session session{std::cout, std::cerr};
    session.has_colours = flfs::takes_colours(flfs::stream::out);
    session.warns_in_colours = flfs::takes_colours(flfs::stream::err);
    if (flfs::is_terminal(flfs::stream::err))
        session.progress_pause = std::chrono::milliseconds(100);
    int const exit_code = flfs::run(flfs::process_arguments(argc, argv), session);
    // a full disk behind a redirection must not look like success
    if (!std::cout.flush()) {
        std::cerr << "flfs: The output couldn't be written.\n";
        return flfs::exit_failure;
    }
    return exit_code;
}
