#include "differential/comparison.hpp"

#include <windows.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace differential {

namespace {

/// What is open in the slots for handles, as far as it might be deleted.
class held_names
{
public:
    void note(situation const &done, std::string const &answer)
    {
        if (answer != "ok")
            return;
        auto const &numbers = done.one.numbers;
        if (done.one.what == function::close_handle)
            names_.erase(numbers[0]);
        bool const is_open = done.one.what == function::open_handle;
        constexpr DWORD deletes_on_close = FILE_FLAG_DELETE_ON_CLOSE;
        if (is_open && ((numbers[1] & DELETE) != 0 || (numbers[4] & deletes_on_close) != 0))
            names_[numbers[0]] = done.bare();
    }

    std::vector<std::u16string> all() const
    {
        std::vector<std::u16string> names;
        for (auto const &[slot, name] : names_)
            names.push_back(name);
        return names;
    }

private:
    std::map<std::uint32_t, std::u16string> names_;
};

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
    held_names held;
    for (std::size_t at = 0; at < steps.size(); ++at, ++result.compared) {
        situation const here{steps[at], ours.directories[at], ours.standing[at], number,
                             held.all()};
        held.note(here, ours.answers[at]);
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
