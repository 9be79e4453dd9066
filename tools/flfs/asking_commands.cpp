#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>

#include "flfs/command.hpp"

#include <algorithm>
#include <array>

// The commands that answer yes or no, or by numbers.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

/// "yes  " and the name, or "no   ".
answer yes_or_no(bool value, char const *key, std::u16string const &pathname)
{
    return {
        (value ? "yes  " : "no   ") + shown_native(pathname) + '\n', {{key, value}}, !value, {}};
}

/// 0 for what is no letter of a mode.
unsigned int mode_of(char letter)
{
    constexpr std::string_view letters = "erwx";
    constexpr unsigned int modes[] = {fs::access_exists, fs::access_read, fs::access_write,
                                      fs::access_execute};
    std::size_t const at = letters.find(letter);
    return at == letters.npos ? 0 : modes[at];
}

/// The message about `letters` that are no MODES, or none.
std::string complaint_about_modes(std::string const &letters)
{
    for (char const letter : letters)
        if (mode_of(letter) == 0)
            return letters + " is made of other letters than e, r, w and x";
    return letters.empty() ? "A letter is needed: e, r, w or x" : "";
}

answer ask_access(std::u16string const &pathname, std::string const &letters)
{
    unsigned int mode = 0;
    for (char const letter : letters)
        mode |= mode_of(letter);
    answer one;
    one.attempt([&] { one = yes_or_no(fs::access(pathname, mode), "granted", pathname); });
    one.values["modes"] = letters; // told with a failure, too
    return one;
}

/// "30.0 GiB": cut and not rounded, so that no more is promised than there is.
std::string readable(std::uintmax_t bytes)
{
    constexpr std::array<char const *, 7> units = {"bytes", "KiB", "MiB", "GiB",
                                                   "TiB",   "PiB", "EiB"};
    std::size_t unit = 0;
    std::uintmax_t tenths = 0;
    while (bytes >= 1024 && unit + 1 < units.size()) {
        tenths = bytes % 1024 * 10 / 1024;
        bytes /= 1024;
        ++unit;
    }
    std::string const number = std::to_string(bytes) + (unit ? '.' + std::to_string(tenths) : "");
    return number + ' ' + units[unit];
}

std::string both_ways(std::uintmax_t bytes)
{
    return std::to_string(bytes) + " bytes" + (bytes >= 1024 ? " (" + readable(bytes) + ')' : "");
}

answer ask_space(arguments const &about)
{
    fs::space_info const space = fs::space(fs::upath(about.front()));
    facts lines(11);
    lines.add("capacity", both_ways(space.capacity))
        .add("free", both_ways(space.free))
        .add("available", both_ways(space.available));
    return {shown_native(about.front()) + '\n' + lines.text(),
            {{"capacity", space.capacity}, {"free", space.free}, {"available", space.available}}};
}

struct kind_of_name
{
    char const *name;
    bool (*is)(std::u16string const &);
};

constexpr kind_of_name kinds_of_names[] = {
    {"directory", fs::is_directory}, {"file", fs::is_regular_file}, {"other", fs::is_other},
    {"symlink", fs::is_symlink},     {"junction", fs::is_junction}, {"empty", fs::is_empty},
};

kind_of_name const *kind_named(std::string const &name)
{
    auto const found = std::find_if(std::begin(kinds_of_names), std::end(kinds_of_names),
                                    [&name](kind_of_name const &row) { return name == row.name; });
    return found == std::end(kinds_of_names) ? nullptr : found;
}

std::string complaint_about_kind(std::string const &name)
{
    return kind_named(name) != nullptr
               ? ""
               : name + " is none of directory, file, other, symlink, junction and empty";
}

answer ask_kind(std::u16string const &pathname, std::string const &kind)
{
    answer one;
    one.attempt([&] { one = yes_or_no(kind_named(kind)->is(pathname), "is", pathname); });
    one.values["kind"] = kind; // told with a failure, too
    return one;
}

answer compare(arguments const &both)
{
    bool const is_same = fs::equivalent(both.at(0), both.at(1));
    return {is_same ? "yes\n" : "no\n", {{"same", is_same}}, !is_same};
}

} // namespace

void add_exists_command(CLI::App &app, session &session)
{
    command exists(
        app, session, "exists", "Tell whether a pathname leads to something",
        "The system follows the links. Exits 0 if all answers are yes, and 1 after a \"no\" or a\n"
        "failure.");
    option const paths = exists.words("PATH", "pathname to ask about");
    exists.answers(each(paths), {{"exists"}, [](arguments const &about) {
                                     return yes_or_no(fs::exists(about.front()), "exists",
                                                      about.front());
                                 }});
}

void add_access_command(CLI::App &app, session &session)
{
    command access(
        app, session, "access", "Tell whether you can read, write or execute, by trying",
        "MODES are one or more of\n"
        "  e  it exists, and you may look at it\n"
        "  r  a file's content, or a directory's names, can be read\n"
        "  w  it can be written; never true of a read-only file\n"
        "  x  a file named .exe, .bat, .com or .cmd can be run\n"
        "The answer is yes if all of them are. A missing name is a \"no\" with e and else\n"
        "a failure; what you may not look at is a failure with e and else a \"no\".\n"
        "Exits 0 if all answers are yes, and 1 after a \"no\" or a failure.");
    option const modes = access.word("MODES", "letters out of erwx", complaint_about_modes);
    option const paths = access.words("PATH", "pathname to ask about");
    access.answers(each(paths), {{"modes", "granted"}, [modes](arguments const &about) {
                                     return ask_access(about.front(), modes.word());
                                 }});
}

void add_is_command(CLI::App &app, session &session)
{
    command is(app, session, "is", "Tell whether a pathname leads to a directory, a file, ...",
               "KIND is one of\n"
               "  directory, file, other  what PATH leads to, links followed\n"
               "  symlink, junction       PATH itself; a volume mount point is a junction, too\n"
               "  empty                   a directory or file without anything in it\n"
               "A name that isn't there is a \"no\", but a failure with empty. Exits 0 if all\n"
               "answers are yes, and 1 after a \"no\" or a failure.");
    option const kind =
        is.word("KIND", "directory, file, other, symlink, junction or empty", complaint_about_kind);
    option const paths = is.words("PATH", "pathname to ask about");
    is.answers(each(paths), {{"kind", "is"}, [kind](arguments const &about) {
                                 return ask_kind(about.front(), kind.word());
                             }});
}

void add_size_command(CLI::App &app, session &session)
{
    command size(app, session, "size", "Show the size of a file",
                 "Links are followed. A directory is a failure.");
    option const paths = size.words("PATH", "file to ask about");
    size.answers(each(paths), {{"size"}, [](arguments const &about) {
                                   std::uint64_t const bytes = fs::file_size(about.front());
                                   return value_of(about.front(), "size", bytes, both_ways(bytes));
                               }});
}

void add_names_command(CLI::App &app, session &session)
{
    command names(
        app, session, "names", "Show how many names a file has: hard links",
        "Links of other kinds are followed, and are no names of it. A directory has one.");
    option const paths = names.words("PATH", "file to ask about");
    names.answers(each(paths), {{"names"}, [](arguments const &about) {
                                    std::uint64_t const count = fs::hard_link_count(about.front());
                                    return value_of(about.front(), "names", count,
                                                    std::to_string(count));
                                }});
}

void add_same_command(CLI::App &app, session &session)
{
    command same(
        app, session, "same", "Tell whether two pathnames lead to one file or directory",
        "By links, by hard links, or spelt in two ways. If only one of them is there it is a\n"
        "\"no\", if neither is it is a failure. Exits 0 after a yes, and 1 after a \"no\" or a\n"
        "failure.");
    option const path = same.word("PATH", "one pathname");
    option const other = same.word("OTHER", "another");
    same.answers(together({path, other}), {{"same"}, compare}, "Print a JSON object");
}

void add_df_command(CLI::App &app, session &session)
{
    command df(app, session, "df", "Show the space on the volume of a file or directory",
               "Available is what you may use: less than what is free where there are quotas.");
    option const paths = df.words("PATH", "file or directory on the volume");
    df.answers(each(paths), {{"capacity", "free", "available"}, ask_space});
}

} // namespace flfs
