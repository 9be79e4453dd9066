#ifndef FL_FILESYSTEM_TESTS_KIT_PLAYING_HPP
#define FL_FILESYSTEM_TESTS_KIT_PLAYING_HPP
// Plays a script to its end and tells what was seen, whatever was expected.

#include "platform/facts/script.hpp"

#include <string>

namespace kit {

struct played
{
    std::string seen;     ///< the script with what came of each step: as a fact would have it
    bool agrees = true;   ///< with what the script tells
    std::string obstacle; ///< why it can't be tried here; then the above says nothing
};

/// In a fresh folder. `more` are verbs beside those that every script knows.
played play(std::string const &script, contract::facts::verb_table const &more = {});

} // namespace kit

#endif
