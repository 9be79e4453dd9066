#ifndef FL_FLFS_FORESIGHT_HPP
#define FL_FLFS_FORESIGHT_HPP
// What a command would do to the disk as it is now, found out by looking only. A failure that can
// be seen ahead is one here, too; rights and what others have open can't be seen.

#include "flfs/report.hpp"

#include <filesystem>
#include <string>

namespace flfs {

/// Names in the order in which they would be removed, up to the first that would be a failure.
answer foreseen_removal(std::u16string const &pathname, bool is_tree, bool takes_read_only);

/// "would move" or "would replace", said of the two names.
std::string foreseen_move(std::u16string const &from, std::u16string const &to);

/// Names with what would be made of them, up to the first that would be a failure.
answer foreseen_copy(std::u16string const &from, std::u16string const &to,
                     std::filesystem::copy_options options);

} // namespace flfs

#endif
