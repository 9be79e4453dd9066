#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_COMPARISON_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_COMPARISON_HPP
// Whether two outcomes of one sequence agree, and where they don't.

#include "differential/executor.hpp"
#include "differential/intended.hpp"

#include <optional>
#include <string>
#include <vector>

namespace differential {

struct disagreement
{
    std::size_t step = 0; ///< one behind the last if only the trees differ
    std::string ours;
    std::string theirs;
};

struct verdict
{
    /// How many steps agreed, or differed as intended.
    std::size_t compared = 0;
    /// A step from which on the two sides are not comparable, or the number of steps.
    std::size_t comparable = 0;
    std::vector<intended_difference const *> intended; ///< in the order of their steps
    std::optional<disagreement> first;
};

/// `number` is the number of the sequence's folder.
verdict compare(sequence const &steps, outcome const &ours, outcome const &theirs,
                unsigned int number);

} // namespace differential

#endif
