#include <fl/simulation/machine.hpp>

#include "calls/current_directory.hpp"
#include "failure.hpp"
#include "full_path.hpp"
#include "handles.hpp"
#include "lookup.hpp"
#include "machine_state.hpp"
#include "names.hpp"
#include "reparse_data.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>

namespace fl::simulation {

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
        place const here =
            find_place(parse_literal(path, machine), machine, last_link::keep, looker::test);
        return here.found ? here.found->target : nullptr;
    } catch (failure const &) {
        return nullptr;
    }
}

place demand_place(std::u16string_view path, machine_state const &machine)
{
    return arrange(path, [&] {
        return find_existing(parse_literal(path, machine), machine, last_link::keep, looker::test);
    });
}

std::shared_ptr<node> demand(std::u16string_view path, machine_state const &machine)
{
    return demand_place(path, machine).found->target;
}

bool is_link(reparse_point const &point)
{
    return point.tag == IO_REPARSE_TAG_SYMLINK || point.tag == IO_REPARSE_TAG_MOUNT_POINT;
}

/// A directory to which entries can be added. Behind a link it would be another one.
void check_plain_directory(node const &directory)
{
    if (!directory.is_directory() || (directory.reparse && is_link(*directory.reparse)))
        throw failure(ERROR_DIRECTORY);
}

/// Fails if not all of these names can be had, so that nothing is made in vain.
void check_way(pathname const &path)
{
    if (path.is_device() || path.is_raw_volume)
        throw failure(ERROR_INVALID_NAME);
    std::shared_ptr<entry> here = path.disk->root;
    for (std::u16string_view const name : path.elements) {
        if (here)
            check_plain_directory(*here->target);
        if (!is_valid_name(name))
            throw failure(ERROR_INVALID_NAME);
        here = here ? here->target->find(name) : nullptr;
    }
}

std::shared_ptr<node> make_directory(pathname const &path, machine_state &machine)
{
    check_way(path);
    std::shared_ptr<node> here = path.disk->root->target;
    for (std::u16string_view const name : path.elements) {
        std::shared_ptr<entry> next = here->find(name);
        if (!next) {
            auto made = path.disk->make_node(FILE_ATTRIBUTE_DIRECTORY);
            next = node::add(here, name, std::move(made), machine.now());
        }
        here = next->target;
    }
    return here;
}

/// Gives `target` the name `path`, in place of a former file.
void place_file(std::u16string_view text, std::shared_ptr<node> target, machine_state &machine)
{
    pathname path = parse_literal(text, machine);
    check_way(path);
    if (path.elements.empty() || path.ends_in_separator)
        throw failure(ERROR_DIRECTORY);
    std::u16string const name(path.elements.back());
    path.elements.pop_back();
    std::shared_ptr<node> const parent = make_directory(path, machine);
    check_plain_directory(*parent);
    std::shared_ptr<entry> const former = parent->find(name);
    if (former && former->target->is_directory())
        throw failure(ERROR_FILE_EXISTS);
    node::add(parent, former ? former->name : name, std::move(target), machine.now());
}

std::shared_ptr<node> make_file(std::u16string_view path, machine_state &machine,
                                DWORD attributes = FILE_ATTRIBUTE_ARCHIVE)
{
    return arrange(path, [&] {
        pathname const place = parse_literal(path, machine);
        check_way(place);
        auto made = place.disk->make_node(attributes);
        place_file(path, made, machine);
        return made;
    });
}

/// Fails with what no disk keeps.
void check_reparse_point(reparse_point const &point, node const *target, flavour is)
{
    check_storable(point);
    bool const is_directory = target ? target->is_directory() : is == flavour::directory;
    if (point.tag == IO_REPARSE_TAG_MOUNT_POINT && !is_directory)
        throw failure(ERROR_DIRECTORY);
    if (target && is_link(point) && target->is_directory() && !target->is_empty())
        throw failure(ERROR_DIR_NOT_EMPTY);
}

void make_reparse_point(std::u16string_view path, reparse_point point, flavour is,
                        machine_state &machine)
{
    std::shared_ptr<node> target = look(path, machine);
    arrange(path, [&] { check_reparse_point(point, target.get(), is); });
    if (!target && is == flavour::directory)
        target =
            arrange(path, [&] { return make_directory(parse_literal(path, machine), machine); });
    if (!target)
        target = make_file(path, machine);
    target->reparse = std::move(point);
}

} // namespace

machine::machine() : state_(std::make_shared<machine_state>())
{
    std::lock_guard const lock(machine_mutex());
    enter_machine(state_);
}

machine::~machine()
{
    std::lock_guard const lock(machine_mutex());
    leave_machine(state_);
}

on_this_thread::on_this_thread(machine const &windows)
{
    machines_of_thread().push_back(windows.state_);
}

on_this_thread::~on_this_thread()
{
    machines_of_thread().pop_back();
}

building &building::set_edition(edition runs)
{
    std::lock_guard const lock(machine_mutex());
    state_->runs = runs;
    return *this;
}

edition looking::runs() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->runs;
}

building &building::set_long_pathnames(bool takes_them)
{
    std::lock_guard const lock(machine_mutex());
    state_->takes_long_pathnames = takes_them;
    return *this;
}

bool looking::takes_long_pathnames() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->takes_long_pathnames;
}

building &building::add_drive(char16_t letter)
{
    std::lock_guard const lock(machine_mutex());
    if (!is_letter(letter))
        throw std::invalid_argument("a drive is a letter from A to Z");
    if (state_->disks.find_mapping(letter))
        throw std::invalid_argument("this letter stands for a share");
    state_->disks.add_drive(letter);
    return *this;
}

building &building::remove_drive(char16_t letter)
{
    std::lock_guard const lock(machine_mutex());
    state_->disks.remove_drive(letter);
    return *this;
}

building &building::take_letter(char16_t letter)
{
    std::lock_guard const lock(machine_mutex());
    if (state_->disks.find_mapping(letter) || !state_->disks.find_drive(letter))
        throw std::invalid_argument("there is no such drive");
    state_->disks.take_letter(letter);
    return *this;
}

building &building::add_share(std::u16string_view server, std::u16string_view share)
{
    std::lock_guard const lock(machine_mutex());
    if (!is_valid_name(server) || !is_valid_name(share))
        throw std::invalid_argument("servers and shares have names as files have");
    state_->disks.add_share(server, share);
    return *this;
}

building &building::add_dead_server(std::u16string_view name)
{
    std::lock_guard const lock(machine_mutex());
    state_->disks.add_dead_server(name);
    return *this;
}

building &building::add_directory(std::u16string_view path)
{
    arrange(path, [&] {
        if (!make_directory(parse_literal(path, *state_), *state_)->is_directory())
            throw failure(ERROR_ALREADY_EXISTS);
    });
    return *this;
}

building &building::add_file(std::u16string_view path, std::string_view content)
{
    std::lock_guard const lock(machine_mutex());
    make_file(path, *state_)->content = byte_store(content);
    return *this;
}

building &building::add_sparse_file(std::u16string_view path, std::uint64_t size,
                                    std::string_view end)
{
    std::lock_guard const lock(machine_mutex());
    if (end.size() > size || size > std::numeric_limits<std::int64_t>::max())
        throw std::invalid_argument("no file has this size");
    auto const made = make_file(path, *state_, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_SPARSE_FILE);
    made->content.resize(size);
    made->content.write(size - end.size(), end);
    return *this;
}

building &building::add_deduplicated_file(std::u16string_view path, std::string_view content)
{
    std::lock_guard const lock(machine_mutex());
    auto const made = make_file(path, *state_, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_SPARSE_FILE);
    made->content = byte_store(content);
    made->reparse = reparse_point{DWORD{IO_REPARSE_TAG_DEDUP}, std::string(16, '\x01')};
    return *this;
}

building &building::add_hard_link(std::u16string_view path, std::u16string_view existing)
{
    std::lock_guard const lock(machine_mutex());
    arrange(path, [&] {
        place const source = demand_place(existing, *state_);
        if (source.found->target->is_directory())
            throw failure(ERROR_ACCESS_DENIED);
        if (parse_literal(path, *state_).disk != source.disk)
            throw failure(ERROR_NOT_SAME_DEVICE);
        place_file(path, source.found->target, *state_);
    });
    return *this;
}

building &building::add_symbolic_link(std::u16string_view path, std::u16string_view target,
                                      flavour is)
{
    std::lock_guard const lock(machine_mutex());
    auto point = arrange(path, [&] { return make_symbolic_link(target, *state_); });
    make_reparse_point(path, std::move(point), is, *state_);
    return *this;
}

building &building::add_symbolic_link(std::u16string_view path, std::u16string_view substitute,
                                      std::u16string_view print, DWORD flags, flavour is)
{
    return add_reparse_point(path, DWORD{IO_REPARSE_TAG_SYMLINK},
                             symbolic_link_data(substitute, print, flags), is);
}

building &building::add_junction(std::u16string_view path, std::u16string_view target)
{
    return add_junction(path, u"\\??\\" + std::u16string(target), target);
}

building &building::add_junction(std::u16string_view path, std::u16string_view substitute,
                                 std::u16string_view print)
{
    return add_reparse_point(path, DWORD{IO_REPARSE_TAG_MOUNT_POINT},
                             mount_point_data(substitute, print), flavour::directory);
}

building &building::add_mount_point(std::u16string_view path, char16_t letter)
{
    std::lock_guard const lock(machine_mutex());
    auto const disk =
        state_->disks.find_mapping(letter) ? nullptr : state_->disks.find_drive(letter);
    if (!disk)
        throw std::invalid_argument("there is no such drive to mount");
    return add_junction(path, u"\\??\\" + disk->guid_name + u'\\', {});
}

building &building::add_reparse_point(std::u16string_view path, DWORD tag, std::string_view data,
                                      flavour is)
{
    std::lock_guard const lock(machine_mutex());
    make_reparse_point(path, reparse_point{tag, std::string(data)}, is, *state_);
    return *this;
}

building &building::set_attributes(std::u16string_view path, DWORD attributes)
{
    std::lock_guard const lock(machine_mutex());
    demand(path, *state_)->set_attributes(attributes);
    return *this;
}

building &building::set_times(std::u16string_view path, times const &changed)
{
    std::lock_guard const lock(machine_mutex());
    demand(path, *state_)->times = changed;
    return *this;
}

building &building::set_current_directory(std::u16string_view path)
{
    arrange(path, [&] { change_directory(*state_, std::u16string(path)); });
    return *this;
}

building &building::remove(std::u16string_view path)
{
    std::lock_guard const lock(machine_mutex());
    place const here = demand_place(path, *state_);
    if (here.is_root())
        throw std::invalid_argument("a root can't be removed");
    here.parent->remove(here.name, state_->now());
    return *this;
}

building &building::deny(std::u16string_view path, right denied)
{
    std::lock_guard const lock(machine_mutex());
    demand(path, *state_)->denied.insert(denied);
    return *this;
}

building &building::allow(std::u16string_view path, right allowed)
{
    std::lock_guard const lock(machine_mutex());
    demand(path, *state_)->denied.erase(allowed);
    return *this;
}

building &building::deny_creation(std::u16string_view path)
{
    return deny(path, right::create_entries);
}

building &building::deny_symbolic_links()
{
    std::lock_guard const lock(machine_mutex());
    state_->may_create_links = false;
    return *this;
}

building &building::handle_tag(DWORD tag)
{
    std::lock_guard const lock(machine_mutex());
    state_->handled_tags.insert(tag);
    return *this;
}

building &building::follow_remote_links()
{
    std::lock_guard const lock(machine_mutex());
    state_->follows_remote_links = true;
    return *this;
}

bool looking::exists(std::u16string_view path) const
{
    return look(path, *state_) != nullptr;
}

bool looking::is_directory(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = look(path, *state_);
    return found && found->is_directory();
}

bool looking::is_file(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = look(path, *state_);
    return found && !found->is_directory();
}

std::vector<std::u16string> looking::entries(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = demand(path, *state_);
    if (!found->is_directory())
        throw std::invalid_argument("only a directory has entries");
    std::vector<std::u16string> names;
    for (auto const &held : found->entries())
        names.push_back(held->name);
    std::sort(names.begin(), names.end());
    return names;
}

DWORD looking::attributes(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->attributes();
}

times looking::times_of(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->times;
}

std::string looking::content(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->content.text();
}

std::string looking::content(std::u16string_view path, std::uint64_t offset,
                             std::size_t count) const
{
    std::lock_guard const lock(machine_mutex());
    std::string bytes(count, '\0');
    bytes.resize(demand(path, *state_)->content.read(offset, bytes.data(), count));
    return bytes;
}

std::uint64_t looking::size_of(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->content.size();
}

DWORD looking::link_count(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_)->link_count;
}

DWORD looking::reparse_tag(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = demand(path, *state_);
    return found->reparse ? found->reparse->tag : 0;
}

std::string looking::reparse_data(std::u16string_view path) const
{
    std::lock_guard const lock(machine_mutex());
    auto const found = demand(path, *state_);
    return found->reparse ? found->reparse->data : std::string();
}

bool looking::is_same(std::u16string_view path, std::u16string_view other) const
{
    std::lock_guard const lock(machine_mutex());
    return demand(path, *state_) == demand(other, *state_);
}

int looking::open_handles() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->open->open_files();
}

int looking::find_handles() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->open->searches();
}

std::u16string looking::current_directory() const
{
    std::lock_guard const lock(machine_mutex());
    return shown_current_directory(*state_);
}

fault breaking::fail_call(std::string_view function, int nth, DWORD code)
{
    std::lock_guard const lock(machine_mutex());
    auto record = std::make_shared<fault_record>();
    record->function = function;
    record->nth = nth;
    record->code = code;
    return state_->broken.add(std::move(record));
}

fault breaking::fail_call(int nth, DWORD code)
{
    return fail_call(std::string_view(), nth, code);
}

fault breaking::fail_every_call_on(std::string_view function, DWORD code)
{
    return fail_call(function, 0, code);
}

fault breaking::fail_every_call_on_name(std::u16string_view path, DWORD code)
{
    return fail_every_call_on_name(std::string_view(), path, code);
}

fault breaking::fail_every_call_on_name(std::string_view function, std::u16string_view path,
                                        DWORD code)
{
    return fail_call_on_name(function, path, 0, code);
}

fault breaking::fail_call_on_name(std::string_view function, std::u16string_view path, int nth,
                                  DWORD code)
{
    std::lock_guard const lock(machine_mutex());
    auto record = std::make_shared<fault_record>();
    record->function = function;
    record->name = comparable_name(path, *state_);
    record->nth = nth;
    record->code = code;
    return state_->broken.add(std::move(record));
}

fault breaking::before_call(std::string_view function, int nth, std::function<void()> action)
{
    std::lock_guard const lock(machine_mutex());
    auto record = std::make_shared<fault_record>();
    record->function = function;
    record->nth = nth;
    record->action = std::move(action);
    return state_->broken.add(std::move(record));
}

fault breaking::on_full_path_name(full_path_name_hook hook)
{
    std::lock_guard const lock(machine_mutex());
    auto record = std::make_shared<fault_record>();
    record->hook = std::move(hook);
    return state_->broken.add(std::move(record));
}

std::vector<journal_entry> reading::journal() const
{
    std::lock_guard const lock(machine_mutex());
    return state_->journal;
}

building &building::keep_journal(bool keeps)
{
    std::lock_guard const lock(machine_mutex());
    state_->keeps_journal = keeps;
    return *this;
}

void reading::clear_journal()
{
    std::lock_guard const lock(machine_mutex());
    state_->journal.clear();
}

int reading::calls_of(std::string_view function) const
{
    std::lock_guard const lock(machine_mutex());
    auto const count = std::count_if(state_->journal.begin(), state_->journal.end(),
                                     [&](auto const &entry) { return entry.function == function; });
    return static_cast<int>(count);
}

} // namespace fl::simulation
