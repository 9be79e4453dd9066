#ifndef FL_FILESYSTEM_TESTS_OPERATIONS_SHOWN_HOPS_HPP
#define FL_FILESYSTEM_TESTS_OPERATIONS_SHOWN_HOPS_HPP
// Links on the way of a pathname, as failing tests show them.

#include <fl/filesystem/links.hpp>

#include "support/failure.hpp"

#include <ostream>

namespace fl::filesystem {

inline std::ostream &operator<<(std::ostream &out, link_hop const &shown)
{
    using test_support::printable;
    out << "\n  " << printable(shown.link) << " (" << static_cast<int>(shown.kind) << ") -> "
        << printable(shown.text);
    if (shown.leads_to)
        out << " => " << printable(*shown.leads_to);
    return out << (shown.is_kept ? ", kept" : "");
}

} // namespace fl::filesystem

#endif
