#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_SHRINKING_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_SHRINKING_HPP
// From a sequence that shows a disagreement to a shorter one that does, too.

#include "differential/step.hpp"

#include <algorithm>

namespace differential {

namespace detail {

inline sequence without(sequence const &steps, std::size_t begin, std::size_t count)
{
    auto const index = [](std::size_t value) { return static_cast<std::ptrdiff_t>(value); };
    sequence rest(steps.begin(), steps.begin() + index(begin));
    std::size_t const end = std::min(begin + count, steps.size());
    rest.insert(rest.end(), steps.begin() + index(end), steps.end());
    return rest;
}

} // namespace detail

/// Leaves out what it can, first in large pieces, in the end step by step. Of what it
/// returns, no single step can be left out. `disagrees(steps)` is true at first.
template <typename Disagrees>
sequence shrunk(sequence steps, Disagrees disagrees)
{
    std::size_t piece = std::max<std::size_t>(1, steps.size() / 2);
    for (;;) {
        bool is_shorter = false;
        for (std::size_t begin = 0; begin < steps.size();) {
            sequence rest = detail::without(steps, begin, piece);
            if (disagrees(rest)) {
                steps = std::move(rest);
                is_shorter = true;
            } else {
                begin += piece;
            }
        }
        if (piece == 1 && !is_shorter)
            return steps;
        piece = std::max<std::size_t>(1, piece / 2);
    }
}

} // namespace differential

#endif
