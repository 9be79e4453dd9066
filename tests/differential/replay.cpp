// Runs sequences from the standard input in fresh folders and writes what came of
// them, until the input ends. Built for both sides; wire.hpp has the lines.

#include "differential/wire.hpp"

#include <exception>
#include <iostream>

int main()
{
    try {
        differential::numbered_sequence one;
        while (differential::read_sequence(std::cin, one))
            differential::write_outcome(std::cout,
                                        differential::run_sequence(one.steps, one.number));
        return 0;
    } catch (std::exception const &failure) {
        std::cerr << "differential_replay: " << failure.what() << '\n';
        return 2;
    }
}
