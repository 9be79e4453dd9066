#include "support/workspace_simulated.hpp"

#include "support/link_data.hpp"

#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace test_support {

struct workspace::state
{
    simulation::simulated_machine machine;
    std::u16string root = u"C:\\fl-test";
    std::u16string share_root = u"\\\\fl-server\\share\\fl-test";
};

namespace {

std::vector<simulation::simulated_machine *> machines;

/// The machine would change what is there into the link.
void demand_free(workspace const &space, std::u16string const &path)
{
    if (space.exists(path))
        throw std::invalid_argument("there is something already");
}

simulation::right right_of(access_right right)
{
    switch (right) {
    case access_right::read_attributes:
        return simulation::right::read_attributes;
    case access_right::read:
        return simulation::right::read;
    case access_right::write:
        return simulation::right::write;
    case access_right::execute:
        return simulation::right::traverse;
    case access_right::remove:
        return simulation::right::remove;
    case access_right::list:
        return simulation::right::list;
    case access_right::create_entries:
        return simulation::right::create_entries;
    }
    throw std::invalid_argument("there is no such right");
}

simulation::edition simulated(windows_edition edition)
{
    switch (edition) {
    case windows_edition::windows_10_1809:
        return simulation::edition::windows_10_1809;
    case windows_edition::windows_10_22h2:
        return simulation::edition::windows_10_22h2;
    case windows_edition::windows_11:
        return simulation::edition::windows_11;
    }
    throw std::invalid_argument("there is no such edition");
}

} // namespace

workspace::workspace() : state_(std::make_unique<state>())
{
    state_->machine.set_edition(simulated(running_edition()));
    state_->machine.set_long_pathnames(takes_long_pathnames());
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

bool workspace::has_symbolic_links() const
{
    return true;
}

void workspace::make_symbolic_link(std::u16string const &path, std::u16string const &target,
                                   link_to what)
{
    demand_free(*this, path);
    state_->machine.add_symbolic_link(path, target,
                                      what == link_to::directory ? simulation::flavour::directory
                                                                 : simulation::flavour::file);
}

bool workspace::has_junctions() const
{
    return true;
}

void workspace::make_junction(std::u16string const &path, std::u16string const &target)
{
    demand_free(*this, path);
    state_->machine.add_junction(path, target);
}

void workspace::make_shortcut(std::u16string const &path, std::u16string const &target)
{
    state_->machine.add_shortcut(path, target);
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

std::string workspace::content(std::u16string const &path) const
{
    if (!is_file(path) || is_link(path))
        throw std::invalid_argument("this is no file with content of its own");
    return state_->machine.content(path);
}

bool workspace::is_link(std::u16string const &path) const
{
    return exists(path) && state_->machine.reparse_tag(path) != 0;
}

std::u16string workspace::link_text(std::u16string const &path) const
{
    std::string const data = state_->machine.reparse_data(path);
    link_data::bytes const body(data.begin(), data.end());
    return link_data::shown_target(link_data::with_header(state_->machine.reparse_tag(path), body));
}

std::u16string workspace::shortcut_target(std::u16string const &path) const
{
    return state_->machine.shortcut_target(path);
}

std::uint32_t workspace::attributes(std::u16string const &path) const
{
    return state_->machine.attributes(path);
}

void workspace::set_attributes(std::u16string const &path, std::uint32_t attributes)
{
    state_->machine.set_attributes(path, attributes);
}

void workspace::change_directory(std::u16string const &path)
{
    state_->machine.set_current_directory(path);
}

bool workspace::can_deny_rights() const
{
    return true;
}

void workspace::deny(std::u16string const &path, access_right right)
{
    state_->machine.deny(path, right_of(right));
}

void workspace::deny_creation(std::u16string const &path)
{
    deny(path, access_right::create_entries);
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

int wine_version()
{
    return 0;
}

windows_edition running_edition()
{
    char const *const variable = std::getenv("FL_WINDOWS_EDITION");
    std::string_view const name = variable == nullptr ? "windows_11" : variable;
    if (name == "windows_10_1809")
        return windows_edition::windows_10_1809;
    if (name == "windows_10_22h2")
        return windows_edition::windows_10_22h2;
    if (name == "windows_11")
        return windows_edition::windows_11;
    throw std::invalid_argument("FL_WINDOWS_EDITION names no edition");
}

bool takes_long_pathnames()
{
    return std::getenv("FL_LONG_PATHNAMES") != nullptr;
}

} // namespace test_support
