#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_INTENDED_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_INTENDED_HPP
// Where the simulated machine does as Windows and Wine does not: each such
// difference by itself, with the step, both outcomes and the reason.

#include "differential/host.hpp"
#include "differential/step.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace differential {

/// What one slot for handles has open.
struct open_name
{
    std::u16string pathname; ///< full, without a separator at its end
    bool might_delete;       ///< it was opened for that
    bool deletes_on_close;
    bool is_waiting; ///< it is deleted; the name stays until the last handle closes
};

/// By the letters of the vocabulary, in whatever case.
bool is_same_name(std::u16string_view left, std::u16string_view right);

/// What a step was about to work on.
struct situation
{
    step const &one;
    std::u16string const &directory;    ///< the current one
    std::vector<entry> const &standing; ///< what was on the drive
    unsigned int number;                ///< of the sequence's folder
    std::vector<open_name> held;        ///< what the sequence has open

    /// The text at `index` with the folder in place of its marks.
    std::u16string text(std::size_t index = 0) const;
    /// The same as a full pathname: GetFullPathNameW of a machine that stands where
    /// the step's did. Empty if it has none.
    std::u16string full(std::size_t index = 0) const;
    /// What the disk is asked for, without a long prefix.
    std::u16string bare(std::size_t index = 0) const;
    /// The same without a separator at its end, unless it is a root.
    std::u16string place(std::size_t index = 0) const;
    /// How many of the step's texts are pathnames: they come first.
    std::size_t pathnames() const;
    /// What stood there by that pathname, or null. Of a root there is nothing to tell.
    entry const *there(std::size_t index = 0) const;
};

enum class aftermath
{
    same,   ///< both sides stand as they would without the difference
    differs ///< what follows isn't comparable
};

/// Matches a step if all of it does. Answers are compared whole, or, where they hold a
/// text of the step's own, by a predicate of this entry. Two answers that are the same
/// can differ as intended as well, in what the step did.
struct intended_difference
{
    function what;
    bool (*is_it)(situation const &here);
    std::string ours;   ///< the answer of the simulation
    std::string theirs; ///< the answer of Wine
    aftermath effect;
    char const *reason;
    /// For answers with a text: whether these two are what the step gives.
    bool (*are_they)(situation const &here, std::string const &ours,
                     std::string const &theirs) = nullptr;
};

std::vector<intended_difference> const &intended_differences();

/// The entry that explains two different answers to one step, or null.
intended_difference const *find_intended(situation const &here, std::string const &ours,
                                         std::string const &theirs);

} // namespace differential

#endif
