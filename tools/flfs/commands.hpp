#ifndef FL_FLFS_COMMANDS_HPP
#define FL_FLFS_COMMANDS_HPP
// The commands. The source file of each adds it to the command line and does its work.

#include <chrono>
#include <iosfwd>
#include <optional>

namespace CLI {
class App;
}

namespace flfs {

/// Elsewhere than on Windows the library runs over a Windows machine in memory. It answers
/// questions, but nobody would find again what a command changed there: the commands on disks are
/// refused, but for tests.
inline constexpr bool system_is_simulated = FLFS_SYSTEM_IS_SIMULATED != 0;

inline constexpr int exit_success = 0;
inline constexpr int exit_failure = 1; ///< the library reported a failure
inline constexpr int exit_usage = 2;   ///< wrong usage, or not possible here

/// Where a command prints and what it leaves behind.
struct session
{
    std::ostream &out;
    std::ostream &err;
    int exit_code = exit_success;
    bool has_disk = !system_is_simulated; ///< whether commands find a disk that lasts
    bool has_colours = false;             ///< whether `out` is a terminal that takes them
    bool warns_in_colours = false;        ///< whether `err` is one
    /// How long long work is silent on `err` between two lines; for ever if that is no terminal.
    std::optional<std::chrono::milliseconds> progress_pause = std::nullopt;
};

enum class disk_use
{
    read,
    change
};

/// Adds one command. `session` must outlive `app`.
using add_command = void(CLI::App &app, session &session);

add_command add_absolute_command, add_canonical_command, add_forms_command, add_inspect_command,
    add_relative_command, add_unc_command;
add_command add_ls_command, add_tree_command;
add_command add_access_command, add_df_command, add_exists_command, add_is_command,
    add_names_command, add_same_command, add_size_command, add_stat_command, add_time_command;
add_command add_chmod_command, add_cp_command, add_ensure_command, add_mkdir_command,
    add_mv_command, add_resize_command, add_rm_command, add_touch_command;
add_command add_ln_command, add_read_shortcut_command, add_readlink_command, add_resolve_command;
add_command add_cd_command, add_temp_command, add_tour_command, add_where_command;
add_command add_completion_command, add_manual_command;

} // namespace flfs

#endif
