#include <simulation/machine.hpp>

#include "calls/current_directory.hpp"
#include "failure.hpp"
#include "lookup.hpp"
#include "machine_state.hpp"
#include "names.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace simulation {

namespace {

/// Runs what a test asked for; what the machine refuses is a mistake in the test.
template <typename Body>
auto arrange(std::u16string_view path, Body body)
{
    std::lock_guard const lock(machine_mutex());
    try {
        return body();
    } catch (failure const &refusal) {
        std::string shown;
        for (char16_t const unit : path)
            shown += unit < 0x80 ? static_cast<char>(unit) : '?';
        throw std::invalid_argument("the simulated machine can't do this with " + shown +
                                    ": error " + std::to_string(refusal.code()));
    }
}

/// The node at `path`, or null.
std::shared_ptr<node> look(std::u16string_view path, machine_state const &machine)
{
    std::lock_guard const lock(machine_mutex());
    try {
        return find_place(parse_literal(path, machine)).found;
    } catch (failure const &) {
        return nullptr;
    }
}

std::shared_ptr<node> demand(std::u16string_view path, machine_state const &machine)
{
    return arrange(path, [&] { return find_existing(parse_literal(path, machine)).found; });
}

std::shared_ptr<node> make_directory(pathname const &path)
{
    std::shared_ptr<node> here = path.root;
    for (std::u16string const &name : path.elements) {
        if (!here->is_directory())
            throw failure(ERROR_DIRECTORY);
        if (!is_valid_name(name))
            throw failure(ERROR_INVALID_NAME);
        std::shared_ptr<node> const next = here->find(name);
        here = next ? next : here->add(name, FILE_ATTRIBUTE_DIRECTORY);
    }
    return here;
}

void make_file(pathname path, std::string_view content)
{
    if (path.elements.empty())
        throw failure(ERROR_DIRECTORY);
    std::u16string const name = path.elements.back();
    path.elements.pop_back();
    std::shared_ptr<node> const parent = make_directory(path);
    if (!parent->is_directory() || !is_valid_name(name))
        throw failure(ERROR_INVALID_NAME);
    std::shared_ptr<node> const former = parent->find(name);
    if (former && former->is_directory())
        throw failure(ERROR_FILE_EXISTS);
    parent->add(former ? former->name() : name, FILE_ATTRIBUTE_ARCHIVE)->content = content;
}

} // namespace

simulated_machine::simulated_machine() : state_(std::make_shared<machine_state>())
{
    std::lock_guard const lock(machine_mutex());
    enter_machine(state_);
}

simulated_machine::~simulated_machine()
{
    std::lock_guard const lock(machine_mutex());
    leave_machine(state_);
}

simulated_machine &simulated_machine::add_drive(char16_t letter)
{
    std::lock_guard const lock(machine_mutex());
    if (!is_letter(letter))
        throw std::invalid_argument("a drive is a letter from A to Z");
    state_->disks.add_drive(letter);
    return *this;
}

simulated_machine &simulated_machine::remove_drive(char16_t letter)
{
    std::lock_guard const lock(machine_mutex());
    state_->disks.remove_drive(letter);
    return *this;
}

simulated_machine &simulated_machine::add_share(std::u16string_view server,
                                                std::u16string_view share)
{
    std::lock_guard const lock(machine_mutex());
    state_->disks.add_share(server, share);
    return *this;
}

simulated_machine &simulated_machine::add_dead_server(std::u16string_view name)
{
    std::lock_guard const lock(machine_mutex());
    state_->disks.add_dead_server(name);
    return *this;
}

simulated_machine &simulated_machine::add_directory(std::u16string_view path)
{
    arrange(path, [&] {
        if (!make_directory(parse_literal(path, *state_))->is_directory())
            throw failure(ERROR_ALREADY_EXISTS);
    });
    return *this;
}

simulated_machine &simulated_machine::add_file(std::u16string_view path, std::string_view content)
{
    arrange(path, [&] { make_file(parse_literal(path, *state_), content); });
    return *this;
}

simulated_machine &simulated_machine::set_attributes(std::u16string_view path, DWORD attributes)
{
    std::lock_guard const lock(machine_mutex());
    demand(path, *state_)->set_attributes(attributes);
    return *this;
}

simulated_machine &simulated_machine::set_current_directory(std::u16string_view path)
{
    arrange(path, [&] { change_directory(*state_, std::u16string(path)); });
    return *this;
}

simulated_machine &simulated_machine::remove(std::u16string_view path)
{
    arrange(path, [&] {
        place const here = find_existing(parse_literal(path, *state_));
        if (!here.parent)
            throw failure(ERROR_ACCESS_DENIED);
        here.parent->remove(here.name);
    });
    return *this;
}

simulated_machine &simulated_machine::deny_creation(std::u16string_view path)
{
    std::lock_guard const lock(machine_mutex());
    demand(path, *state_)->denied.insert(right::create_entries);
    return *this;
}

bool simulated_machine::exists(std::u16string_view path) const
{
    return look(path, *state_) != nullptr;
}

bool simulated_machine::is_directory(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = look(path, *state_);
    return found && found->is_directory();
}

bool simulated_machine::is_file(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = look(path, *state_);
    return found && !found->is_directory();
}

std::vector<std::u16string> simulated_machine::entries(std::u16string_view path) const
{
    return arrange(path, [&] {
        auto const found = find_existing(parse_literal(path, *state_)).found;
        if (!found->is_directory())
            throw failure(ERROR_DIRECTORY);
        return found->names();
    });
}

DWORD simulated_machine::attributes(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->attributes();
}

std::string simulated_machine::content(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->content;
}

std::u16string simulated_machine::current_directory() const
{
    std::lock_guard const lock(machine_mutex());
    return shown_current_directory(*state_);
}

fault simulated_machine::fail_call(std::string_view function, int nth, DWORD code)
{
    std::lock_guard const lock(machine_mutex());
    auto record = std::make_shared<fault_record>();
    record->function = function;
    record->nth = nth;
    record->code = code;
    return state_->broken.add(std::move(record));
}

fault simulated_machine::fail_call(int nth, DWORD code)
{
    return fail_call(std::string_view(), nth, code);
}

fault simulated_machine::fail_every_call_on(std::string_view function, DWORD code)
{
    return fail_call(function, 0, code);
}

fault simulated_machine::on_full_path_name(full_path_name_hook hook)
{
    std::lock_guard const lock(machine_mutex());
    auto record = std::make_shared<fault_record>();
    record->hook = std::move(hook);
    return state_->broken.add(std::move(record));
}

std::vector<journal_entry> simulated_machine::journal() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->journal;
}

void simulated_machine::clear_journal()
{
    std::lock_guard const lock(machine_mutex());
    state_->journal.clear();
}

int simulated_machine::calls_of(std::string_view function) const
{
    std::lock_guard const lock(machine_mutex());
    auto const count = std::count_if(state_->journal.begin(), state_->journal.end(),
                                     [&](auto const &entry) { return entry.function == function; });
    return static_cast<int>(count);
}

} // namespace simulation
