#ifndef FL_FLFS_LIBRARY_INSIDE_HPP
#define FL_FLFS_LIBRARY_INSIDE_HPP
// The one way into the library's own headers, past its public ones. All that is used of them
// is inline, for the DLL exports nothing of it:
// - path types and the lengths of roots, which `inspect` shows each by its name;
// - the owners of handles and the steps with a shell link object, by which `readlink` tells
//   more of a link than the library's own operations do, and the tour looks at its disk.

#include "pathname/path_type.hpp"
#include "platform/owned_handle.hpp"
#include "platform/shell_link_object.hpp"

#endif
