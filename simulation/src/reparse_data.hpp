#ifndef FL_SIMULATION_REPARSE_DATA_HPP
#define FL_SIMULATION_REPARSE_DATA_HPP
// The data of symbolic links and mount points, as it lies on the disk.

#include "machine_state.hpp"

#include <string>

namespace fl::simulation {

/// Where a reparse point sends whoever opens it.
struct redirection
{
    std::u16string target;    ///< the substitute name
    bool is_relative = false; ///< from the directory that holds the link
};

/// What a symbolic link or a mount point says. Fails with the code of malformed data
/// where names run past the end.
redirection decode(reparse_point const &point);

/// Fails with what no disk keeps, whatever the bytes mean: a tag of nobody's, more bytes than
/// fit, a tag of others than Microsoft without the identifier of its maker.
void check_storable(reparse_point const &point);

/// Tags of others than Microsoft have the identifier of their maker ahead of the data.
bool is_of_microsoft(DWORD tag);
inline constexpr std::size_t maker_size = 16;

/// Ahead of all that stand the tag, the length of the data, and two bytes for nothing.
inline constexpr std::size_t reparse_header_size = 8;

/// Tags that no reparse point has.
bool is_reserved(DWORD tag);

/// What CreateSymbolicLinkW writes for this text. One without a drive or server stays
/// relative; any other is made full.
reparse_point make_symbolic_link(std::u16string_view text, machine_state &machine);

/// Little-endian numbers in and out of bytes; out of strangers' bytes comes 0 where there
/// are none.
void append_number(std::string &bytes, std::size_t number, std::size_t size);
DWORD number_at(std::string_view bytes, std::size_t offset, std::size_t size);

} // namespace fl::simulation

#endif
