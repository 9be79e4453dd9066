// Plays the kit's probes on the Windows that it runs on, and prints for each what it saw:
// `windows_probe`. With `--lengths` only those about lengths, for the program whose manifest asks
// for long pathnames. A claim that doesn't hold is a finding and no failure: the program ends with
// 0 once all were tried.

#include "kit/library_verbs.hpp"
#include "kit/playing.hpp"
#include "kit/probe.hpp"

#include <exception>
#include <iostream>
#include <string>

namespace {

using kit::pathnames;
using kit::probe;

struct count
{
    int agree = 0, differ = 0, untried = 0;
};

std::string obstacle(pathnames which)
{
    bool const long_ones = test_support::takes_long_pathnames();
    if (which == pathnames::long_ones && !long_ones)
        return "the system grants no long pathnames: see LongPathsEnabled above";
    if (which == pathnames::short_ones && long_ones)
        return "the program takes long pathnames";
    return {};
}

void look(probe const &row, contract::facts::verb_table const &verbs, count &seen)
{
    kit::played told;
    told.obstacle = obstacle(row.holds_for);
    if (told.obstacle.empty())
        told = kit::play(row.script, verbs);
    bool const tried = told.obstacle.empty();
    ++(tried ? told.agrees ? seen.agree : seen.differ : seen.untried);
    std::cout << (tried ? told.agrees ? "agrees   " : "DIFFERS  " : "untried  ") << row.subject
              << ": " << row.claim << "\n";
    if (!tried)
        std::cout << "         " << told.obstacle << "\n";
    if (tried && !told.agrees)
        std::cout << "  told   " << row.script << "\n";
    if (tried)
        std::cout << "  seen   " << told.seen << "\n";
    std::cout.flush(); // a crash in the next one shall not take this along
}

template <typename Choice>
void look_at_all(std::span<probe const> rows, Choice is_meant)
{
    contract::facts::verb_table verbs = kit::library_verbs();
    verbs.merge(kit::system_verbs());
    count seen;
    for (probe const &row : rows) {
        if (is_meant(row))
            look(row, verbs, seen);
    }
    std::cout << seen.agree << " agree, " << seen.differ << " differ, " << seen.untried
              << " can't be tried here\n\n";
}

bool is_about_long_ones(probe const &row)
{
    return row.holds_for == pathnames::long_ones;
}

} // namespace

int main(int count, char **arguments)
{
    try {
        if (count > 1 && std::string(arguments[1]) == "--lengths") {
            std::cout << "## Long pathnames allowed by the manifest\n\n";
            look_at_all(kit::sights(), is_about_long_ones);
            return 0;
        }
        std::cout << "## What only Windows can show\n\n";
        look_at_all(kit::sights(), [](probe const &row) { return !is_about_long_ones(row); });
        std::cout << "## Open rows of docs/simulation.md\n\n";
        look_at_all(kit::open_rows(), [](probe const &) { return true; });
        return 0;
    } catch (std::exception const &failed) {
        std::cout << "windows_probe failed: " << failed.what() << "\n";
        return 1;
    }
}
