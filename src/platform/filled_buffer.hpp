#ifndef FL_FILESYSTEM_SRC_PLATFORM_FILLED_BUFFER_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_FILLED_BUFFER_HPP
// System calls that write text of any length into the caller's buffer and say
// how much room they need if it is too short.

#include <windows.h>

#include <optional>
#include <string>

namespace fl::filesystem::detail {

/// How often a call is asked, and how an answer as long as the buffer is read.
/// Windows never gives that one, since the room that it asks for includes the NUL.
enum class growth
{
    /// Ask at most twice; an answer as long as the buffer fits.
    once,
    /// Ask until the answer is shorter than the buffer, however often the text
    /// grows in between.
    until_it_fits
};

/// Returns the text that `call(buffer, room)` writes, or nothing if the call
/// answers 0 or, with `growth::once`, asks for more room again. `call` is handed a
/// zero-filled buffer of `room` units, first of `first_room`, then of what it
/// asked for.
template <typename Call>
std::optional<std::wstring> filled_buffer(DWORD first_room, growth rule, Call call)
{
    std::wstring buffer(first_room, L'\0');
    for (bool first = true;; first = false) {
        DWORD const room = static_cast<DWORD>(buffer.size());
        DWORD const answer = call(buffer.data(), room);
        if (answer == 0)
            return std::nullopt;
        if (answer < room || (answer == room && rule == growth::once)) {
            buffer.resize(answer);
            return buffer;
        }
        if (rule == growth::once && !first)
            return std::nullopt;
        buffer.assign(answer, L'\0');
    }
}

} // namespace fl::filesystem::detail

#endif
