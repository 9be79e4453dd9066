#ifndef FL_FILESYSTEM_SRC_STANDARD_MARKING_HPP
#define FL_FILESYSTEM_SRC_STANDARD_MARKING_HPP
// Deletion by handle: it meets what was opened, whatever has become of the name.

#include "platform/owned_handle.hpp"

#include <windows.h>

namespace fl::filesystem::detail::standard {

enum class read_only_names
{
    are_removed,
    are_refused ///< with code 5
};

/// Marks what `file` has open, with the right to delete it, for deletion. Frees its name at
/// once where the disk can do that. Returns the system's code, 0 on success.
DWORD mark_for_deletion(file_handle const &file, read_only_names rule);

} // namespace fl::filesystem::detail::standard

#endif
