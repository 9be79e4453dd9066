#include "flfs/suggestion.hpp"

#include <algorithm>
#include <numeric>

namespace flfs {

namespace {

using row = std::vector<std::size_t>;

/// How many changes make `one` of `other`.
std::size_t distance(std::string_view one, std::string_view other)
{
    row ahead; // of two letters back, for those that changed places
    row last(other.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t(0));
    for (std::size_t i = 0; i < one.size(); ++i) {
        row next = {i + 1};
        for (std::size_t j = 0; j < other.size(); ++j) {
            std::size_t const exchanged = last[j] + (one[i] == other[j] ? 0 : 1);
            std::size_t fewest = std::min({exchanged, last[j + 1] + 1, next[j] + 1});
            if (i > 0 && j > 0 && one[i] == other[j - 1] && one[i - 1] == other[j])
                fewest = std::min(fewest, ahead[j - 1] + 1);
            next.push_back(fewest);
        }
        ahead = std::move(last);
        last = std::move(next);
    }
    return last.back();
}

} // namespace

std::string nearest(std::string_view word, std::vector<std::string> const &known)
{
    std::string best;
    std::size_t fewest = std::min<std::size_t>(2, word.empty() ? 0 : word.size() - 1);
    for (std::string const &one : known) {
        std::size_t const changes = distance(word, one);
        if (changes < fewest || (changes == fewest && best.empty())) {
            fewest = changes;
            best = one;
        }
    }
    return best;
}

} // namespace flfs
