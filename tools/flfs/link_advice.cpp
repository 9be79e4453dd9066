#include "flfs/link_advice.hpp"

namespace flfs {

void advise_on_links(failure &what_failed)
{
    constexpr unsigned int privilege_not_held = 1314; // ERROR_PRIVILEGE_NOT_HELD
    if (what_failed.code == privilege_not_held)
        what_failed.sentence =
            "You have no right to make symbolic links. Turn on Windows' developer "
            "mode, or be an administrator.";
}

} // namespace flfs
