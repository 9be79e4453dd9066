#include "behaviour/report.hpp"

#include "behaviour/editions.hpp"
#include "behaviour/scene.hpp"
#include "behaviour/trials.hpp"

#include <fl/filesystem/exceptions.hpp>

#include <algorithm>
#include <sstream>

namespace behaviour {

namespace {

using fl::filesystem::FsysExceptionBase;

void replace_all(std::u16string &text, std::u16string_view from, std::u16string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
}

/// Which pathname an exception names, seen from the caller of an operation on `given`.
std::string naming(FsysExceptionBase const &failure, std::u16string const &given)
{
    std::u16string const path = failure.get_path_name();
    std::string words = path.empty()    ? "without a pathname"
                        : path == given ? "naming it"
                                        : "naming " + shown(path);
    for (std::u16string const &more : failure.get_additional_path_names()) {
        if (!more.empty())
            words += more == given ? " and it" : " and " + shown(more);
    }
    return words;
}

std::string words_of(FsysExceptionBase const &failure, std::u16string const &given)
{
    std::string const what = failure.what();
    std::string const prefix = "fl:filesystem:";
    std::string words = "`" + what.substr(prefix.size(), what.find(" {") - prefix.size()) + "`";
    if (failure.get_error_code() != 0)
        words += " " + std::to_string(failure.get_error_code());
    return words + ", " + naming(failure, given);
}

/// What is different on the disks, name by name.
std::string changes(snapshot const &before, snapshot const &after)
{
    std::string words;
    auto const add = [&words](std::string const &sentence) {
        words += (words.empty() ? "" : "; ") + sentence;
    };
    for (auto const &[path, was] : before) {
        auto const now = after.find(path);
        if (now == after.end())
            add(shown(path) + " is gone");
        else if (now->second != was)
            add(shown(path) + " is now a " + now->second);
    }
    for (auto const &[path, is] : after) {
        if (!before.contains(path))
            add(shown(path) + " is new: a " + is);
    }
    return words;
}

struct outcome
{
    std::string result;
    std::string changed;

    friend bool operator==(outcome const &, outcome const &) = default;
};

outcome try_on(trial const &tried, std::u16string const &path)
{
    scene const fresh;
    snapshot const before = fresh.look();
    outcome seen;
    try {
        seen.result = tried.run(path);
    } catch (FsysExceptionBase const &failure) {
        seen.result = words_of(failure, path);
    }
    seen.changed = changes(before, fresh.look());
    if (seen.result.empty())
        seen.result = "returns";
    return seen;
}

/// Many kinds of names often come to the same.
void write_trial(std::ostream &page, trial const &tried)
{
    page << "\n### `" << tried.title << "`\n\n| `p` | result | on disk |\n|---|---|---|\n";
    std::vector<std::pair<std::string, outcome>> rows;
    for (subject const &each : subjects()) {
        outcome const seen = try_on(tried, each.path);
        auto const same = std::find_if(rows.begin(), rows.end(),
                                       [&](auto const &row) { return row.second == seen; });
        if (same == rows.end())
            rows.emplace_back(each.kind, seen);
        else
            same->first += "; " + each.kind;
    }
    for (auto const &[kinds, seen] : rows)
        page << "| " << kinds << " | " << seen.result << " | " << seen.changed << " |\n";
}

constexpr char introduction[] =
    R"(# What each operation does

Each operation, tried on each kind of name. The table is what the library did on the
simulated Windows machine (see [simulation.md](simulation.md)) when it was last built, and a
test fails if it would do anything else. Change the library, then run
`build/native/bin/behaviour_table > docs/behaviour.md` and read the difference.

"Naming it" is said of an exception that holds the pathname as it was given; other operations
name the string that went to the system, or one pathname of two. The long name is
written shorter than it is. Where nothing is said of the disk, nothing has changed on it.

The directory `C:\home` holds, as each operation finds it:

)";

constexpr char conclusion[] = R"(
The links lead to `file.txt`, `directory` and nowhere, the junction to `directory`, the mount
point to drive D, the shortcut to `file.txt`. Drive X is the share `\\server\share`. Nothing can
be done with `denied.txt`, not even asked what it is. `C:\home` is the current directory, too.
)";

void write_scene(std::ostream &page)
{
    page << introduction << "| name | is a |\n|---|---|\n";
    scene const fresh;
    for (auto const &[path, is] : fresh.look())
        page << "| " << shown(path) << " | " << is << " |\n";
    page << conclusion;
}

} // namespace

std::string shown(std::u16string const &text)
{
    if (text.empty())
        return "(empty)";
    std::u16string cut = text;
    for (char16_t const unit : {u'l', u'n'})
        replace_all(cut, std::u16string(100, unit), std::u16string(3, unit));
    return "`" + std::string(cut.begin(), cut.end()) + "`";
}

std::string report()
{
    std::ostringstream page;
    write_scene(page);
    for (family const &each : families()) {
        page << "\n## " << each.name << "\n";
        for (trial const &tried : each.trials)
            write_trial(page, tried);
    }
    write_editions(page);
    return page.str();
}

} // namespace behaviour
