#ifndef FL_FLFS_RESOLUTION_HPP
#define FL_FLFS_RESOLUTION_HPP
// The way of a pathname through its links, and where it ends, as the library tells both.

#include "flfs/failure_report.hpp"
#include "flfs/link_reading.hpp"

#include <optional>
#include <string>
#include <vector>

namespace flfs {

/// One link on the way.
struct hop
{
    std::u16string pathname; ///< of the link, without a long prefix
    link_kind kind;
    std::u16string text;
    /// The whole pathname that is left to walk, without a long prefix. None if the link is
    /// kept, or if its text leads nowhere.
    std::optional<std::u16string> goes_on_with;
    /// The walk takes the link for an ordinary name: one on a network that names a drive.
    bool is_kept = false;
};

enum class what_is_there
{
    nothing,
    file,
    directory
};

struct resolution
{
    std::u16string pathname;                ///< as the user wrote it
    std::optional<std::u16string> absolute; ///< where the walk starts
    std::vector<hop> hops;
    bool hops_repeat = false; ///< the walk goes round; each hop is listed once
    /// With a long prefix only if it needs one.
    std::optional<std::u16string> result;
    what_is_there found = what_is_there::nothing; ///< at `result`
    std::optional<failure> what_failed;           ///< then there is no result
};

/// Walks through `pathname`. The result, or the failure, is that of `canonical`.
resolution resolve(std::u16string const &pathname);

} // namespace flfs

#endif
