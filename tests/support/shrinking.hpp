#ifndef FL_FILESYSTEM_TESTS_SUPPORT_SHRINKING_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_SHRINKING_HPP
// From a sequence that shows a disagreement to a shorter one that does, too.

#include <algorithm>
#include <cstddef>
#include <utility>

namespace test_support {

namespace detail {

template <typename Sequence>
Sequence without(Sequence const &steps, std::size_t begin, std::size_t count)
{
    auto const index = [](std::size_t value) { return static_cast<std::ptrdiff_t>(value); };
    Sequence rest(steps.begin(), steps.begin() + index(begin));
    std::size_t const end = std::min(begin + count, steps.size());
    rest.insert(rest.end(), steps.begin() + index(end), steps.end());
    return rest;
}

} // namespace detail

/// Leaves out what it can, first in large pieces, in the end step by step. Of what it
/// returns, no single step can be left out. `disagrees(steps)` is true at first.
template <typename Sequence, typename Disagrees>
Sequence shrunk(Sequence steps, Disagrees disagrees)
{
    std::size_t piece = std::max<std::size_t>(1, steps.size() / 2);
    for (;;) {
        bool is_shorter = false;
        for (std::size_t begin = 0; begin < steps.size();) {
            Sequence rest = detail::without(steps, begin, piece);
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

} // namespace test_support

#endif
