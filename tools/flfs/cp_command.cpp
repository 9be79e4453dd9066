#include "flfs/commands.hpp"

#include <fl/filesystem/copy_progress.hpp>
#include <fl/filesystem/operations.hpp>

#include "flfs/command.hpp"
#include "flfs/foresight.hpp"
#include "flfs/progress.hpp"

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

/// Keeps what was told of names until a failure.
void copy_tree(session &session, arguments const &names, copy_options options, bool tells_each,
               answer &told)
{
    progress shown(session, "copied");
    fs::copy(names.at(0), names.at(1), options, [&](fs::copy_progress const &so_far) {
        if (tells_each)
            tell_change(told, "copied", {so_far.from, so_far.to});
        shown.tell(so_far.names);
        return true;
    });
}

/// One by one they are told as they are met, also those that options pass over.
void copy_one(session &session, arguments const &names, std::string const &kind,
              copy_options options, bool tells_each, answer &told)
{
    if (kind == "file")
        fs::copy_file(names.at(0), names.at(1), options);
    else if (kind == "directory")
        fs::copy_directory(names.at(0), names.at(1));
    else if (kind == "symlink")
        fs::copy_symlink(names.at(0), names.at(1));
    else
        copy_tree(session, names, options, tells_each, told);
}

void advise_on_copies(failure &what_failed, arguments &)
{
    // codes of the C++ standard library: POSIX numbers, whatever Windows calls by them
    constexpr unsigned int is_there = 17;
    constexpr unsigned int not_supported = 130;
    advise_on_links(what_failed);
    if (what_failed.code == is_there)
        advise(what_failed, fs::fsys_excp_system_error,
               "They are the same, or a file stands where a directory is to go.");
    if (what_failed.code == not_supported)
        advise(what_failed, fs::fsys_excp_system_error,
               "A link can't be copied over something that is there, and devices can't be "
               "copied.");
}

/// The library doesn't tell whether it has copied what the options may have it leave out.
bool may_pass_over(copy_options options)
{
    constexpr copy_options declining = copy_options::skip_existing | copy_options::update_existing |
                                       copy_options::skip_symlinks |
                                       copy_options::directories_only | copy_options::copy_symlinks;
    return (options & declining) != copy_options::none;
}

constexpr char const *help_on_cp =
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
    command cp(app, session, "cp", "Copy a file or directory", help_on_cp);
    option const from = cp.word("FROM", "what to copy");
    option const to = cp.word("TO", "where to");
    std::vector<option> flags;
    for (option_name const &row : option_names)
        flags.push_back(cp.flag(row.name, row.description));
    option const kind = cp.kind("What FROM is taken for: file, directory or symlink",
                                {"file", "directory", "symlink"});
    auto const options = [flags] {
        copy_options all = copy_options::none;
        for (std::size_t i = 0; i < flags.size(); ++i)
            if (flags[i].is_given())
                all |= option_names[i].option;
        return all;
    };
    cp.check([kind, options] {
        bool const takes_none = kind.word() == "directory" || kind.word() == "symlink";
        return takes_none && options() != copy_options::none
                   ? "--as " + kind.word() + " takes no other options"
                   : "";
    });
    option const verbose = cp.flag("-v,--verbose", "Tell each name, not with --as");
    option const dry_run = cp.dry_run();
    exclude(verbose, kind);
    exclude(dry_run, kind);
    auto const ask = [=, &session](arguments const &names) {
        if (dry_run.is_given())
            return foreseen_copy(names.at(0), names.at(1), options());
        answer told;
        told.attempt([&] {
            copy_one(session, names, kind.word(), options(), verbose.is_given(), told);
            char const *const done =
                may_pass_over(options()) ? "copied as far as asked for" : "copied";
            told.values["done"] = done;
            told.text += told_change(done, names) + '\n';
        });
        return told;
    };
    cp.changes(together({from, to}), {{"done", "names"}, ask, advise_on_copies});
}

} // namespace flfs
