#include "flfs/commands.hpp"

#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/operations.hpp>

#include "flfs/colour.hpp"
#include "flfs/command.hpp"
#include "flfs/status_text.hpp"
#include "flfs/text.hpp"

#include <algorithm>
#include <ostream>

// The commands that show what is in directories.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

enum class listing_style
{
    entries,
    all_entries, ///< also those of the directories below
    drawing      ///< the names of all, each below that of its directory
};

std::string shown_name(fs::directory_entry const &entry, std::u16string_view name,
                       std::optional<std::u16string> const &target, bool in_colours)
{
    bool const is_directory = fs::file_status::is_directory(entry.known());
    bool const is_link = entry.is_symlink() || entry.is_junction();
    std::string const shown = painted(displayed_value(name), is_link ? colour::cyan : colour::blue,
                                      in_colours && (is_link || is_directory));
    // no name holds a backslash or a `>`
    return shown + (is_directory ? "\\" : "") + (target ? " -> " + displayed_value(*target) : "");
}

std::string padded(std::string const &text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

/// Type, size, and time to the second: all that the listing tells, without asking again.
std::string columns_of(fs::directory_entry const &entry)
{
    fs::file_status const known = entry.known();
    bool const has_size = fs::file_status::is_regular(known);
    std::string type = entry.is_junction() ? "junction" : type_of(known).description;
    type.resize(15, ' ');
    return "    " + type + padded(has_size ? std::to_string(known.get_size()) : "-", 14) + "  " +
           iso_time(known.get_mtime()).value_or("(no such time)").substr(0, 19) + "  ";
}

json values_of(fs::directory_entry const &entry, std::optional<std::u16string> const &target)
{
    fs::file_status const known = entry.known();
    std::optional<std::string> const written = iso_time(known.get_mtime());
    return {{"pathname", to_json(entry.path().native())},
            {"name", to_json(entry.filename())},
            {"type", type_of(known).identifier},
            {"size", known.get_size()},
            {"written", written ? json(*written) : json()},
            {"leads_to", to_json(target)}};
}

class listing
{
public:
    /// Prints it to `out`, or keeps the values for programs if that is null.
    listing(std::u16string directory, listing_style style, std::ostream *out, bool in_colours)
        : directory_(std::move(directory)), style_(style), out_(out), in_colours_(in_colours)
    {
    }

    /// A failure is told behind the entries that are told until then.
    answer all(fs::directory_options options)
    {
        told_.values["entries"] = json::array();
        if (out_ != nullptr)
            *out_ << shown_native(directory_) << '\n';
        told_.attempt([&] { tell_all(options); });
        return std::move(told_);
    }

private:
    void tell_all(fs::directory_options options)
    {
        if (style_ == listing_style::entries) {
            for (fs::directory_entry const &entry : fs::directory_iterator(directory_, options))
                tell(entry, 0);
            return;
        }
        fs::recursive_directory_iterator const end;
        for (fs::recursive_directory_iterator at(directory_, options); at != end; ++at)
            tell(*at, static_cast<std::size_t>(at.depth()));
    }

    void tell(fs::directory_entry const &entry, std::size_t depth)
    {
        std::optional<std::u16string> target;
        if (entry.is_symlink() || entry.is_junction())
            static_cast<void>(failure_of([&] { target = fs::read_symlink(entry).native(); }));
        if (out_ == nullptr) {
            told_.values["entries"].push_back(values_of(entry, target));
            return;
        }
        std::u16string name = entry.filename();
        directories_.resize(depth);
        if (style_ == listing_style::drawing)
            *out_ << std::string(4 * (depth + 1), ' ')
                  << shown_name(entry, name, target, in_colours_) << '\n';
        else
            *out_ << columns_of(entry) << shown_name(entry, joined_below(name), target, in_colours_)
                  << '\n';
        directories_.push_back(std::move(name));
    }

    /// `name` with those of the directories that it is in, below the one that is listed.
    std::u16string joined_below(std::u16string const &name) const
    {
        std::u16string all;
        for (std::u16string const &directory : directories_)
            all += directory + u'\\';
        return all + name;
    }

    std::u16string directory_;
    listing_style style_;
    std::ostream *out_;
    bool in_colours_;
    std::vector<std::u16string> directories_; ///< on the way to the entry, and the last entry
    answer told_;
};

/// What `ls` and `tree` have in common.
void add_listing(command &listing_command, session &session,
                 std::function<listing_style()> const &style)
{
    option const paths =
        listing_command.words_or_here("PATH", "directory to list; else the current one");
    option const follow = listing_command.flag("--follow", "Enter what links lead to");
    option const skip =
        listing_command.flag("--skip-denied", "Pass over directories that you may not list");
    auto const list = [=, &session](arguments const &about, std::ostream *out) {
        auto options = fs::directory_options::none;
        if (follow.is_given())
            options |= fs::directory_options::follow_directory_symlink;
        if (skip.is_given())
            options |= fs::directory_options::skip_permission_denied;
        return listing(about.front(), style(), out, session.has_colours).all(options);
    };
    question asked = {{"entries"}, [list](arguments const &about) { return list(about, nullptr); }};
    asked.print = [list](arguments const &about, std::ostream &out) { return list(about, &out); };
    listing_command.answers(each(paths), asked);
}

} // namespace

void add_ls_command(CLI::App &app, session &session)
{
    command ls(
        app, session, "ls", "List what is in a directory: type, size, time and name",
        "Times are in UTC. A link is told itself, with where it says that it leads. Where a\n"
        "directory can't be listed the rest is left out, and it is a failure. Links are not\n"
        "entered unless --follow is given, and then a link that leads back is a failure.");
    option const recursive = ls.flag("-r,--recursive", "List all directories below, too");
    add_listing(ls, session, [recursive] {
        return recursive.is_given() ? listing_style::all_entries : listing_style::entries;
    });
}

void add_tree_command(CLI::App &app, session &session)
{
    command tree(app, session, "tree", "Draw the names in a directory and in all below it",
                 "Options, links and failures are those of ls.");
    add_listing(tree, session, [] { return listing_style::drawing; });
}

} // namespace flfs
