// On the simulated machine.

#include "kit/library_verbs.hpp"

namespace kit {

using contract::facts::stage;
using contract::facts::words;
using test_support::access_right;

namespace {

DWORD deny(stage &on, words const &said, std::string &)
{
    static std::map<std::string, access_right> const rights = {
        {"read", access_right::read},     {"write", access_right::write},
        {"list", access_right::list},     {"create", access_right::create_entries},
        {"remove", access_right::remove}, {"attributes", access_right::read_attributes},
    };
    // a directory lends no rights here, so that none of those has to be taken away
    if (said.at(2) != "children")
        on.space().deny(on.place(said.at(1)), rights.at(said[2]));
    return contract::success;
}

} // namespace

contract::facts::verb_table system_verbs()
{
    return {{"deny", &deny}};
}

} // namespace kit
