#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_report.hpp"
#include "flfs/link_advice.hpp"
#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;
using std::filesystem::copy_options;

namespace {

struct option_name
{
    char const *name;
    copy_options option;
    char const *description;
};

// the pairs that exclude each other are left to the library, which says so
constexpr option_name option_names[] = {
    {"-r,--recursive", copy_options::recursive, "Copy all that is below a directory"},
    {"--skip-existing", copy_options::skip_existing, "Leave files at TO as they are"},
    {"--overwrite", copy_options::overwrite_existing, "Replace files at TO"},
    {"--update", copy_options::update_existing, "Replace files at TO that are older"},
    {"-P,--copy-symlinks", copy_options::copy_symlinks, "Copy links and not what they lead to"},
    {"--skip-symlinks", copy_options::skip_symlinks, "Leave links out"},
    {"--directories-only", copy_options::directories_only, "Copy no files"},
    {"--symlinks", copy_options::create_symlinks, "Make symbolic links to files"},
    {"--hard-links", copy_options::create_hard_links, "Give files one more name"},
};

struct copying
{
    std::string kind; ///< the word behind `--as`, or empty
    copy_options options = copy_options::none;
};

void copy_one(std::u16string const &from, std::u16string const &to, copying const &how)
{
    if (how.kind == "file")
        fs::copy_file(from, to, how.options);
    else if (how.kind == "directory")
        fs::copy_directory(from, to);
    else if (how.kind == "symlink")
        fs::copy_symlink(from, to);
    else
        fs::copy(from, to, how.options);
}

void advise(failure &what_failed)
{
    // codes of the C++ standard library: POSIX numbers, whatever Windows calls by them
    constexpr unsigned int is_there = 17;
    constexpr unsigned int not_supported = 130;
    advise_on_links(what_failed);
    if (what_failed.id != fs::fsys_excp_system_error)
        return;
    if (what_failed.code == is_there)
        what_failed.sentence = "They are the same, or a file stands where a directory is to go.";
    if (what_failed.code == not_supported)
        what_failed.sentence = "A link can't be copied over something that is there, and devices "
                               "can't be copied.";
}

/// The library doesn't tell whether it has copied what the options may have it leave out.
bool may_pass_over(copy_options options)
{
    constexpr copy_options declining = copy_options::skip_existing | copy_options::update_existing |
                                       copy_options::skip_symlinks |
                                       copy_options::directories_only | copy_options::copy_symlinks;
    return (options & declining) != copy_options::none;
}

int copy_name(session &session, std::u16string const &from, std::u16string const &to,
              copying const &how)
{
    std::optional<failure> what_failed = failure_of([&] { copy_one(from, to, how); });
    if (what_failed) {
        advise(*what_failed);
        print_failure(session.err, *what_failed, {from, to});
        return exit_failure;
    }
    session.out << (may_pass_over(how.options) ? "copied as far as asked for " : "copied ")
                << displayed_value(fs::upath(from).native()) << " -> "
                << displayed_value(fs::upath(to).native()) << '\n';
    return exit_success;
}

constexpr char const *footer =
    R"(TO is the whole new pathname; only a file that goes to a directory keeps its name in
it. A directory is copied with its files; what lies deeper takes -r. The first failure
ends it, and what was copied stays.
KIND picks a narrower operation:
  file       a file's content, attributes and times to the very name TO
  directory  an empty directory TO, if FROM is a directory; takes no options
  symlink    a symbolic link TO with FROM's text; takes no options)";

} // namespace

void add_cp_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(app, "cp", "Copy a file or directory", footer);
    CLI::Option *from = add_word(*command, "FROM", "what to copy");
    CLI::Option *to = add_word(*command, "TO", "where to");
    auto const how = std::make_shared<copying>();
    for (option_name const &row : option_names)
        command->add_flag_callback(
            row.name, [how, &row] { how->options |= row.option; }, row.description);
    command->add_option("--as", how->kind, "What FROM is taken for: file, directory or symlink")
        ->check(CLI::IsMember({"file", "directory", "symlink"}), "")
        ->option_text("KIND");
    command->parse_complete_callback([how] {
        bool const takes_none = how->kind == "directory" || how->kind == "symlink";
        if (takes_none && how->options != copy_options::none)
            throw CLI::ValidationError("--as " + how->kind + " takes no other options");
    });
    set_disk_action(*command, session, disk_use::change, [&session, from, to, how] {
        return copy_name(session, pathnames_of(*from).front(), pathnames_of(*to).front(), *how);
    });
}

} // namespace flfs
