#include "machine_state.hpp"

#include "handles.hpp"

#include <algorithm>
#include <utility>

namespace fl::simulation {

namespace {

std::shared_ptr<machine_state> make_first()
{
    auto first = std::make_shared<machine_state>();
    first->keeps_journal = false;
    return first;
}

/// The last one is current. The first is there from the start of the process.
std::vector<std::shared_ptr<machine_state>> &machines()
{
    // never destroyed: calls may come from destructors at the end of the process
    static auto &all = *new std::vector<std::shared_ptr<machine_state>>{make_first()};
    return all;
}

} // namespace

machine_state::machine_state() : open(std::make_unique<handles>())
{
    disks.add_drive(u'C');
    running.stand_in(disks.find_drive(u'C'), disks.find_drive(u'C')->root);
}

machine_state::~machine_state() = default;

std::recursive_mutex &machine_mutex()
{
    static auto &mutex = *new std::recursive_mutex;
    return mutex;
}

machine_state &current_machine()
{
    auto const &chosen = machines_of_thread();
    return chosen.empty() ? *machines().back() : *chosen.back();
}

std::vector<std::shared_ptr<machine_state>> &machines_of_thread()
{
    thread_local std::vector<std::shared_ptr<machine_state>> chosen;
    return chosen;
}

void enter_machine(std::shared_ptr<machine_state> machine)
{
    machines().push_back(std::move(machine));
}

void leave_machine(std::shared_ptr<machine_state> const &machine)
{
    std::erase(machines(), machine);
}

} // namespace fl::simulation
