#ifndef FL_FLFS_LINK_ADVICE_HPP
#define FL_FLFS_LINK_ADVICE_HPP
// What to do about links that can't be made.

#include "flfs/failure_report.hpp"

namespace flfs {

/// Replaces the sentence where the failure is the missing right to make symbolic links.
void advise_on_links(failure &what_failed);

} // namespace flfs

#endif
