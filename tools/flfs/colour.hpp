#ifndef FL_FLFS_COLOUR_HPP
#define FL_FLFS_COLOUR_HPP
// Colours, where a terminal shows them.

#include <string>
#include <string_view>

namespace flfs {

/// As terminals number them.
enum class colour
{
    red = 31,
    yellow = 33,
    blue = 34,
    cyan = 36
};

/// `text` in that colour, if `is_wanted`; a line feed at its end stays behind it.
inline std::string painted(std::string_view text, colour which, bool is_wanted)
{
    if (!is_wanted)
        return std::string(text);
    std::string_view const shown = text.substr(0, text.find_last_not_of('\n') + 1);
    return "\x1B[" + std::to_string(static_cast<int>(which)) + 'm' + std::string(shown) +
           "\x1B[0m" + std::string(text.substr(shown.size()));
}

} // namespace flfs

#endif
