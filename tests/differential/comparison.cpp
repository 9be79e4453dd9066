#include "differential/comparison.hpp"

#include <windows.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace differential {

namespace {

/// What is open in the slots for handles.
class held_names
{
public:
    void note(situation const &done, std::string const &answer)
    {
        if (answer != "ok")
            return;
        switch (done.one.what) {
        case function::open_handle:
            return note_opening(done);
        case function::close_handle:
            return note_close(done.one.numbers[0]);
        case function::delete_file:
        case function::remove_directory:
            return note_deletion(done.place());
        case function::move_file:
            return note_move(done.place(0), done.place(1));
        default:
            return;
        }
    }

    std::vector<open_name> all() const
    {
        std::vector<open_name> names;
        for (auto const &[slot, name] : names_)
            names.push_back(name);
        return names;
    }

private:
    void note_opening(situation const &done)
    {
        auto const &numbers = done.one.numbers;
        bool const deletes_on_close = (numbers[4] & FILE_FLAG_DELETE_ON_CLOSE) != 0;
        bool const might_delete = deletes_on_close || (numbers[1] & DELETE) != 0;
        names_[numbers[0]] = {done.place(), might_delete, deletes_on_close, false};
    }

    void note_close(std::uint32_t slot)
    {
        open_name const closed = names_.at(slot);
        names_.erase(slot);
        if (closed.deletes_on_close)
            note_deletion(closed.pathname);
    }

    void note_deletion(std::u16string const &pathname)
    {
        for (auto &[slot, name] : names_)
            name.is_waiting = name.is_waiting || is_same_name(name.pathname, pathname);
    }

    void note_move(std::u16string const &from, std::u16string const &to)
    {
        for (auto &[slot, name] : names_) {
            if (is_same_name(name.pathname, from))
                name.pathname = to;
        }
    }

    std::map<std::uint32_t, open_name> names_;
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
