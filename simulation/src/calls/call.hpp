#ifndef FL_SIMULATION_CALLS_CALL_HPP
#define FL_SIMULATION_CALLS_CALL_HPP
// The frame of every simulated call: lock, faults, last error, journal.

#include "failure.hpp"
#include "machine_state.hpp"
#include "names.hpp"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace fl::simulation {

void set_last_error(DWORD code) noexcept;

/// Counts the calls that the thread is in while it lives.
class call_in_progress
{
public:
    call_in_progress() noexcept;
    ~call_in_progress();
    call_in_progress(call_in_progress const &) = delete;
    call_in_progress &operator=(call_in_progress const &) = delete;
};

/// A call as the journal tells it and as faults know it.
struct call
{
    char const *function;
    LPCWSTR text = nullptr;
    LPCWSTR second_text = nullptr;
    /// What the call acts on if it has no text: it is known by the text of its opening.
    HANDLE handle = nullptr;
    DWORD flags = 0;
    DWORD access = 0;
    DWORD share = 0;
    DWORD disposition = 0;
    std::uint64_t room = 0;
    /// How many of the texts are pathnames of what the call acts on. A variable is no file,
    /// and nobody looks for the target of a link that is made.
    std::size_t pathnames = 2;
    /// A closing call that fails has closed all the same.
    bool happens_anyway = false;
};

/// The text by which a handle was opened, or none.
std::u16string opened_text(machine_state const &machine, HANDLE handle);

void write_journal(machine_state &machine, call const &made, std::u16string text,
                   std::uint64_t answer, DWORD code);

/// Answers of calls as one number, for the journal.
template <typename Answer>
std::uint64_t as_number(Answer answer)
{
    if constexpr (std::is_pointer_v<Answer>)
        return reinterpret_cast<std::uintptr_t>(answer);
    else
        return static_cast<std::make_unsigned_t<Answer>>(answer);
}

/// Runs `body(machine)` as a call. A `failure` out of the body is answered with what
/// `refuse` makes of its code. A body that promises a last error also where it succeeds
/// takes a reference to it behind the machine.
template <typename Refuse, typename Body>
auto perform_refusing(call const &made, Refuse refuse, Body body) -> decltype(refuse(DWORD{}))
{
    call_in_progress const in_progress;
    std::lock_guard const lock(machine_mutex());
    machine_state &machine = current_machine();
    std::u16string text =
        made.handle == nullptr ? from_wide(made.text) : opened_text(machine, made.handle);
    decltype(refuse(DWORD{})) answer{};
    DWORD code = stale_last_error;
    auto const run = [&] {
        if constexpr (std::is_invocable_v<Body, machine_state &, DWORD &>)
            return body(machine, code);
        else
            return body(machine);
    };
    try {
        std::u16string const second_text = from_wide(made.second_text);
        std::array<std::u16string_view, 2> const texts = {text, second_text};
        auto const broken =
            machine.broken.meet(made.function, std::span(texts).first(made.pathnames), machine);
        if (!broken || made.happens_anyway)
            answer = run();
        if (broken)
            throw failure(*broken);
    } catch (failure const &refusal) {
        code = refusal.code();
        answer = refuse(code);
    }
    set_last_error(code);
    write_journal(machine, made, std::move(text), as_number(answer), code);
    return answer;
}

/// The same for a call that has only a name.
template <typename Refuse, typename Body>
auto perform_refusing(char const *function, LPCWSTR text, Refuse refuse, Body body)
    -> decltype(refuse(DWORD{}))
{
    return perform_refusing(call{.function = function, .text = text}, refuse, std::move(body));
}

/// The same for calls that fail with one answer and leave the code as the last error.
template <typename Answer, typename Body>
Answer perform(call const &made, Answer on_failure, Body body)
{
    return perform_refusing(
        made, [on_failure](DWORD) { return on_failure; }, std::move(body));
}

template <typename Answer, typename Body>
Answer perform(char const *function, LPCWSTR text, Answer on_failure, Body body)
{
    return perform(call{.function = function, .text = text}, on_failure, std::move(body));
}

/// Hands `text` over as most calls do: its length if it fits with its NUL, else
/// the room that it needs, and then the buffer stays as it is. What room is left
/// is filled with junk, since no call promises anything about it.
DWORD hand_over(std::u16string_view text, DWORD room, LPWSTR buffer);

} // namespace fl::simulation

#endif
