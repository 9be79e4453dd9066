#ifndef FL_SIMULATION_REPARSE_DATA_HPP
#define FL_SIMULATION_REPARSE_DATA_HPP
// The data of symbolic links and mount points, as it lies on the disk.

#include "machine_state.hpp"

#include <string>

namespace simulation {

/// Where a reparse point sends whoever opens it.
struct redirection
{
    std::u16string target;    ///< the substitute name
    bool is_relative = false; ///< from the directory that holds the link
};

/// What a symbolic link or a mount point says. Fails with the code of malformed data
/// where names run past the end.
redirection decode(reparse_point const &point);

/// What CreateSymbolicLinkW writes for this text. One without a drive or server stays
/// relative; any other is made full.
reparse_point make_symbolic_link(std::u16string_view text, machine_state &machine);

/// Little-endian numbers in and out of bytes; out of strangers' bytes comes 0 where there
/// are none.
void append_number(std::string &bytes, std::size_t number, std::size_t size);
DWORD number_at(std::string_view bytes, std::size_t offset, std::size_t size);

} // namespace simulation

#endif
