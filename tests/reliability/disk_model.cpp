#include "reliability/disk_model.hpp"

#include "support/translation.hpp"

#include <algorithm>
#include <sstream>

namespace reliability {

using namespace test_support;

namespace {

constexpr DWORD endless_way = ERROR_CANT_RESOLVE_FILENAME;
char16_t const *const volumes[] = {u"C:", u"D:", uR"(\\s\t)"};

/// The volume's number and the names behind it.
std::pair<std::size_t, std::vector<text>> split(text const &p)
{
    std::size_t volume = 0;
    while (!p.starts_with(volumes[volume]))
        ++volume;
    std::vector<text> names;
    std::size_t begin = text(volumes[volume]).size() + 1;
    while (begin < p.size()) {
        std::size_t const end = std::min(p.find(u'\\', begin), p.size());
        names.push_back(p.substr(begin, end - begin));
        begin = end + 1;
    }
    return {volume, names};
}

text joined(std::size_t volume, std::vector<text> const &names, std::size_t count)
{
    text made = volumes[volume];
    for (std::size_t i = 0; i < count; ++i)
        made += u"\\" + names[i];
    return made;
}

bool is_absolute(text const &target)
{
    return target.size() > 1 && target[1] == u':';
}

std::string size_of(thing const &at)
{
    return at.is == thing::directory ? "directory" : "file " + std::to_string(at.content.size());
}

/// A link to a file opens no directory, and the other way round.
found opened_as(thing const &link, found behind)
{
    if (!behind.at || link.is_to_directory == (behind.at->is == thing::directory))
        return behind;
    behind.code = link.is_to_directory ? ERROR_DIRECTORY : ERROR_ACCESS_DENIED;
    behind.at = nullptr;
    return behind;
}

/// What the system says of such a link is up to what was asked for.
bool is_of_wrong_kind(found const &here)
{
    return here.code == ERROR_DIRECTORY || here.code == ERROR_ACCESS_DENIED;
}

} // namespace

std::string shown_failure(failure const &told)
{
    if (told.error_code == endless_way || told.error_code == 8246)
        return endless;
    std::ostringstream out;
    out << told;
    return out.str();
}

disk_model::disk_model()
{
    for (int i = 0; i < 3; ++i) {
        roots_.push_back(std::make_shared<thing>());
        roots_.back()->is = thing::directory;
    }
}

found disk_model::look_from(std::size_t volume, std::vector<text> const &names, bool follows,
                            int &hops, thing const *&opened_link)
{
    found here;
    here.at = roots_[volume];
    for (std::size_t i = 0; i < names.size(); ++i) {
        bool const is_last = i + 1 == names.size();
        if (here.at->is != thing::directory) {
            here.code = ERROR_PATH_NOT_FOUND;
            here.is_below_file = is_last;
            here.at = nullptr;
            return here;
        }
        here.parent = here.at;
        here.name = names[i];
        auto const entry = here.parent->entries.find(names[i]);
        if (entry == here.parent->entries.end()) {
            here.code = is_last ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
            here.at = nullptr;
            return here;
        }
        here.at = entry->second;
        if (here.at->is != thing::link || (is_last && !follows))
            continue;
        if (++hops > 63) {
            here.code = endless_way;
            here.at = nullptr;
            return here;
        }
        text way = here.at->target;
        if (!is_absolute(way))
            way = joined(volume, names, i) + u"\\" + way;
        auto [next, rest] = split(way);
        rest.insert(rest.end(), names.begin() + static_cast<std::ptrdiff_t>(i) + 1, names.end());
        if (is_last && opened_link == nullptr)
            opened_link = here.at.get(); // of several links the first one decides
        return look_from(next, rest, follows, hops, opened_link);
    }
    return here;
}

found disk_model::look(text const &p, bool follows)
{
    auto const [volume, names] = split(p);
    int hops = 0;
    thing const *opened_link = nullptr;
    found const behind = look_from(volume, names, follows, hops, opened_link);
    return opened_link == nullptr ? behind : opened_as(*opened_link, behind);
}

std::string disk_model::told(DWORD code, text const &p)
{
    return code == endless_way ? endless : shown_failure(translated(code, p));
}

text disk_model::free_place(text const &p)
{
    auto const [volume, names] = split(p);
    thing_ptr at = roots_[volume];
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        auto const entry = at->entries.find(names[i]);
        if (entry == at->entries.end() || entry->second->is != thing::directory)
            return {};
        at = entry->second;
    }
    return at->entries.contains(names.back()) ? text() : p;
}

std::string disk_model::put_file(text const &p, std::string const &content)
{
    if (free_place(p).empty())
        return "skip";
    found const place = look(p, false);
    auto made = std::make_shared<thing>();
    made->content = content;
    place.parent->entries[place.name] = made;
    return "put";
}

std::string disk_model::put_link(text const &p, text const &target, bool is_to_directory,
                                 bool is_junction)
{
    if (free_place(p).empty() || p.starts_with(u"\\\\"))
        return "skip";
    found const place = look(p, false);
    auto made = std::make_shared<thing>();
    made->is = thing::link;
    made->is_to_directory = is_to_directory;
    made->is_junction = is_junction;
    made->target = target;
    place.parent->entries[place.name] = made;
    return "put";
}

std::string disk_model::hold(text const &p, bool is_held)
{
    found const at = look(p, false);
    if (!at.at || at.at->is != thing::file || at.at->is_held == is_held)
        return "skip";
    if (!is_held && at.at->held_by != p)
        return "skip";
    at.at->is_held = is_held;
    at.at->held_by = p;
    return "put";
}

DWORD disk_model::make_directory(text const &p)
{
    found const place = look(p, false);
    if (place.at)
        return ERROR_ALREADY_EXISTS;
    if (place.code != ERROR_FILE_NOT_FOUND)
        return place.code;
    auto made = std::make_shared<thing>();
    made->is = thing::directory;
    place.parent->entries[place.name] = made;
    return ERROR_SUCCESS;
}

std::string disk_model::create_directory(text const &p)
{
    DWORD const code = make_directory(p);
    return code == ERROR_SUCCESS ? "done" : told(code, p);
}

/// A directory in the way is none; of several reasons the last one counts that is better than
/// "missing", unless the last level comes to be.
std::string disk_model::create_directories(text const &p)
{
    auto const [volume, names] = split(p);
    DWORD noted = ERROR_SUCCESS;
    DWORD code = ERROR_SUCCESS;
    bool is_created = false;
    for (std::size_t count = 1; count <= names.size(); ++count) {
        text const level = joined(volume, names, count);
        code = make_directory(level);
        is_created = code == ERROR_SUCCESS;
        if (code == ERROR_ALREADY_EXISTS && look(level, false).at->counts_as_directory())
            code = ERROR_SUCCESS;
        bool const is_missing = code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
        if (code != ERROR_SUCCESS && !is_missing)
            noted = code;
    }
    if (is_created)
        return "done";
    if (code == ERROR_SUCCESS)
        return shown_failure(file_exists(p));
    return told(noted != ERROR_SUCCESS ? noted : code, p);
}

std::string disk_model::remove(text const &p)
{
    found const here = look(p, false);
    if (!here.at)
        return told(here.code, p);
    if (here.at->is == thing::directory && !here.at->entries.empty())
        return shown_failure(not_empty(p));
    if (here.at->is_held)
        return shown_failure(system_error(ERROR_SHARING_VIOLATION, p));
    --here.at->names;
    here.parent->entries.erase(here.name);
    return "done";
}

std::string disk_model::remove_file(text const &p)
{
    found const here = look(p, false);
    if (!here.at)
        return told(here.code, p);
    if (here.at->counts_as_directory())
        return shown_failure(file_is_directory(p));
    if (here.at->is_read_only && !here.at->is_held)
        return shown_failure(denied(p));
    return remove(p);
}

std::string disk_model::remove_directory(text const &p)
{
    found const here = look(p, false);
    if (here.at && !here.at->counts_as_directory())
        return shown_failure(not_directory(p));
    return remove(p);
}

/// Returns whether the directory is empty. The first failure ends it.
bool disk_model::remove_below(thing_ptr const &directory, text const &path, std::string &failed)
{
    while (!directory->entries.empty()) {
        auto const [name, at] = *directory->entries.begin();
        text const below = path + u"\\" + name;
        if (at->is == thing::directory) {
            if (!remove_below(at, below, failed))
                return false;
        } else if (at->is_held || at->is_read_only) { // the one is asked for ahead of the other
            failed = shown_failure(at->is_held ? system_error(ERROR_SHARING_VIOLATION, below)
                                               : denied(below));
            return false;
        }
        --at->names;
        directory->entries.erase(name);
    }
    return true;
}

std::string disk_model::remove_all(text const &p)
{
    found const here = look(p, false);
    if (!here.at)
        return told(here.code, p);
    std::string failed;
    if (here.at->is == thing::directory)
        return remove_below(here.at, p, failed) ? remove(p) : failed;
    return here.at->counts_as_directory() ? remove(p) : remove_file(p);
}

void disk_model::remove_what_can_be(thing_ptr const &parent, text const &name, text const &path,
                                    int &removed, std::string &left)
{
    thing_ptr const at = parent->entries.at(name);
    std::vector<text> below;
    for (auto const &[entry, what] : at->entries)
        below.push_back(entry);
    for (text const &entry : below)
        remove_what_can_be(at, entry, path + u"\\" + entry, removed, left);
    if (!at->entries.empty())
        return;
    if (at->is_held) {
        left += ", left " + printable(path);
        return;
    }
    ++removed;
    --at->names;
    parent->entries.erase(name);
}

/// Read-only names, too, and as much as can be removed.
std::string disk_model::remove_all_of(text const &p)
{
    found const here = look(p, false);
    int removed = 0;
    std::string left;
    if (here.code == endless_way || here.code != ERROR_SUCCESS)
        left = ", left " + printable(p);
    else
        remove_what_can_be(here.parent, here.name, p, removed, left);
    return std::to_string(removed) + " removed" + left;
}

/// Whom a failure with two pathnames names is found out by questions about the first.
std::string disk_model::blame(DWORD code, text const &p, text const &q)
{
    found const itself = look(p, false);
    bool const is_symbolic_link =
        itself.at && itself.at->is == thing::link && !itself.at->is_junction;
    if (code == ERROR_ACCESS_DENIED && is_symbolic_link)
        return shown_failure(denied(p));
    found const source = look(p, true);
    if (source.code == endless_way)
        return endless;
    if (source.code == ERROR_ACCESS_DENIED)
        return shown_failure(denied(p)); // whether it is there can't be looked at
    bool const is_missing = code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
    if (!source.at && is_missing)
        return shown_failure(not_found(p));
    if (code == ERROR_ACCESS_DENIED) // whether a missing one can be read isn't answered
        return shown_failure(status(p) != "nothing" ? denied(q) : not_found(u""));
    for (DWORD const of_target : {2U, 3U, 80U, 145U, 183U, 267U}) {
        if (code == of_target)
            return shown_failure(translated(code, q));
    }
    return code == endless_way ? endless : shown_failure(translated(code, p, q));
}

namespace {

bool holds_held(thing const &at)
{
    return std::any_of(at.entries.begin(), at.entries.end(), [](auto const &entry) {
        return entry.second->is_held || holds_held(*entry.second);
    });
}

bool is_in(thing const *wanted, thing_ptr const &tree)
{
    if (tree.get() == wanted)
        return true;
    return std::any_of(tree->entries.begin(), tree->entries.end(),
                       [&](auto const &entry) { return is_in(wanted, entry.second); });
}

} // namespace

std::string disk_model::rename(text const &p, text const &q)
{
    found const from = look(p, false);
    if (!from.at)
        return blame(from.code, p, q);
    found const to = look(q, false);
    if (to.parent && from.at->is == thing::directory && is_in(to.parent.get(), from.at))
        return "skip"; // into itself
    auto const volume_of = [&](thing_ptr const &at) {
        for (std::size_t i = 0; i < roots_.size(); ++i) {
            if (is_in(at.get(), roots_[i]))
                return i;
        }
        return roots_.size();
    };
    if (to.parent && volume_of(from.parent) != volume_of(to.parent))
        return "skip"; // by copying
    if (from.at->is_held)
        return blame(ERROR_SHARING_VIOLATION, p, q);
    if (holds_held(*from.at))
        return "skip"; // the system says either of two codes, by what else is wrong
    if (!to.at) {
        if (to.is_below_file)
            return blame(ERROR_INVALID_PARAMETER, p, q);
        if (to.code != ERROR_FILE_NOT_FOUND)
            return blame(to.code, p, q);
    } else if (to.at == from.at) {
        if (to.parent != from.parent || to.name != from.name) { // another name of one file
            from.parent->entries.erase(from.name);
            --from.at->names;
        }
        return "done";
    } else if (to.at->counts_as_directory() || to.at->is_read_only || to.at->is_held) {
        return blame(ERROR_ACCESS_DENIED, p, q);
    } else {
        --to.at->names;
    }
    thing_ptr const moved = from.at;
    from.parent->entries.erase(from.name);
    to.parent->entries[to.name] = moved;
    return "done";
}

std::string disk_model::copy_file(text const &p, text const &q, bool overwrites)
{
    found const from = look(p, true);
    if (is_of_wrong_kind(from))
        return "skip";
    if (!from.at)
        return blame(from.code, p, q);
    if (from.at->is != thing::file)
        return "skip"; // the codes of directories depend on the target, too
    found const itself = look(q, false);
    found to = look(q, true);
    if (to.at && to.at->is != thing::file)
        return "skip";
    if (!to.at && itself.at)
        return "skip"; // through a link that leads nowhere
    if (!to.at && to.code != ERROR_FILE_NOT_FOUND)
        return blame(to.code, p, q);
    if (to.at && !overwrites)
        return blame(ERROR_FILE_EXISTS, p, q);
    if (to.at && to.at->is_read_only)
        return blame(ERROR_ACCESS_DENIED, p, q);
    if (to.at && to.at == from.at)
        return blame(ERROR_SHARING_VIOLATION, p, q);
    if (to.at && to.at->is_held)
        return "skip";
    if (!to.at) {
        to.at = std::make_shared<thing>();
        to.parent->entries[to.name] = to.at;
    }
    to.at->content = from.at->content;
    to.at->is_read_only = from.at->is_read_only;
    return "done";
}

std::string disk_model::create_hard_link(text const &p, text const &q)
{
    found const from = look(p, false);
    if (!from.at || from.at->is != thing::file || p.starts_with(u"\\\\") || p[0] != q[0])
        return "skip";
    found const to = look(q, false);
    for (std::size_t i = 0; i < roots_.size(); ++i) {
        if (to.parent && is_in(from.at.get(), roots_[i]) != is_in(to.parent.get(), roots_[i]))
            return "skip"; // on another volume, which the system says first
    }
    if (to.at)
        return blame(ERROR_ALREADY_EXISTS, p, q);
    if (to.code != ERROR_FILE_NOT_FOUND)
        return to.is_below_file ? "skip" : blame(to.code, p, q);
    to.parent->entries[to.name] = from.at;
    ++from.at->names;
    return "done";
}

std::string disk_model::resize_file(text const &p, std::size_t size)
{
    found const here = look(p, true);
    if (is_of_wrong_kind(here))
        return "skip";
    if (!here.at)
        return told(here.code, p);
    if (here.at->is == thing::directory)
        return shown_failure(file_is_directory(p));
    if (here.at->is_read_only)
        return shown_failure(denied(p));
    here.at->content.resize(size);
    return "done";
}

std::string disk_model::set_read_only(text const &p, bool is_read_only)
{
    found const here = look(p, false);
    if (!here.at || here.at->is != thing::file)
        return "skip";
    here.at->is_read_only = is_read_only;
    return "done";
}

std::string disk_model::exists(text const &p)
{
    found const here = look(p, true);
    if (here.code == ERROR_ACCESS_DENIED)
        return shown_failure(denied(p));
    return here.code == endless_way ? endless : here.at ? "yes" : "no";
}

/// Hop by hop, where the system follows what stands on the way.
std::string disk_model::status(text const &p)
{
    text way = p;
    for (int hop = 0; hop < 20; ++hop) {
        found const here = look(way, false);
        if (here.code == endless_way)
            return endless;
        if (!here.at)
            return "nothing";
        if (here.at->is != thing::link)
            return size_of(*here.at);
        text const &target = here.at->target;
        way = is_absolute(target) ? target : way.substr(0, way.rfind(u'\\') + 1) + target;
    }
    return endless;
}

std::string disk_model::symlink_status(text const &p)
{
    found const here = look(p, false);
    if (!here.at)
        return here.code == endless_way ? endless : "nothing";
    if (here.at->is == thing::link)
        return here.at->is_junction ? "junction" : "symbolic link";
    return size_of(*here.at);
}

std::string disk_model::file_size(text const &p)
{
    found const here = look(p, true);
    if (!here.at)
        return told(here.code, p);
    if (here.at->is == thing::directory)
        return shown_failure(file_is_directory(p));
    return std::to_string(here.at->content.size());
}

std::string disk_model::hard_link_count(text const &p)
{
    found const here = look(p, true);
    if (!here.at)
        return told(here.code, p);
    return std::to_string(here.at->is == thing::directory ? 1 : here.at->names);
}

std::string disk_model::equivalent(text const &p, text const &q)
{
    found const one = look(p, true);
    found const other = look(q, true);
    if (one.code == endless_way || other.code == endless_way)
        return "skip";
    if (one.code == ERROR_ACCESS_DENIED || other.code == ERROR_ACCESS_DENIED)
        return "skip"; // what can't be looked at
    if (!one.at && !other.at)
        return shown_failure(not_found(p));
    return one.at == other.at ? "yes" : "no";
}

std::string disk_model::read_symlink(text const &p)
{
    found const here = look(p, false);
    if (!here.at)
        return told(here.code, p);
    if (here.at->is == thing::link)
        return printable(here.at->target);
    return shown_failure(translated(ERROR_NOT_A_REPARSE_POINT, p));
}

std::string disk_model::list(text const &p)
{
    found const here = look(p, true);
    if (is_of_wrong_kind(here))
        return "skip";
    if (!here.at)
        return told(here.code, p);
    if (here.at->is != thing::directory)
        return shown_failure(not_directory(p));
    std::string all;
    for (auto const &[name, at] : here.at->entries)
        all += printable(name) + " ";
    return all;
}

namespace {

void add_lines(thing const &at, text const &path, std::vector<std::string> &all)
{
    for (auto const &[name, entry] : at.entries) {
        text const below = path + u"\\" + name;
        std::string line = printable(below);
        if (entry->is == thing::link)
            line += " -> " + printable(entry->target);
        else if (entry->is == thing::file)
            line += " " + entry->content + (entry->is_read_only ? " read-only" : "") + " " +
                    std::to_string(entry->names);
        all.push_back(line);
        add_lines(*entry, below, all);
    }
}

} // namespace

std::vector<std::string> disk_model::lines() const
{
    std::vector<std::string> all;
    for (std::size_t i = 0; i < roots_.size(); ++i)
        add_lines(*roots_[i], volumes[i], all);
    return all;
}

} // namespace reliability
