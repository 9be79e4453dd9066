#ifndef FL_FLFS_SYSTEM_HPP
#define FL_FLFS_SYSTEM_HPP
// Which system answers the library's calls. The build decides it once, here.

namespace flfs {

/// Elsewhere than on Windows the library runs over a Windows machine in memory. It
/// answers questions, but nobody would find again what a command changed there: the
/// commands on disks are refused, but for tests.
inline constexpr bool system_is_simulated = FLFS_SYSTEM_IS_SIMULATED != 0;

} // namespace flfs

#endif
