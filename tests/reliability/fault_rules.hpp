#ifndef FL_FILESYSTEM_TESTS_RELIABILITY_FAULT_RULES_HPP
#define FL_FILESYSTEM_TESTS_RELIABILITY_FAULT_RULES_HPP
// What may come of an operation of which a call fails.

#include "reliability/subjects.hpp"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace reliability {

/// What came of one run.
struct outcome
{
    std::string answer; ///< empty if it threw
    std::optional<test_support::failure> told;
    std::string other; ///< of the standard library's exceptions

    friend bool operator==(outcome const &, outcome const &) = default;
};

inline std::ostream &operator<<(std::ostream &out, outcome const &shown)
{
    if (!shown.other.empty())
        return out << shown.other;
    return shown.told ? out << *shown.told : out << "answer " << shown.answer;
}

/// A call that has failed, and all that says what may come of it.
struct occurrence
{
    operation const &tried;
    subject const &on;
    simulation::journal_entry const &call;
    DWORD code;
    outcome const &good; ///< of the run in which nothing failed
};

using outcomes = std::vector<outcome>;

/// What the rules allow. Empty if no rule knows the call.
outcomes allowed(occurrence const &at);

/// The same where another call failed ahead of it.
outcomes allowed_behind(occurrence const &first, occurrence const &second);

/// Whether what the failure then makes is neither nothing nor a part of the whole.
bool ends_otherwise(occurrence const &at);

bool matches(std::string const &name, std::vector<std::string> const &patterns);

} // namespace reliability

#endif
