#ifndef FL_FILESYSTEM_TESTS_RELIABILITY_SAMPLING_HPP
#define FL_FILESYSTEM_TESTS_RELIABILITY_SAMPLING_HPP
// How much is run, and how much of what went wrong is printed. The environment says how much:
// what scripts/test runs is a share of what scripts/torture does.

#include "support/names.hpp"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <set>
#include <string>

namespace reliability {

/// The number in an environment variable.
inline long number_from(char const *variable, long otherwise)
{
    char const *const said = std::getenv(variable);
    return said == nullptr ? otherwise : std::max(1L, std::strtol(said, nullptr, 10));
}

/// Where every case would take too long, `FL_RELIABILITY_EVERY` has every nth of them run.
inline bool is_this_ones_turn()
{
    static long const every = number_from("FL_RELIABILITY_EVERY", 1);
    static long count = 0;
    return count++ % every == 0;
}

inline void print_some(std::set<std::string> const &mismatches)
{
    EXPECT_EQ(mismatches.size(), 0U);
    std::size_t most = 40;
    for (std::string const &line : mismatches) {
        if (most-- == 0)
            break;
        ADD_FAILURE() << line;
    }
}

struct disk_states
{
    test_support::lines before;
    test_support::lines finished;
};

inline bool holds(test_support::lines const &all, test_support::lines const &some)
{
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

/// Each name is as it was or as it is once all is done; nothing that neither begins nor ends
/// with is there, and nothing is gone that both have. All lines are sorted.
inline bool is_between(test_support::lines const &now, disk_states const &states)
{
    auto const &[before, finished] = states;
    test_support::lines either;
    std::set_union(before.begin(), before.end(), finished.begin(), finished.end(),
                   std::back_inserter(either));
    test_support::lines both;
    std::set_intersection(before.begin(), before.end(), finished.begin(), finished.end(),
                          std::back_inserter(both));
    return holds(either, now) && holds(now, both);
}

} // namespace reliability

#endif
