#include "flfs/commands.hpp"

#include <CLI/CLI.hpp>

#include <ostream>
#include <utility>

namespace flfs {

namespace {

/// Whether there is no disk for `command`; then says so.
bool is_refused(CLI::App const &command, session &session, disk_use use)
{
    if (session.has_disk)
        return false;
    session.err << "flfs: " << command.get_name()
                << " works on Windows only: there is no Windows file system to "
                << (use == disk_use::read ? "read" : "change") << " here.\n";
    return true;
}

} // namespace

void set_action(CLI::App &command, std::function<void()> action)
{
    command.callback(std::move(action));
}

void set_disk_action(CLI::App &command, session &session, disk_use use, std::function<int()> action)
{
    command.callback([&command, &session, use, action = std::move(action)] {
        session.exit_code = is_refused(command, session, use) ? exit_usage : action();
    });
}

} // namespace flfs
