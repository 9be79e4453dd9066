#include "lookup.hpp"

#include "failure.hpp"
#include "names.hpp"
#include "reparse_data.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

/// So many links the system follows for one pathname. The next one is too many.
constexpr int most_links = 63;

/// A walk ends at a place, or at a link that sends it elsewhere.
struct walk_end
{
    place here;
    std::size_t names_walked = 0;
    bool is_at_link = false;
};

/// Whether a reparse point turns the walk aside, instead of being dealt with where it is.
bool turns_aside(node const &target, machine_state const &machine)
{
    return target.reparse && !machine.handled_tags.contains(target.reparse->tag);
}

void check_traversal(node const &directory)
{
    if (directory.denied.contains(right::traverse))
        throw failure(ERROR_ACCESS_DENIED);
}

/// What is refused whatever the disk holds: a volume as a directory, and an empty name.
void check_form(pathname const &path)
{
    if (path.is_raw_volume)
        throw failure(ERROR_INVALID_PARAMETER);
    if (std::find(path.elements.begin(), path.elements.end(), u"") != path.elements.end())
        throw failure(ERROR_INVALID_NAME);
}

/// A stream is no directory, whether it is there or not.
void check_name(std::u16string_view name, bool wants_directory)
{
    if (wants_directory && is_stream_name(name))
        throw failure(ERROR_DIRECTORY);
    if (!is_valid_name(name))
        throw failure(ERROR_INVALID_NAME);
}

walk_end walk(pathname const &path, machine_state const &machine, last_link last, looker who)
{
    check_form(path);
    walk_end end;
    end.here.disk = path.disk;
    // pathnames have thousands of names at times: nothing is copied on the way
    std::shared_ptr<entry> const *here = &path.disk->root;
    std::shared_ptr<entry> const *above = nullptr;
    for (std::u16string_view const name : path.elements) {
        // A missing directory and a file in the place of one are told alike.
        if (!*here || !(*here)->target->is_directory())
            throw failure(ERROR_PATH_NOT_FOUND);
        above = here;
        if (who == looker::caller)
            check_traversal(*(*above)->target);
        here = &(*above)->target->find(name);
        ++end.names_walked;
        bool const is_last = end.names_walked == path.elements.size();
        if (!*here)
            check_name(name, is_last && path.wants_directory);
        end.is_at_link = *here && turns_aside(*(*here)->target, machine) &&
                         !(is_last && last == last_link::keep);
        if (end.is_at_link)
            break;
    }
    end.here.found = *here;
    if (above != nullptr) {
        end.here.parent = (*above)->target;
        end.here.name = path.elements[end.names_walked - 1];
    }
    return end;
}

/// Adds names to those of a directory. Only here, in relative links, does the system
/// itself resolve dots by text; above the root there is nothing.
void append_relative(pathname &path, std::u16string_view text)
{
    pathname parsed;
    split(text, parsed);
    path.texts.insert(path.texts.end(), parsed.texts.begin(), parsed.texts.end());
    for (std::u16string_view const name : parsed.elements) {
        if (name != u"." && name != u"..")
            path.elements.push_back(name);
        else if (name == u".." && !path.elements.empty())
            path.elements.pop_back();
    }
}

/// Where a link in `path` leads that stands behind `count` names. The links among
/// those were followed before, so that they are the way as it is on disk.
pathname target_of(redirection const &link, pathname const &path, std::size_t count,
                   machine_state const &machine)
{
    if (!link.is_relative) {
        if (!link.target.starts_with(u'\\'))
            throw failure(ERROR_BAD_PATHNAME);
        if (!link.target.starts_with(u"\\??\\"))
            throw failure(ERROR_PATH_NOT_FOUND);
        return parse_object(std::u16string_view(link.target).substr(4), machine);
    }
    pathname target;
    target.disk = path.disk;
    std::u16string_view text = link.target;
    if (text.starts_with(u'\\'))
        text.remove_prefix(1);
    else
        target.elements.assign(path.elements.begin(),
                               path.elements.begin() + static_cast<std::ptrdiff_t>(count));
    append_relative(target, text);
    return target;
}

/// What a client does about a link on a share. The server follows junctions by
/// itself, on disks that this machine knows nothing of.
void check_remote_link(reparse_point const &point, machine_state const &machine)
{
    if (point.tag == IO_REPARSE_TAG_MOUNT_POINT)
        throw failure(ERROR_PATH_NOT_FOUND);
    if (!machine.follows_remote_links)
        throw failure(ERROR_SYMLINK_CLASS_DISABLED);
}

pathname redirected(pathname const &path, walk_end const &end, machine_state const &machine)
{
    reparse_point const &point = *end.here.found->target->reparse;
    if (point.tag != IO_REPARSE_TAG_SYMLINK && point.tag != IO_REPARSE_TAG_MOUNT_POINT)
        throw failure(ERROR_CANT_ACCESS_FILE);
    if (path.disk->is_remote)
        check_remote_link(point, machine);
    pathname target = target_of(decode(point), path, end.names_walked - 1, machine);
    if (target.is_device())
        throw failure(ERROR_CANT_ACCESS_FILE);
    target.texts.insert(target.texts.end(), path.texts.begin(), path.texts.end());
    target.elements.insert(target.elements.end(),
                           path.elements.begin() + static_cast<std::ptrdiff_t>(end.names_walked),
                           path.elements.end());
    target.ends_in_separator = path.ends_in_separator;
    target.wants_directory = path.wants_directory;
    target.is_raw_volume = target.is_raw_volume && target.elements.empty();
    return target;
}

} // namespace

place find_place(pathname const &path, machine_state const &machine, last_link last, looker who)
{
    if (path.is_device())
        throw failure(ERROR_INVALID_FUNCTION); // nothing is below it
    pathname const *here = &path;
    pathname behind_link;
    bool is_behind_link = false;
    bool is_behind_directory_link = false;
    for (int followed = 0;; ++followed) {
        walk_end end = walk(*here, machine, last, who);
        if (!end.is_at_link) {
            end.here.is_behind_link = is_behind_link;
            end.here.is_behind_directory_link = is_behind_directory_link;
            return end.here;
        }
        if (followed == most_links)
            throw failure(ERROR_CANT_RESOLVE_FILENAME);
        if (end.names_walked == here->elements.size() && !is_behind_link) {
            is_behind_link = true;
            is_behind_directory_link = end.here.found->target->is_directory();
        }
        behind_link = redirected(*here, end, machine);
        here = &behind_link;
    }
}

place find_existing(pathname const &path, machine_state const &machine, last_link last, looker who)
{
    place here = find_place(path, machine, last, who);
    if (!here.found)
        throw failure(ERROR_FILE_NOT_FOUND);
    return here;
}

bool is_directory_at(std::u16string_view text, machine_state const &machine)
{
    try {
        place const here = find_place(parse_literal(text, machine), machine, last_link::follow);
        return here.found && here.found->target->is_directory();
    } catch (failure const &) {
        return false;
    }
}

} // namespace fl::simulation
