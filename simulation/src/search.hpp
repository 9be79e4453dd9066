#ifndef FL_SIMULATION_SEARCH_HPP
#define FL_SIMULATION_SEARCH_HPP
// An enumeration of a directory in progress.

#include "opening.hpp"

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace fl::simulation {

/// One answer of an enumeration. The system reads many at once, so that what has
/// been removed or changed since then may still be told as it was.
struct found_name
{
    std::u16string name;
    DWORD attributes = 0;
    fl::simulation::times times;
    std::uint64_t size = 0;
    DWORD reparse_tag = 0;
};

struct search
{
    std::shared_ptr<open_file> directory; ///< held open as long as the search
    std::u16string text;                  ///< the pattern, for the journal
    std::vector<found_name> names;
    std::size_t next = 0;
};

} // namespace fl::simulation

#endif
