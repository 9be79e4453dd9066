#include "flfs/foresight.hpp"

#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>

#include "flfs/text.hpp"

#include <vector>

namespace flfs {

namespace fs = fl::filesystem;
using std::filesystem::copy_options;

namespace {

// codes of the C++ standard library, as copying itself ends in
constexpr unsigned int code_is_there = 17;
constexpr unsigned int code_is_a_directory = 21;
constexpr unsigned int code_not_supported = 130;

bool is_link(fs::file_status const &status)
{
    return fs::file_status::is_symlink(status) || fs::file_status::is_reparse(status);
}

fs::file_status seen(std::u16string const &pathname, bool follows_links)
{
    return follows_links ? fs::status(pathname) : fs::symlink_status(pathname);
}

fs::file_status demanded(std::u16string const &pathname, bool follows_links)
{
    fs::file_status const status = seen(pathname, follows_links);
    if (!fs::file_status::exists(status))
        throw fs::PathNotFound(pathname);
    return status;
}

void demand_directory_above(std::u16string const &pathname)
{
    fs::upath const above = fs::upath(fs::absolute(pathname)).parent_path();
    if (!above.empty() && !fs::is_directory(above))
        throw fs::PathNotFound(pathname);
}

/// Of a tree each directory behind what is in it.
class removal
{
public:
    removal(answer &told, bool takes_read_only) : told_(told), takes_read_only_(takes_read_only) {}

    void remove_tree(std::u16string const &root)
    {
        for (fs::recursive_directory_iterator at(root), end; at != end; ++at) {
            leave(static_cast<std::size_t>(at.depth()));
            if (fs::file_status::is_directory(at->known()) && !at->is_junction())
                directories_.push_back(at->path().native());
            else
                remove(at->path().native());
        }
        leave(0);
        remove(root);
    }

    void remove(std::u16string const &pathname)
    {
        bool const is_read_only =
            (fs::symlink_status(pathname).get_perms() & fs::file_status::owner_write) == 0;
        if (is_read_only && !takes_read_only_)
            throw fs::AccessDenied(pathname);
        tell_change(told_, "would remove", {pathname});
    }

private:
    void leave(std::size_t depth)
    {
        for (; directories_.size() > depth; directories_.pop_back())
            remove(directories_.back());
    }

    answer &told_;
    bool takes_read_only_;
    std::vector<std::u16string> directories_; ///< on the way to the entry
};

class copying
{
public:
    copying(answer &told, copy_options options) : told_(told), options_(options) {}

    void copy(std::u16string const &from, std::u16string const &to)
    {
        demand_directory_above(to);
        if (!copy_name(from, to))
            return;
        bool const keeps_links = has(copy_options::copy_symlinks | copy_options::skip_symlinks);
        auto const follow = keeps_links ? fs::directory_options::none
                                        : fs::directory_options::follow_directory_symlink;
        std::vector<fs::upath> targets = {fs::upath(to)};
        for (fs::recursive_directory_iterator at(from, follow), end; at != end; ++at) {
            targets.resize(static_cast<std::size_t>(at.depth()) + 1);
            targets.push_back(targets.back() / fs::upath(at->filename()));
            if (!has(copy_options::recursive) && fs::is_directory(at->path()))
                at.disable_recursion_pending();
            else if (!copy_name(at->path().native(), targets.back().native()))
                at.disable_recursion_pending();
        }
    }

private:
    bool has(copy_options asked) const { return (options_ & asked) != copy_options::none; }

    void tell(char const *what, std::u16string const &from, std::u16string const &to)
    {
        tell_change(told_, what, {from, to});
    }

    /// Returns whether what is in it is copied, too.
    bool copy_name(std::u16string const &from, std::u16string const &to)
    {
        bool const keeps_links = has(copy_options::copy_symlinks | copy_options::skip_symlinks);
        fs::file_status const what = demanded(from, !keeps_links);
        fs::file_status const there =
            seen(to, !has(copy_options::skip_symlinks | copy_options::create_symlinks));
        bool const is_there = fs::file_status::exists(there);
        if (is_there && fs::equivalent(from, to))
            throw fs::SystemError(code_is_there, from, {to});
        if (is_link(what))
            return copy_link(from, to, is_there), false;
        if (!fs::file_status::is_directory(what))
            return copy_file(from, to, there), false;
        if (fs::file_status::is_regular(there))
            throw fs::SystemError(code_is_there, from, {to});
        if (has(copy_options::create_symlinks))
            throw fs::SystemError(code_is_a_directory, from, {to});
        if (!is_there)
            tell("would make", from, to);
        return has(copy_options::recursive) || !has(copy_options::directories_only);
    }

    void copy_link(std::u16string const &from, std::u16string const &to, bool is_there)
    {
        if (is_there && !has(copy_options::skip_symlinks))
            throw fs::SystemError(code_not_supported, from, {to});
        tell(has(copy_options::skip_symlinks) ? "would pass over" : "would copy", from, to);
    }

    // Down to where there is no such directory: NOLINTNEXTLINE(misc-no-recursion)
    void copy_file(std::u16string const &from, std::u16string const &to,
                   fs::file_status const &there)
    {
        bool const makes_link =
            has(copy_options::create_symlinks | copy_options::create_hard_links);
        if (has(copy_options::directories_only))
            return tell("would pass over", from, to);
        if (fs::file_status::is_directory(there) && !makes_link) {
            std::u16string const inside = (fs::upath(to) / fs::upath(from).filename()).native();
            return copy_file(from, inside, seen(inside, true));
        }
        if (!fs::file_status::exists(there))
            return tell(makes_link ? "would link" : "would copy", from, to);
        bool const is_older = has(copy_options::update_existing) &&
                              fs::last_write_time(from) > fs::last_write_time(to);
        if (!makes_link && (is_older || has(copy_options::overwrite_existing)))
            return tell("would replace", from, to);
        if (makes_link || !has(copy_options::skip_existing | copy_options::update_existing))
            throw fs::FileExistsError(to);
        tell("would pass over", from, to);
    }

    answer &told_;
    copy_options options_;
};

} // namespace

answer foreseen_removal(std::u16string const &pathname, bool is_tree, bool takes_read_only)
{
    answer told;
    removal would(told, takes_read_only);
    told.attempt([&] {
        fs::file_status const what = demanded(pathname, false);
        bool const is_directory = fs::file_status::is_directory(what);
        if (is_directory && is_tree)
            return would.remove_tree(pathname);
        if (is_directory && !fs::is_empty(pathname))
            throw fs::DirectoryNotEmpty(pathname);
        would.remove(pathname);
    });
    return told;
}

std::string foreseen_move(std::u16string const &from, std::u16string const &to)
{
    fs::file_status const what = demanded(from, false);
    demand_directory_above(to);
    fs::file_status const there = seen(to, false);
    bool const replaces = fs::file_status::exists(there) && !fs::equivalent(from, to);
    if (replaces && (fs::file_status::is_directory(there) || fs::file_status::is_directory(what)))
        throw fs::AccessDenied(to); // as the system says it, of directories on either side
    return replaces ? "would move, replacing," : "would move";
}

answer foreseen_copy(std::u16string const &from, std::u16string const &to, copy_options options)
{
    answer told;
    told.attempt([&] { copying(told, options).copy(from, to); });
    return told;
}

} // namespace flfs
