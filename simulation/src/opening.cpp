#include "opening.hpp"

#include "failure.hpp"

#include <algorithm>
#include <utility>

namespace fl::simulation {

namespace {

struct needed_right
{
    DWORD access;
    right file_right;
    right directory_right;
};

constexpr needed_right needed_rights[] = {
    {FILE_READ_DATA, right::read, right::list},
    {FILE_WRITE_DATA | FILE_APPEND_DATA, right::write, right::create_entries},
    {FILE_READ_EA, right::read_extended_attributes, right::read_extended_attributes},
    {FILE_WRITE_EA | FILE_WRITE_ATTRIBUTES, right::write, right::write},
    {FILE_EXECUTE, right::traverse, right::traverse},
    {FILE_READ_ATTRIBUTES, right::read_attributes, right::read_attributes},
    {DELETE, right::remove, right::remove},
};

void check_rights(node const &target, DWORD access)
{
    for (needed_right const &row : needed_rights) {
        right const asked = target.is_directory() ? row.directory_right : row.file_right;
        if ((access & row.access) != 0 && target.denied.contains(asked))
            throw failure(ERROR_ACCESS_DENIED);
    }
}

/// Which share mode others must grant for this access. Looking at attributes needs none.
DWORD needed_sharing(DWORD access)
{
    DWORD needed = 0;
    if ((access & (FILE_READ_DATA | FILE_EXECUTE)) != 0)
        needed |= FILE_SHARE_READ;
    if ((access & (FILE_WRITE_DATA | FILE_APPEND_DATA)) != 0)
        needed |= FILE_SHARE_WRITE;
    if ((access & DELETE) != 0)
        needed |= FILE_SHARE_DELETE;
    return needed;
}

void check_sharing(node const &target, DWORD access, DWORD share)
{
    DWORD const needed = needed_sharing(access);
    if (needed == 0)
        return;
    for (open_file const *other : target.open_files) {
        DWORD const others_need = needed_sharing(other->access);
        if (others_need == 0)
            continue;
        if ((needed & ~other->share) != 0 || (others_need & ~share) != 0)
            throw failure(ERROR_SHARING_VIOLATION);
    }
}

/// Nobody but a remover opens a read-only file to change its content.
void check_read_only(node const &target, DWORD access)
{
    bool const changes_content = (access & (FILE_WRITE_DATA | FILE_APPEND_DATA)) != 0;
    if (changes_content && !target.is_directory() && target.is_read_only())
        throw failure(ERROR_ACCESS_DENIED);
}

/// Whether it is of the kind that the caller needs. A link to the one kind that leads to
/// the other is told by the link itself.
void check_kind(place const &here, bool ends_in_separator, terms const &how)
{
    kind const wanted = how.wanted;
    bool const leads_to_directory = here.found->target->is_directory();
    bool const is_directory =
        here.is_behind_link ? here.is_behind_directory_link : leads_to_directory;
    check_separator(here, ends_in_separator);
    if (wanted == kind::file && (is_directory || leads_to_directory))
        throw failure(ERROR_ACCESS_DENIED);
    if (wanted == kind::directory && !(is_directory && leads_to_directory))
        throw failure(ERROR_DIRECTORY);
    if (is_directory != leads_to_directory && how.minds_kind_of_link)
        throw failure(is_directory ? ERROR_DIRECTORY : ERROR_ACCESS_DENIED);
}

/// Whether a file stands where the directory right above the last name should be.
bool is_below_file(pathname path, machine_state const &machine)
{
    if (path.elements.empty())
        return false;
    path.elements.pop_back();
    path.ends_in_separator = false;
    try {
        place const above = find_place(path, machine, last_link::follow);
        return above.found && !above.found->target->is_directory();
    } catch (failure const &) {
        return false;
    }
}

} // namespace

DWORD specific_access(DWORD access)
{
    constexpr std::pair<DWORD, DWORD> meanings[] = {
        {GENERIC_READ, FILE_GENERIC_READ},
        {GENERIC_WRITE, FILE_GENERIC_WRITE},
        {GENERIC_EXECUTE, FILE_GENERIC_EXECUTE},
        {GENERIC_ALL, FILE_ALL_ACCESS},
    };
    for (auto const &[generic, specific] : meanings) {
        if ((access & generic) != 0)
            access = (access & ~generic) | specific;
    }
    return access;
}

open_file::open_file(std::shared_ptr<volume> volume_of_it, std::shared_ptr<entry> name_of_it,
                     DWORD wanted_access, DWORD granted_share)
    : disk(std::move(volume_of_it)), name(std::move(name_of_it)), access(wanted_access),
      share(granted_share)
{
    check_rights(target(), access);
    check_sharing(target(), access, share);
    target().open_files.push_back(this);
    disk->open_files.push_back(this);
}

open_file::~open_file()
{
    auto &all = target().open_files;
    std::erase(all, this);
    std::erase(disk->open_files, this);
    // quietly: there is nobody to tell what is in the way
    if (deletes_on_close && target().is_empty())
        name->doom(true);
    bool const is_last =
        is_posix_deletion || std::none_of(all.begin(), all.end(), [this](open_file const *other) {
            return other->name == name;
        });
    std::shared_ptr<node> const parent = name->parent.lock();
    // a machine in the hands of a test can lose the name in the meantime
    if (name->is_delete_pending && is_last && parent && parent->find(name->name) == name)
        parent->remove(name->name, disk->clock->now());
}

void open_file::demand(DWORD needed) const
{
    if (!may(needed))
        throw failure(ERROR_ACCESS_DENIED);
}

std::shared_ptr<open_file> open_existing(machine_state &machine, std::u16string_view text,
                                         terms const &how)
{
    return open_existing(machine, parse_pathname(text, machine), how);
}

std::shared_ptr<open_file> open_existing(machine_state &machine, pathname const &path,
                                         terms const &how)
{
    // what a device is good for is known to CreateFileW alone
    if (path.is_device())
        throw failure(how.wanted == kind::directory ? ERROR_DIRECTORY : ERROR_INVALID_FUNCTION);
    pathname looked_for = path;
    looked_for.wants_directory = how.wanted == kind::directory;
    return open_found(find_existing(std::move(looked_for), machine, how.last),
                      path.ends_in_separator, how);
}

std::shared_ptr<open_file> open_found(place const &here, bool ends_in_separator, terms const &how)
{
    if (here.found->is_delete_pending)
        throw failure(ERROR_ACCESS_DENIED);
    check_kind(here, ends_in_separator, how);
    DWORD const access = specific_access(how.access);
    check_read_only(*here.found->target, access);
    return std::make_shared<open_file>(here.disk, here.found, access, how.share);
}

void check_separator(place const &here, bool ends_in_separator)
{
    if (ends_in_separator && !(here.found && here.found->target->is_directory()))
        throw failure(ERROR_INVALID_NAME);
}

failure collision(entry const &taken, DWORD code)
{
    return failure(taken.is_delete_pending ? ERROR_ACCESS_DENIED : code);
}

void check_creation(place const &here)
{
    auto const directory = here.parent->own_entry.lock();
    bool const is_doomed = directory && directory->is_delete_pending;
    if (is_doomed || here.parent->denied.contains(right::create_entries))
        throw failure(ERROR_ACCESS_DENIED);
}

place find_new_place(pathname const &path, machine_state const &machine)
{
    try {
        return find_place(path, machine);
    } catch (failure const &refusal) {
        if (refusal.code() == ERROR_PATH_NOT_FOUND && is_below_file(path, machine))
            throw failure(ERROR_INVALID_PARAMETER);
        throw;
    }
}

std::shared_ptr<open_file> open_directory_of(place const &here)
{
    check_creation(here);
    return std::make_shared<open_file>(here.disk, here.parent->own_entry.lock(), FILE_WRITE_DATA,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE);
}

std::shared_ptr<entry> create_entry(place const &here, bool ends_in_separator, DWORD attributes)
{
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        check_separator(here, ends_in_separator);
    check_creation(here);
    return node::add(here.parent, here.name, here.disk->make_node(attributes),
                     here.disk->clock->now());
}

void mark_for_deletion(open_file const &file, bool ignores_read_only)
{
    node const &target = file.target();
    bool const is_root = file.name == file.disk->root;
    if (is_root || (target.is_read_only() && !ignores_read_only))
        throw failure(ERROR_ACCESS_DENIED);
    if (target.is_directory() && !target.is_empty())
        throw failure(ERROR_DIR_NOT_EMPTY);
    file.name->doom(true);
}

} // namespace fl::simulation
