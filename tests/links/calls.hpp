#ifndef FL_FILESYSTEM_TESTS_LINKS_CALLS_HPP
#define FL_FILESYSTEM_TESTS_LINKS_CALLS_HPP
// The calls that a simulated machine was asked for, with all of their arguments.

#include "support/failure.hpp"

#include <simulation/machine.hpp>

#include <cstdio>
#include <string>
#include <vector>

namespace test_support {

/// One line for each call: its name, its text and then, where there are any, its
/// numbers: `CreateFileW(C:\a) access 8 share 7 disposition 3 flags 2200000`, in
/// hexadecimal.
inline std::vector<std::string> calls_with_arguments(simulation::simulated_machine const &machine)
{
    auto const number = [](char const *name, DWORD value) {
        char text[40] = {};
        std::snprintf(text, sizeof text, " %s %X", name, static_cast<unsigned int>(value));
        return std::string(text);
    };
    std::vector<std::string> lines;
    for (auto const &entry : machine.journal()) {
        std::string line = entry.function + "(" + printable(entry.text) + ")";
        if (entry.function == "CreateFileW")
            line += number("access", entry.access) + number("share", entry.share) +
                    number("disposition", entry.disposition);
        if (entry.flags != 0)
            line += number("flags", entry.flags);
        lines.push_back(line);
    }
    return lines;
}

} // namespace test_support

#endif
