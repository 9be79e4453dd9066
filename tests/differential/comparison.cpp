#include "differential/comparison.hpp"

#include <algorithm>
#include <stdexcept>

namespace differential {

namespace {

/// Lines that only one side has.
std::string only_in(std::vector<std::string> const &one, std::vector<std::string> const &other)
{
    std::string lines;
    for (std::string const &line : one) {
        if (std::find(other.begin(), other.end(), line) == other.end())
            lines += "\n      " + line;
    }
    return lines.empty() ? "nothing more" : "left behind:" + lines;
}

} // namespace

verdict compare(sequence const &steps, outcome const &ours, outcome const &theirs,
                unsigned int number)
{
    if (ours.answers.size() != steps.size() || theirs.answers.size() != steps.size())
        throw std::runtime_error("a side has not answered every step");
    verdict result;
    result.comparable = steps.size();
    for (std::size_t at = 0; at < steps.size(); ++at, ++result.compared) {
        situation const here{steps[at], ours.directories[at], ours.standing[at], number};
        auto const *const known = find_intended(here, ours.answers[at], theirs.answers[at]);
        if (known == nullptr && ours.answers[at] == theirs.answers[at])
            continue;
        if (known == nullptr) {
            result.first = disagreement{at, ours.answers[at], theirs.answers[at]};
            return result;
        }
        result.intended.push_back(known);
        if (known->effect == aftermath::differs) {
            ++result.compared;
            result.comparable = at + 1;
            return result;
        }
    }
    if (ours.tree != theirs.tree)
        result.first = disagreement{steps.size(), only_in(ours.tree, theirs.tree),
                                    only_in(theirs.tree, ours.tree)};
    return result;
}

} // namespace differential
