#ifndef FL_SIMULATION_MACHINE_STATE_HPP
#define FL_SIMULATION_MACHINE_STATE_HPP
// The whole of one machine, and which machine the process runs on.

#include "com_library.hpp"
#include "faults.hpp"
#include "process.hpp"
#include "program_memory.hpp"
#include "volumes.hpp"

#include <fl/simulation/machine.hpp>

#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace fl::simulation {

class handles;

class machine_state
{
public:
    machine_state();
    ~machine_state();

    std::uint64_t now() const noexcept { return disks.clock()->now(); }

    edition runs = edition::windows_11;
    /// Without it, pathnames without a long prefix end at 259 units.
    bool takes_long_pathnames = false;

    volumes disks;
    process running;
    std::unique_ptr<handles> open; ///< after the disks, on which they close
    faults broken;
    std::vector<journal_entry> journal;
    /// Not on the machine that is there from the start: nobody could read it, and
    /// a program that runs for long would only fill the memory.
    bool keeps_journal = true;
    /// Tags that a filter of the system takes care of where they are.
    std::set<DWORD> handled_tags = {DWORD{IO_REPARSE_TAG_DEDUP}};
    /// Windows follows symbolic links on a share only where it was told to.
    bool follows_remote_links = false;
    /// Without the right, symbolic links can't be made.
    bool may_create_links = true;
    /// A provider of network names may succeed and tell none.
    bool knows_universal_names = true;

    program_memory memory;
    com_library com;
};

/// Held by every call and by every look of a test. Recursive, since hooks of tests
/// run within a call and look into the machine.
std::recursive_mutex &machine_mutex();

/// The machine that calls of this thread run on. Hold the mutex.
machine_state &current_machine();

/// Those that this thread has chosen for itself, the last one ahead of all others.
std::vector<std::shared_ptr<machine_state>> &machines_of_thread();

void enter_machine(std::shared_ptr<machine_state> machine);
void leave_machine(std::shared_ptr<machine_state> const &machine);

} // namespace fl::simulation

#endif
