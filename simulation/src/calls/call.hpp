#ifndef FL_SIMULATION_CALLS_CALL_HPP
#define FL_SIMULATION_CALLS_CALL_HPP
// The frame of every simulated call: lock, faults, last error, journal.

#include "failure.hpp"
#include "machine_state.hpp"
#include "names.hpp"

#include <cstdint>
#include <string_view>

namespace simulation {

void set_last_error(DWORD code) noexcept;

/// Runs `body(machine)` as the call `function`, which was handed `text`. A
/// `failure` out of the body is answered with `on_failure` and its code.
template <typename Answer, typename Body>
Answer perform(char const *function, LPCWSTR text, Answer on_failure, Body body)
{
    std::lock_guard const lock(machine_mutex());
    machine_state &machine = current_machine();
    Answer answer = on_failure;
    DWORD code = stale_last_error;
    try {
        machine.broken.meet(function);
        answer = body(machine);
    } catch (failure const &refusal) {
        code = refusal.code();
    }
    set_last_error(code);
    if (machine.keeps_journal)
        machine.journal.push_back(
            {function, from_wide(text), static_cast<std::uint64_t>(answer), code});
    return answer;
}

/// Hands `text` over as most calls do: its length if it fits with its NUL, else
/// the room that it needs, and then the buffer stays as it is. What room is left
/// is filled with junk, since no call promises anything about it.
DWORD hand_over(std::u16string_view text, DWORD room, LPWSTR buffer);

} // namespace simulation

#endif
