#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command.hpp"
#include "flfs/link_reading.hpp"
#include "flfs/text.hpp"

#include <windows.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <iterator>

// The commands that make links, and that read and follow them.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

unsigned int type_for(option const &to_file, option const &to_directory)
{
    if (to_directory.is_given())
        return fs::file_status::directory_file;
    return to_file.is_given() ? fs::file_status::regular_file : fs::file_status::file_type_auto;
}

struct link_maker
{
    char const *flag;
    char const *description;
    void (*make)(std::u16string const &target, std::u16string const &link);
};

/// Symbolic links, which take options, come on top.
link_maker const link_makers[] = {
    {"--shortcut", "Make a shortcut file instead", fs::create_shortcut},
    {"--hard", "Give the file TARGET, which must exist, one more name", fs::create_hard_link},
    {"--junction", "Make a junction to the directory TARGET", fs::create_junction},
};

/// Without a pathname, what is refused as an argument may be either, TARGET first, and
/// everything else is about the link, for nobody looks whether TARGET exists.
void advise_on_making(failure &what_failed, arguments &blamed)
{
    bool const may_be_either = !what_failed.id || what_failed.id == fs::fsys_excp_invalid_argument;
    blamed = may_be_either ? arguments{blamed.at(1), blamed.at(0)} : arguments{blamed.at(0)};
    advise_on_links(what_failed);
}

answer read_one(arguments const &about)
{
    link const found = read_link(about.front());
    json values = {{"kind", found.kind.identifier}};
    if (found.text)
        values["text"] = to_json(found.text);
    if (found.tag)
        values["tag"] = hexadecimal(*found.tag, 8);
    facts lines(6);
    lines.add("kind", found.kind.description).add(values, {{"text", "text"}, {"tag", "tag"}});
    return {displayed_value(found.pathname) + '\n' + lines.text(), values};
}

json values_of(fs::link_hop const &one)
{
    return {{"pathname", to_json(one.link)},
            {"kind", kind_of(one).identifier},
            {"text", to_json(one.text)},
            {"is_kept", one.is_kept},
            {"goes_on_with", to_json(one.leads_to)}};
}

// No name holds a `>`, so that the arrows can't be taken for a part of one.
std::string text_of(fs::link_hop const &one)
{
    std::string const line = (one.is_kept ? "    kept  " : "    link  ") +
                             displayed_value(one.link) + " -> " + displayed_value(one.text) + " (" +
                             kind_of(one).description + ')';
    return (one.leads_to ? line + " => " + displayed_value(*one.leads_to) : line) + '\n';
}

/// Each link once: where the way comes to one again, it goes round.
void tell_links(std::u16string const &native, answer &told)
{
    std::vector<fs::link_hop> passed;
    for (fs::link_hop const &met : fs::link_hops(native)) {
        auto const is_same = [&met](fs::link_hop const &other) {
            return met.leads_to && met.link == other.link && met.leads_to == other.leads_to;
        };
        if (std::any_of(passed.begin(), passed.end(), is_same)) {
            told.text += "    and round again\n";
            told.values["hops_repeat"] = true;
            return;
        }
        told.text += text_of(met);
        told.values["hops"].push_back(values_of(met));
        passed.push_back(met);
    }
}

void tell_end(std::u16string const &native, answer &told)
{
    std::u16string const end = fs::canonical(native);
    std::wstring const form = fs::detail::windows::make_native_access_form_bridge(end);
    std::u16string const result =
        fs::detail::from_filesystem(form); // with a prefix if it needs one
    DWORD const attributes = ::GetFileAttributesW(form.c_str());
    char const *found = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "directory" : "file";
    if (attributes == INVALID_FILE_ATTRIBUTES)
        found = "nothing is there";
    else
        told.values["found"] = found;
    told.values["result"] = to_json(result);
    told.text += "    ends  " + displayed_value(result) + " (" + found + ")\n";
}

void tell_way(std::u16string const &native, answer &told)
{
    if (native.empty())
        throw fs::InvalidArgument("Empty Path not permitted", {}, {});
    std::u16string const absolute = fs::absolute(native);
    told.text = displayed_value(absolute) + '\n';
    told.values["absolute"] = to_json(absolute);
    tell_links(native, told);
    tell_end(native, told);
}

/// A failure is told behind the links that are passed until then.
answer resolve(arguments const &about)
{
    answer told;
    told.values = {{"hops", json::array()}, {"hops_repeat", false}};
    told.attempt([&] { tell_way(fs::upath(about.front()).native(), told); });
    return told;
}

constexpr char const *help_on_ln =
    R"(Windows keeps symbolic links to files and to directories apart. Without --file and
--directory, TARGET tells which it is, looked at from the current directory. The
link holds it as it is written, and Windows then reads it from the link's
directory. A hard link is one more name for the file TARGET, on the same volume. A
junction leads to a directory on a drive, and needs no right of its own; it holds
TARGET as an absolute pathname. So does a shortcut, whose name ends in .lnk; a file
of that name is replaced.)";

} // namespace

void add_ln_command(CLI::App &app, session &session)
{
    command ln(app, session, "ln", "Make a link: symbolic, hard, a junction or a shortcut",
               help_on_ln);
    option const target = ln.word("TARGET", "where it leads, which need not exist");
    option const link = ln.word("LINK", "link to make");
    option const symbolic = ln.flag("-s,--symbolic", "Make a symbolic link");
    std::vector<option> others;
    for (link_maker const &row : link_makers)
        others.push_back(ln.flag(row.flag, row.description));
    option const to_file = ln.flag("--file", "With -s: a link to a file, whatever TARGET is");
    option const to_directory =
        ln.flag("--directory", "With -s: a link to a directory, whatever TARGET is");
    for (auto one = others.begin(); one != others.end(); ++one) {
        exclude(*one, symbolic);
        std::for_each(others.begin(), one, [one](option const &other) { exclude(*one, other); });
    }
    exclude(to_file, to_directory);
    to_file.raw().needs(&symbolic.raw());
    to_directory.raw().needs(&symbolic.raw());
    auto const other_kind = [others] {
        return std::find_if(others.begin(), others.end(), std::mem_fn(&option::is_given)) -
               others.begin();
    };
    ln.check([symbolic, other_kind] {
        return symbolic.is_given() || other_kind() != std::ssize(link_makers)
                   ? ""
                   : "Say -s for a symbolic link, --hard, --junction or --shortcut";
    });
    auto const make = [symbolic, other_kind, to_file, to_directory](arguments const &names) {
        if (symbolic.is_given())
            fs::create_symlink(names.at(1), names.at(0), type_for(to_file, to_directory));
        else
            link_makers[other_kind()].make(names.at(1), names.at(0));
        return "made";
    };
    ln.changes(together({link, target}), make, advise_on_making);
}

void add_readlink_command(CLI::App &app, session &session)
{
    command readlink(app, session, "readlink",
                     "Show what kind of link a name is, and the text in it; nothing is followed",
                     "Symbolic links, junctions, volume mount points, other reparse points, and\n"
                     "shortcut files, whose names end in .lnk.");
    option const paths = readlink.words("PATH", "link or shortcut to read");
    readlink.answers(each(paths), {{"kind", "text", "tag"}, read_one});
}

void add_read_shortcut_command(CLI::App &app, session &session)
{
    command reading(app, session, "read-shortcut", "Show where a shortcut leads, by its file",
                    "The shell may look for a target that was moved. (empty) is one to something\n"
                    "that is no file.");
    option const paths = reading.words("PATH", "shortcut, whose name ends in .lnk");
    reading.answers(each(paths), result_of([](std::u16string const &pathname) {
                        return fs::read_shortcut(pathname);
                    }));
}

void add_resolve_command(CLI::App &app, session &session)
{
    command resolving(
        app, session, "resolve", "Show each link that a pathname leads through, and its end",
        "A link is shown as LINK -> TEXT (KIND) => what the walk goes on with. A link\n"
        "on a network that names a drive is kept as it is.\n"
        "A .. in PATH is dropped by text first, together with the name ahead of it.");
    option const paths = resolving.words("PATH", "pathname to walk through");
    resolving.answers(each(paths),
                      {{"absolute", "hops", "hops_repeat", "result", "found"}, resolve});
}

} // namespace flfs
