#ifndef FL_FLFS_COMMANDS_HPP
#define FL_FLFS_COMMANDS_HPP
// The commands. The source file of each adds it to the command line and does its work.

#include "flfs/system.hpp"

#include <iosfwd>

namespace CLI {
class App;
}

namespace flfs {

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
};

enum class disk_use
{
    read,
    change
};

// `session` must outlive `app`.
void add_absolute_command(CLI::App &app, session &session);
void add_access_command(CLI::App &app, session &session);
void add_canonical_command(CLI::App &app, session &session);
void add_cd_command(CLI::App &app, session &session);
void add_chmod_command(CLI::App &app, session &session);
void add_cp_command(CLI::App &app, session &session);
void add_df_command(CLI::App &app, session &session);
void add_exists_command(CLI::App &app, session &session);
void add_forms_command(CLI::App &app, session &session);
void add_inspect_command(CLI::App &app, session &session);
void add_ln_command(CLI::App &app, session &session);
void add_mkdir_command(CLI::App &app, session &session);
void add_mv_command(CLI::App &app, session &session);
void add_readlink_command(CLI::App &app, session &session);
void add_relative_command(CLI::App &app, session &session);
void add_resolve_command(CLI::App &app, session &session);
void add_rm_command(CLI::App &app, session &session);
void add_same_command(CLI::App &app, session &session);
void add_stat_command(CLI::App &app, session &session);
void add_tour_command(CLI::App &app, session &session);
void add_unc_command(CLI::App &app, session &session);
void add_where_command(CLI::App &app, session &session);

} // namespace flfs

#endif
