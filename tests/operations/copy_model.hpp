#ifndef FL_FILESYSTEM_TESTS_OPERATIONS_COPY_MODEL_HPP
#define FL_FILESYSTEM_TESTS_OPERATIONS_COPY_MODEL_HPP
// A small disk as a map, and what copying does to it, told a second time: by the table of
// kinds and options alone, without a handle or a buffer. Pathnames are absolute, and links
// lead to absolute ones.

#include "support/failure.hpp"

#include <simulation/machine.hpp>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace copy_model {

using std::filesystem::copy_options;

inline bool has(copy_options options, copy_options asked)
{
    return (options & asked) != copy_options::none;
}

struct node
{
    DWORD attributes = 0;
    DWORD tag = 0;
    std::string data; ///< content, or what stands in a reparse point
    std::u16string leads_to;
    std::uint64_t written = 0;

    bool is_directory() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

/// Names of one file share a node. A drive's root is `C:`.
using disk = std::map<std::u16string, std::shared_ptr<node>>;

/// What the bytes of the links in a test lead to.
using link_targets = std::map<std::string, std::u16string>;

inline std::u16string name_of(std::u16string const &path)
{
    return path.substr(path.rfind(u'\\') + 1);
}

// From a machine, and to something that can be compared.

inline void read_node(simulation::simulated_machine const &machine, std::u16string const &path,
                      link_targets const &targets, disk &all)
{
    std::u16string const asked = path.size() == 2 ? path + u'\\' : path;
    auto read = std::make_shared<node>();
    read->attributes = machine.attributes(asked);
    read->tag = machine.reparse_tag(asked);
    if (read->tag != 0) {
        read->data = machine.reparse_data(asked);
        if (auto const known = targets.find(read->data); known != targets.end())
            read->leads_to = known->second;
    } else if (!read->is_directory()) {
        read->data = machine.content(asked);
    }
    read->written = machine.times_of(asked).write;
    bool const may_be_shared = !read->is_directory() && machine.link_count(asked) > 1;
    for (auto const &[name, other] : all) {
        if (may_be_shared && !other->is_directory() && machine.is_same(name, path))
            read = other;
    }
    all[path] = read;
    if (!read->is_directory() || read->tag != 0)
        return;
    for (std::u16string const &name : machine.entries(asked))
        read_node(machine, path + u'\\' + name, targets, all);
}

inline disk read_disk(simulation::simulated_machine const &machine, link_targets const &targets)
{
    disk all;
    read_node(machine, u"C:", targets, all);
    read_node(machine, u"D:", targets, all);
    return all;
}

/// One line for each name, with all that is to be compared.
inline std::vector<std::string> lines_of(disk const &shown)
{
    std::vector<std::string> lines;
    std::map<node const *, std::string> first_names;
    for (auto const &[path, what] : shown) {
        std::string const name = test_support::printable(path);
        auto const [first, is_new] = first_names.emplace(what.get(), name);
        std::string line = name + (is_new ? "" : " is " + first->second);
        line += ", attributes " + std::to_string(what->attributes);
        line += ", tag " + std::to_string(what->tag);
        if (!what->is_directory() && what->tag == 0)
            line += ", written " + std::to_string(what->written);
        line += ": " + what->data;
        lines.push_back(line);
    }
    return lines;
}

// What the system does.

struct found
{
    DWORD code;
    std::u16string path;        ///< behind all links that were followed
    std::shared_ptr<node> what; ///< also if it is no directory where a link says so, or is one
    bool is_behind_directory_link = false;
};

/// A link to a directory must lead to one, and a link to a file to a file.
inline DWORD code_of_flavours(bool link_says_directory, bool is_directory)
{
    if (link_says_directory == is_directory)
        return ERROR_SUCCESS;
    return link_says_directory ? ERROR_DIRECTORY : ERROR_ACCESS_DENIED;
}

inline found find(disk const &all, std::u16string path, bool follows_last)
{
    std::optional<bool> says_directory; // the first link for the last name
    std::size_t end = 2;
    for (;;) {
        bool const is_last = end == path.size();
        auto const here = all.find(path.substr(0, end));
        if (here == all.end())
            return {is_last ? DWORD{ERROR_FILE_NOT_FOUND} : DWORD{ERROR_PATH_NOT_FOUND},
                    path,
                    {},
                    says_directory.value_or(false)};
        std::shared_ptr<node> const &what = here->second;
        if (what->tag != 0 && (!is_last || follows_last)) {
            if (what->leads_to.empty())
                return {ERROR_CANT_ACCESS_FILE, path, {}};
            if (is_last && !says_directory)
                says_directory = what->is_directory();
            path = what->leads_to + path.substr(end);
            end = 2;
        } else if (is_last) {
            bool const said = says_directory.value_or(what->is_directory());
            return {code_of_flavours(said, what->is_directory()), path, what, said};
        } else if (!what->is_directory()) {
            return {ERROR_PATH_NOT_FOUND, path, {}};
        } else {
            end = std::min(path.find(u'\\', end + 1), path.size());
        }
    }
}

inline DWORD call_copy_file(disk &all, std::u16string const &from, std::u16string const &to,
                            bool fails_if_there)
{
    found const source = find(all, from, true);
    if (source.code != ERROR_SUCCESS)
        return source.code;
    if (source.what->is_directory())
        return ERROR_ACCESS_DENIED;
    found const target = find(all, to, true);
    if (!target.what && target.code != ERROR_FILE_NOT_FOUND)
        return target.code;
    if (target.what && fails_if_there)
        return ERROR_FILE_EXISTS;
    constexpr DWORD protecting = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    if (target.what && (target.what->attributes & protecting) != 0)
        return ERROR_ACCESS_DENIED;
    if (target.what == source.what)
        return ERROR_SHARING_VIOLATION;
    if (target.is_behind_directory_link)
        return ERROR_ACCESS_DENIED;
    auto const written = target.what ? target.what : std::make_shared<node>();
    *written = *source.what;
    written->attributes |= FILE_ATTRIBUTE_ARCHIVE;
    all[target.path] = written;
    return ERROR_SUCCESS;
}

/// Gives `made` a name that nothing may have.
inline DWORD add(disk &all, std::u16string const &path, std::shared_ptr<node> made)
{
    found const place = find(all, path, false);
    if (place.code == ERROR_SUCCESS)
        return ERROR_ALREADY_EXISTS;
    if (place.code == ERROR_FILE_NOT_FOUND)
        all[place.path] = std::move(made);
    return place.code == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : place.code;
}

inline std::shared_ptr<node> new_directory()
{
    auto made = std::make_shared<node>();
    made->attributes = FILE_ATTRIBUTE_DIRECTORY;
    made->written = std::numeric_limits<std::uint64_t>::max(); // now
    return made;
}

/// That a directory is there is no error; a link to one has its attribute.
inline DWORD make_directory(disk &all, std::u16string const &path)
{
    DWORD const code = add(all, path, new_directory());
    bool const is_there =
        code == ERROR_ALREADY_EXISTS && find(all, path, false).what->is_directory();
    return is_there ? DWORD{ERROR_SUCCESS} : code;
}

/// The system opens the directory of a name, and finds that it is none.
inline bool is_right_below_a_file(disk const &all, std::u16string const &path)
{
    std::size_t const separator = path.rfind(u'\\');
    if (separator < 3)
        return false;
    found const above = find(all, path.substr(0, separator), true);
    return above.code == ERROR_SUCCESS && !above.what->is_directory();
}

inline DWORD make_hard_link(disk &all, std::u16string const &path, std::u16string const &existing)
{
    if (is_right_below_a_file(all, path))
        return ERROR_INVALID_PARAMETER;
    found const source = find(all, existing, false);
    found const place = find(all, path, false);
    bool const is_reached = place.code == ERROR_SUCCESS || place.code == ERROR_FILE_NOT_FOUND;
    if (is_reached && place.path.front() != source.path.front())
        return ERROR_NOT_SAME_DEVICE;
    return add(all, path, source.what);
}

inline DWORD make_file_link(disk &all, std::u16string const &path, std::u16string const &target)
{
    auto made = std::make_shared<node>();
    made->attributes = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT;
    made->tag = IO_REPARSE_TAG_SYMLINK;
    made->data = simulation::symbolic_link_data(uR"(\??\)" + target, target, 0);
    made->leads_to = target;
    return add(all, path, made);
}

// What the facility makes of it.

enum class type
{
    none,
    not_found,
    regular,
    directory,
    symlink,
    junction
};

/// How a copy ends. The facility's own refusals are generic.
struct answer
{
    DWORD number = 0;
    bool is_generic = false;

    bool has_failed() const { return number != 0; }
};

inline constexpr answer file_exists{17, true};
inline constexpr answer is_a_directory{21, true};
inline constexpr answer not_supported{130, true};

class copying
{
public:
    copying(disk &all, copy_options options) : all_(all), options_(options) {}

    answer copy(std::u16string const &from, std::u16string const &to);
    answer copy_file(std::u16string const &from, std::u16string const &to);

private:
    bool has(copy_options asked) const { return copy_model::has(options_, asked); }
    type look(std::u16string const &path, bool follows) const;
    bool are_same(std::u16string const &left, std::u16string const &right) const;
    answer copy_regular(std::u16string const &from, std::u16string const &to, type to_type);
    answer copy_directory(std::u16string const &from, std::u16string const &to, type to_type);

    disk &all_;
    copy_options options_;
};

inline type copying::look(std::u16string const &path, bool follows) const
{
    found const seen = find(all_, path, follows);
    if (seen.code == ERROR_CANT_ACCESS_FILE || seen.code == ERROR_ACCESS_DENIED)
        return type::none;
    if (seen.code != ERROR_SUCCESS)
        return type::not_found;
    if (seen.what->tag == IO_REPARSE_TAG_SYMLINK)
        return type::symlink;
    if (seen.what->tag == IO_REPARSE_TAG_MOUNT_POINT)
        return type::junction;
    return seen.what->is_directory() ? type::directory : type::regular;
}

inline bool copying::are_same(std::u16string const &left, std::u16string const &right) const
{
    found const one = find(all_, left, true);
    found const other = find(all_, right, true);
    bool const are_there = one.code == ERROR_SUCCESS && other.code == ERROR_SUCCESS;
    return are_there && one.what == other.what;
}

inline answer copying::copy(std::u16string const &from, std::u16string const &to)
{
    bool const follows_from =
        !has(copy_options::copy_symlinks) && !has(copy_options::skip_symlinks);
    bool const follows_to =
        !has(copy_options::skip_symlinks) && !has(copy_options::create_symlinks);
    if (DWORD const code = find(all_, from, follows_from).code; code != ERROR_SUCCESS)
        return {code};
    type const from_type = look(from, follows_from);
    type const to_type = look(to, follows_to);
    if (to_type == type::none)
        return {find(all_, to, follows_to).code};
    bool const is_there = to_type != type::not_found;
    if (is_there && are_same(from, to))
        return file_exists;
    if (from_type == type::regular)
        return copy_regular(from, to, to_type);
    if (from_type == type::directory)
        return copy_directory(from, to, to_type);
    if (has(copy_options::skip_symlinks))
        return {};
    if (is_there)
        return from_type == type::symlink ? not_supported : answer{};
    DWORD const code = add(all_, to, std::make_shared<node>(*find(all_, from, false).what));
    // a broken link has the name: no place for a link, and for a junction a directory
    bool const is_quiet = code == ERROR_ALREADY_EXISTS && from_type == type::junction &&
                          find(all_, to, false).what->is_directory();
    return is_quiet ? answer{} : answer{code};
}

inline answer copying::copy_regular(std::u16string const &from, std::u16string const &to,
                                    type to_type)
{
    if (has(copy_options::directories_only))
        return {};
    if (has(copy_options::create_symlinks))
        return {make_file_link(all_, to, from)};
    if (has(copy_options::create_hard_links))
        return {make_hard_link(all_, to, from)};
    return copy_file(from, to_type == type::directory ? to + u'\\' + name_of(from) : to);
}

inline answer copying::copy_directory(std::u16string const &from, std::u16string const &to,
                                      type to_type)
{
    if (to_type == type::regular)
        return file_exists;
    if (has(copy_options::create_symlinks))
        return is_a_directory;
    if (DWORD const code = make_directory(all_, to); code != ERROR_SUCCESS)
        return {code};
    bool const is_tree = has(copy_options::recursive);
    if (has(copy_options::directories_only) && !is_tree)
        return {};
    found const directory = find(all_, from, true);
    if (directory.code != ERROR_SUCCESS)
        return {directory.code};
    std::vector<std::u16string> names;
    for (auto const &[path, what] : all_) {
        if (path.size() > 2 && path.substr(0, path.rfind(u'\\')) == directory.path)
            names.push_back(name_of(path));
    }
    for (std::u16string const &name : names) {
        std::u16string const entry = from + u'\\' + name;
        if (!is_tree && look(entry, true) == type::directory)
            continue;
        if (answer const ended = copy(entry, to + u'\\' + name); ended.has_failed())
            return ended;
    }
    return {};
}

inline answer copying::copy_file(std::u16string const &from, std::u16string const &to)
{
    DWORD const code = call_copy_file(all_, from, to, !has(copy_options::overwrite_existing));
    bool const yields = has(copy_options::skip_existing | copy_options::update_existing);
    if (code != ERROR_FILE_EXISTS || !yields)
        return {code};
    if (are_same(from, to))
        return {ERROR_SHARING_VIOLATION};
    found const target = find(all_, to, true); // whether it is the same can't be told otherwise
    if (target.code != ERROR_SUCCESS)
        return {target.code};
    bool const is_older = target.what->written < find(all_, from, true).what->written;
    if (has(copy_options::skip_existing) || !is_older)
        return {};
    return {call_copy_file(all_, from, to, false)};
}

} // namespace copy_model

#endif
