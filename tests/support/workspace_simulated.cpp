#include "support/workspace_simulated.hpp"

#include <stdexcept>

namespace test_support {

struct workspace::state
{
    simulation::simulated_machine machine;
    std::u16string root = u"C:\\fl-test";
    std::u16string share_root = u"\\\\fl-server\\share\\fl-test";
};

namespace {

std::vector<simulation::simulated_machine *> machines;

} // namespace

workspace::workspace() : state_(std::make_unique<state>())
{
    state_->machine.add_directory(state_->root);
    state_->machine.add_share(u"fl-server", u"share").add_directory(state_->share_root);
    machines.push_back(&state_->machine);
}

workspace::~workspace()
{
    std::erase(machines, &state_->machine);
}

std::u16string const &workspace::root() const
{
    return state_->root;
}

std::u16string workspace::path(std::u16string_view relative) const
{
    return state_->root + u'\\' + std::u16string(relative);
}

bool workspace::has_share() const
{
    return true;
}

std::u16string workspace::share_root() const
{
    return state_->share_root;
}

void workspace::make_directory(std::u16string const &path)
{
    state_->machine.add_directory(path);
}

void workspace::make_file(std::u16string const &path, std::string const &content)
{
    state_->machine.add_file(path, content);
}

bool workspace::exists(std::u16string const &path) const
{
    return state_->machine.exists(path);
}

bool workspace::is_directory(std::u16string const &path) const
{
    return state_->machine.is_directory(path);
}

bool workspace::is_file(std::u16string const &path) const
{
    return state_->machine.is_file(path);
}

std::vector<std::u16string> workspace::entries(std::u16string const &path) const
{
    return state_->machine.entries(path);
}

void workspace::change_directory(std::u16string const &path)
{
    state_->machine.set_current_directory(path);
}

bool workspace::can_deny_rights() const
{
    return true;
}

void workspace::deny_creation(std::u16string const &path)
{
    state_->machine.deny_creation(path);
}

simulation::simulated_machine &machine()
{
    if (machines.empty())
        throw std::logic_error("there is no workspace");
    return *machines.back();
}

bool runs_under_wine()
{
    return false;
}

} // namespace test_support
