#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>
#include <fl/filesystem/removal.hpp>

#include "flfs/command.hpp"
#include "flfs/foresight.hpp"
#include "flfs/progress.hpp"
#include "flfs/status_text.hpp"

#include <CLI/CLI.hpp>

// The commands that make, move, remove and change names.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

void advise_on_making(failure &what_failed, bool parents)
{
    advise(what_failed, fs::fsys_excp_path_not_found,
           parents ? "A drive or share on the way to it doesn't exist. Check the spelling."
                   : "The directory above it doesn't exist. Use --parents to make it, too.");
    advise(what_failed, fs::fsys_excp_access_denied,
           "You have no right to make it. Check the permissions above it.");
}

void advise_on_removal(failure &what_failed, bool minds_read_only)
{
    advise(what_failed, fs::fsys_excp_access_denied,
           minds_read_only ? "It is read-only, which `flfs chmod +w` changes, or you have no right "
                             "to remove it."
                           : "You have no right to remove it. Check the permissions.");
    if (!minds_read_only)
        advise(what_failed, fs::fsys_excp_directory_not_empty,
               "The directory isn't empty. Use -r to remove what is in it, too.");
}

std::string complaint_about_size(std::string const &word)
{
    constexpr std::size_t most_digits = 18; // of an exabyte, beyond all files
    bool const is_number = word.find_first_not_of("0123456789") == word.npos;
    return is_number && !word.empty() && word.size() <= most_digits
               ? ""
               : (word.empty() ? "(empty)" : word) + " is no number of bytes";
}

/// What the options of a removal bring with them: all that is left is told, and what is gone is
/// counted.
answer remove_counted(session &session, std::u16string const &pathname, fs::removal_options options,
                      bool tells_each)
{
    progress shown(session, "removed");
    answer told;
    options.on_progress([&](fs::removal_progress const &so_far) {
        if (tells_each)
            tell_change(told, "removed", {so_far.path_name});
        shown.tell(so_far.removed);
        return true;
    });
    fs::removal_report const report = fs::remove_all(pathname, options);
    std::string const names =
        std::to_string(report.removed()) + (report.removed() == 1 ? " name" : " names");
    told.values["removed"] = report.removed();
    if (report.is_complete())
        told.values["done"] = "removed";
    told.text += report.is_complete() ? "removed " + shown_native(pathname) + ", " + names + '\n'
                                      : "removed " + names + " of " + shown_native(pathname) + '\n';
    for (fs::failure const &left : report.failures())
        told.failures.push_back(describe(left));
    return told;
}

/// A directory that is there is no place to move something into, and Windows says that the right
/// is missing.
void advise_on_moves(failure &what_failed, std::u16string const &from, std::u16string const &to)
{
    bool is_directory = false;
    static_cast<void>(failure_of([&] { is_directory = fs::is_directory(to); }));
    if (is_directory && what_failed.id != fs::fsys_excp_path_not_found)
        what_failed.sentence = "TO is a directory. Give the whole new pathname: " +
                               shown_native((fs::upath(to) / fs::upath(from).filename()).native()) +
                               " moves into it.";
}

std::string remove_one(std::u16string const &pathname, bool is_tree, std::string const &kind)
{
    if (is_tree)
        fs::remove_all(pathname);
    else if (kind == "file")
        fs::remove_file(pathname);
    else if (kind == "directory")
        fs::remove_directory(pathname);
    else
        fs::remove(pathname);
    return pathname.empty() ? "passed over" : "removed"; // as the library does
}

/// The message about a `word` that is none, or none.
std::string complaint_about(std::string const &word)
{
    if (permission_word(word))
        return "";
    return (word.empty() ? "(empty)" : word) + " is no sign +, - or = with letters out of rwxashi";
}

} // namespace

void add_mkdir_command(CLI::App &app, session &session)
{
    command mkdir(
        app, session, "mkdir", "Make directories, long pathnames included",
        "The PATHs are made in order, up to the first failure. A directory that is there\n"
        "already is a failure, too.");
    option const paths = mkdir.words("PATH", "directory to make");
    option const parents = mkdir.flag("-p,--parents", "Make missing directories above PATH, too");
    option const like =
        mkdir.value("--like", "DIRECTORY", "Give PATH the attributes of this directory");
    exclude(like, parents);
    auto const make = [parents, like](arguments const &names) {
        if (parents.is_given())
            fs::create_directories(names.front());
        else if (like.is_given())
            fs::create_directory(names.front(), like.pathname());
        else
            fs::create_directory(names.front());
        return "made";
    };
    auto const advise = [parents](failure &what_failed, arguments &) {
        advise_on_making(what_failed, parents.is_given());
    };
    mkdir.changes(each_as_written(paths), make, advise,
                  true); // what follows may be meant to stand in it
}

void add_ensure_command(CLI::App &app, session &session)
{
    command ensure(app, session, "ensure", "Have a directory be there: make it if it isn't",
                   "Missing directories above PATH are made, too. Anything else of that name is a\n"
                   "failure, a link to a directory is not.");
    option const paths = ensure.words("PATH", "directory to have");
    auto const make = [](arguments const &names) {
        return fs::ensure_directories(names.front()) ? "made" : "there already:";
    };
    auto const advise = [](failure &what_failed, arguments &) {
        advise_on_making(what_failed, true);
    };
    ensure.changes(each_as_written(paths), make, advise);
}

void add_resize_command(CLI::App &app, session &session)
{
    command resize(app, session, "resize", "Cut a file, or make it longer with zeros",
                   "Links are followed.");
    option const size = resize.word("SIZE", "size in bytes", complaint_about_size);
    option const paths = resize.words("PATH", "file to change");
    auto const make = [size](arguments const &names) {
        fs::resize_file(names.front(), std::stoull(size.word()));
        return "resized";
    };
    resize.changes(each(paths), make);
}

void add_mv_command(CLI::App &app, session &session)
{
    command mv(app, session, "mv", "Give a file or directory another name or place",
               "TO is the whole new pathname, also where a directory of that name is there. A\n"
               "file at TO is replaced. Files can go to another volume, directories can't. A\n"
               "link is renamed itself.");
    option const from = mv.word("FROM", "what to rename", complaint_about_stops);
    option const to = mv.word("TO", "its new pathname", complaint_about_stops);
    option const dry_run = mv.dry_run();
    auto const make = [dry_run](arguments const &names) -> std::string {
        if (dry_run.is_given())
            return foreseen_move(names.at(0), names.at(1));
        fs::rename(names.at(0), names.at(1));
        return "moved";
    };
    mv.changes(together({from, to}), make, [](failure &what_failed, arguments &names) {
        advise_on_moves(what_failed, names.at(0), names.at(1));
    });
}

void add_rm_command(CLI::App &app, session &session)
{
    command rm(app, session, "rm", "Remove files, links and empty directories",
               "Nothing is asked back, and nothing goes to a bin. A link is removed itself, and\n"
               "never what it leads to.\n"
               "With -r, a read-only file ends the removal of its PATH, and what was removed by\n"
               "then stays removed; --force and --keep-going do otherwise. Without -r, read-only\n"
               "files are removed, too.");
    option const paths = rm.words("PATH", "name to remove", complaint_about_stops);
    option const tree = rm.flag("-r,--recursive", "Remove directories with all that is in them");
    option const read_only = rm.flag("-f,--force", "With -r: remove read-only names, too");
    option const on = rm.flag("-k,--keep-going", "With -r: go on after failures, and tell each");
    option const count = rm.flag("--count", "With -r: tell how many names were removed");
    option const verbose = rm.flag("-v,--verbose", "With -r: tell each name that is removed");
    option const dry_run = rm.dry_run();
    option const kind =
        rm.kind("Remove nothing else: file (not if read-only) or directory", {"file", "directory"});
    exclude(kind, tree);
    for (option const &of_trees : {read_only, on, count, verbose})
        of_trees.raw().needs(&tree.raw())->option_text(" "); // else CLI11 writes "Needs:"
    question asked = change(
        [tree, kind](arguments const &names) {
            return remove_one(names.front(), tree.is_given(), kind.word());
        },
        [tree, kind](failure &what_failed, arguments &) {
            advise_on_removal(what_failed, tree.is_given() || kind.word() == "file");
        });
    asked.keys = {"done", "removed", "names"};
    asked.may_fail_often = true;
    asked.ask = [=, &session, plain = asked.ask](arguments const &names) {
        if (dry_run.is_given())
            return foreseen_removal(names.front(), tree.is_given(),
                                    read_only.is_given() || !tree.is_given());
        bool const is_plain =
            !read_only.is_given() && !on.is_given() && !count.is_given() && !verbose.is_given();
        fs::removal_options options;
        options.clear_read_only(read_only.is_given()).keep_going(on.is_given());
        return is_plain ? plain(names)
                        : remove_counted(session, names.front(), options, verbose.is_given());
    };
    rm.changes(each(paths), asked);
}

void add_chmod_command(CLI::App &app, session &session)
{
    command chmod(
        app, session, "chmod", "Change whether names are read-only, hidden and so on",
        "WORD is a sign, + to set, - to take away, = to set and take away all others,\n"
        "and letters. On Windows they are attributes:\n"
        "  w  not read-only, for everybody: there are no owner, group and others\n"
        "  a  archive: changed since the last backup\n"
        "  s  system\n"
        "  h  hidden\n"
        "  i  not indexed: its content is left out of searches\n"
        "  r  nothing: there is no such attribute\n"
        "  x  nothing: the name tells what can be run\n"
        "= alone makes it read-only and takes all four others away. A link is followed by\n"
        "one hop.");
    chmod.raw().set_help_flag("--help", "Print this help and exit"); // `-h` is a word
    option const word = chmod.word("WORD", "what to change: +w, -w, =rw, +h, ...", complaint_about);
    option const paths = chmod.words("PATH", "file or directory to change");
    option const links = chmod.flag("--links", "Change PATH itself if it is a link");
    auto const make = [word, links](arguments const &names) {
        unsigned int const whose = links.is_given() ? fs::file_status::perms_symlink : 0;
        fs::permissions(names.front(), permission_word(word.word()).value() | whose);
        return "changed";
    };
    chmod.changes(each(paths), make, [](failure &what_failed, arguments &) {
        advise(what_failed, fs::fsys_excp_access_denied,
               "You have no right to change its attributes. Ask who owns it.");
    });
}

} // namespace flfs
