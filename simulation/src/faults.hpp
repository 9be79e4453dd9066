#ifndef FL_SIMULATION_FAULTS_HPP
#define FL_SIMULATION_FAULTS_HPP
// Calls that tests break.

#include <fl/simulation/machine.hpp>

#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fl::simulation {

/// Shared by the machine and the object that the test holds: either may go first.
struct fault_record
{
    std::string function;         // empty: any
    std::u16string name;          // as `comparable_name` writes it; empty: any
    int nth = 0;                  // 0: each
    DWORD code = 0;               // what the call fails with
    full_path_name_hook hook;     // instead of a code
    std::function<void()> action; // the same
    int seen = 0;
    std::atomic<bool> is_live = true;
    std::atomic<bool> has_fired = false;
};

class machine_state;

/// A pathname in the form that all texts for it have in common: full, in upper case,
/// without a prefix and without a separator at its end. Links stay.
std::u16string comparable_name(std::u16string_view text, machine_state &machine);

class faults
{
public:
    fault add(std::shared_ptr<fault_record> record);

    /// Counts a call of `function` on these pathnames, and returns the code with which it
    /// is to fail, if it is.
    std::optional<DWORD> meet(std::string_view function,
                              std::span<std::u16string_view const> pathnames,
                              machine_state &machine);

    /// What a hook answers for GetFullPathNameW, if any does.
    std::optional<DWORD> full_path_name(DWORD room, wchar_t *buffer);

private:
    using records = std::vector<std::shared_ptr<fault_record>>;

    void forget_dead();
    bool knows_names() const;
    /// Counts the call, and returns those who waited for it.
    records count(std::string_view function, std::vector<std::u16string> const &names);

    records records_;
};

} // namespace fl::simulation

#endif
