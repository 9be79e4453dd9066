#ifndef FL_FILESYSTEM_SRC_PLATFORM_FILLED_BUFFER_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_FILLED_BUFFER_HPP
// System calls that write text of any length into the caller's buffer and say
// how much room they need if it is too short.

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

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

/// Where such a call writes. The first buffer is on the stack: most texts fit there.
class text_buffer
{
public:
    /// The most room that a first buffer may have.
    static constexpr DWORD most_at_first = 1024;

    text_buffer() = default;
    text_buffer(text_buffer const &) = delete;
    text_buffer &operator=(text_buffer const &) = delete;

    /// Returns the text that `call(buffer, room)` writes, or nothing if the call
    /// answers 0 or, with `growth::once`, asks for more room again. `call` is handed a
    /// zero-filled buffer of `room` units, first of `first_room`, then of what it
    /// asked for. The text is good as long as the buffer, until the next call.
    template <typename Call>
    std::optional<std::wstring_view> fill(DWORD first_room, growth rule, Call call)
    {
        wchar_t *buffer = first_;
        DWORD room = std::min(first_room, most_at_first);
        std::fill_n(first_, room, L'\0');
        for (bool first = true;; first = false) {
            DWORD const answer = call(buffer, room);
            if (answer == 0)
                return std::nullopt;
            if (answer < room || (answer == room && rule == growth::once))
                return std::wstring_view(buffer, answer);
            if (rule == growth::once && !first)
                return std::nullopt;
            grown_.assign(answer, L'\0');
            buffer = grown_.data();
            room = answer;
        }
    }

private:
    wchar_t first_[most_at_first]; // zeroed as far as it is told
    std::wstring grown_;
};

/// The same for who keeps the text.
template <typename Call>
std::optional<std::wstring> filled_buffer(DWORD first_room, growth rule, Call call)
{
    text_buffer buffer;
    std::optional<std::wstring_view> const text = buffer.fill(first_room, rule, call);
    if (!text)
        return std::nullopt;
    return std::wstring(*text);
}

} // namespace fl::filesystem::detail

#endif
