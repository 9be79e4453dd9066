// What others do to a tree between any two calls of an operation on it: a directory swapped for a
// link, renamed, a name deleted or made anew. Who loses what, window by window.

#include "reliability/subjects.hpp"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <optional>
#include <set>

namespace reliability {

namespace {

using namespace test_support;

/// `C:\t` is what is acted on, and `C:\away` is what isn't to be touched.
void build(simulated_machine &machine)
{
    // with the names of the tree's own, so that who goes astray finds them
    for (char16_t const *name : {u"kept", u"a", u"b", uR"(deep\b)", uR"(u\b)", u"z"})
        machine.add_file(text(u"C:\\away\\") + name, "kept");
    machine.add_file(uR"(C:\t\a)", "a").add_file(uR"(C:\t\u\b)", "b");
    machine.add_file(uR"(C:\t\u\deep\b)", "b").add_file(uR"(C:\t\z)", "z");
    machine.add_file(uR"(C:\t\u\n)", "and one that isn't there");
    machine.clear_journal();
}

// What others can do: with the rights of any program, so that open handles stand in their way.

bool moves(char16_t const *from, char16_t const *to)
{
    return ::MoveFileExW(wide(from).c_str(), wide(to).c_str(), 0) != 0;
}

bool swaps_for_junction(simulated_machine &machine, char16_t const *directory)
{
    if (!moves(directory, uR"(C:\moved)"))
        return false;
    machine.add_junction(directory, uR"(C:\away)");
    return true;
}

bool swaps_for_link(simulated_machine &machine, char16_t const *directory)
{
    if (!moves(directory, uR"(C:\moved)"))
        return false;
    machine.add_symbolic_link(directory, uR"(C:\away)", flavour::directory);
    return true;
}

/// Empties a directory and makes it a junction while it is open: no right to delete is asked for.
bool turns_into_junction(simulated_machine &machine, char16_t const *directory)
{
    if (!machine.is_directory(directory) || !machine.entries(directory).empty() ||
        machine.reparse_tag(directory) != 0)
        return false;
    machine.add_reparse_point(directory, DWORD{IO_REPARSE_TAG_MOUNT_POINT},
                              simulation::mount_point_data(uR"(\??\C:\away)", u""),
                              flavour::directory);
    return true;
}

bool swaps_file_for_link(simulated_machine &machine, char16_t const *file)
{
    if (::DeleteFileW(wide(file).c_str()) == 0)
        return false;
    machine.add_symbolic_link(file, uR"(C:\away\kept)");
    return true;
}

bool swaps_file_for_directory(simulated_machine &machine, char16_t const *file)
{
    if (::DeleteFileW(wide(file).c_str()) == 0)
        return false;
    machine.add_junction(file, uR"(C:\away)");
    return true;
}

struct change
{
    char const *name;
    /// Whether it could be done.
    bool (*make)(simulated_machine &);
};

change const changes[] = {
    {"a directory below swapped for a junction",
     [](auto &m) { return swaps_for_junction(m, uR"(C:\t\u)"); }},
    {"a directory below swapped for a symbolic link",
     [](auto &m) { return swaps_for_link(m, uR"(C:\t\u)"); }},
    {"a directory two levels down swapped for a junction",
     [](auto &m) { return swaps_for_junction(m, uR"(C:\t\u\deep)"); }},
    {"the tree itself swapped for a junction",
     [](auto &m) { return swaps_for_junction(m, uR"(C:\t)"); }},
    {"an emptied directory below made a junction",
     [](auto &m) { return turns_into_junction(m, uR"(C:\t\u)"); }},
    {"a directory below renamed", [](auto &) { return moves(uR"(C:\t\u)", uR"(C:\moved)"); }},
    {"the tree itself renamed", [](auto &) { return moves(uR"(C:\t)", uR"(C:\moved)"); }},
    {"a file deleted", [](auto &) { return ::DeleteFileW(LR"(C:\t\u\b)") != 0; }},
    {"a file swapped for a link", [](auto &m) { return swaps_file_for_link(m, uR"(C:\t\u\b)"); }},
    {"a file swapped for a junction",
     [](auto &m) { return swaps_file_for_directory(m, uR"(C:\t\u\b)"); }},
    {"a name made anew",
     [](auto &m) {
         if (m.exists(uR"(C:\t\u\b)") || !m.is_directory(uR"(C:\t\u)"))
             return false;
         m.add_file(uR"(C:\t\u\b)", "new");
         return true;
     }},
    {"the target swapped for a junction",
     [](auto &m) { return swaps_for_junction(m, uR"(C:\to\u)"); }},
};

struct racing
{
    char const *name;
    void (*run)();
    enum
    {
        by_pathname, ///< removes
        held,        ///< removes, and loses nothing outside
        unheld,      ///< the same but for what others move out meanwhile
        harmless     ///< removes nothing
    } kind;
};

constexpr auto deep = std::filesystem::copy_options::recursive;

void remove_held()
{
    ff::remove_all(text(uR"(C:\t)"), ff::removal_options().clear_read_only());
}

void remove_unheld()
{
    ff::remove_all(text(uR"(C:\t)"), ff::removal_options().hold(false));
}

void remove_held_and_go_on()
{
    ff::remove_all(text(uR"(C:\t)"), ff::removal_options().keep_going());
}

racing const racers[] = {
    {"remove_all", [] { ff::remove_all(text(uR"(C:\t)")); }, racing::by_pathname},
    {"remove_all with options", remove_held, racing::held},
    {"remove_all with keep_going", remove_held_and_go_on, racing::held},
    {"remove_all without hold", remove_unheld, racing::unheld},
    {"copy of the tree", [] { ff::copy(text(uR"(C:\t)"), text(uR"(C:\to)"), deep); },
     racing::harmless},
    {"recursive_directory_iterator",
     [] {
         ff::recursive_directory_iterator it(text(uR"(C:\t)"));
         while (it != ff::recursive_directory_iterator())
             ++it;
     },
     racing::harmless},
};

void add_lines(simulated_machine const &machine, text const &path, lines &all)
{
    if (!machine.exists(path))
        return;
    all.push_back(printable(path) +
                  (machine.is_file(path) ? " " + machine.content(path) : std::string()));
    if (!machine.is_directory(path) || machine.reparse_tag(path) != 0)
        return;
    for (text const &name : machine.entries(path))
        add_lines(machine, path + u"\\" + name, all);
}

/// What lies outside of the tree from the start.
lines away(simulated_machine const &machine)
{
    lines all;
    add_lines(machine, uR"(C:\away)", all);
    std::sort(all.begin(), all.end());
    return all;
}

/// The same, and what others have moved there.
lines outside(simulated_machine const &machine)
{
    lines all = away(machine);
    add_lines(machine, uR"(C:\moved)", all);
    std::sort(all.begin(), all.end());
    return all;
}

/// What came of one change in one window.
struct window
{
    std::string call; ///< ahead of which it was
    bool has_changed = false;
    bool has_lost = false;      ///< something outside is gone or another
    bool has_lost_away = false; ///< that was there from the start
    bool has_added = false;     ///< something was made outside
    bool has_thrown = false;
};

window run_window(racing const &racer, change const &other, int nth, bool &is_there)
{
    simulated_machine machine;
    build(machine);
    window seen;
    lines before = outside(machine);
    lines const before_away = away(machine);
    auto const fault = machine.before_call("", nth, [&] {
        seen.has_changed = other.make(machine);
        if (seen.has_changed)
            before = outside(machine);
    });
    std::size_t const calls_before = machine.journal().size();
    try {
        racer.run();
    } catch (ff::FsysExceptionBase const &) {
        seen.has_thrown = true;
    }
    is_there = fault.fired();
    auto const journal = machine.journal();
    // the change has made calls of its own; what was under way came behind them
    for (std::size_t i = calls_before + static_cast<std::size_t>(nth) - 1; i < journal.size();
         ++i) {
        seen.call = journal[i].function;
        bool const is_others = (seen.call == "MoveFileExW" || seen.call == "DeleteFileW") &&
                               i + 1 < journal.size() && seen.has_changed &&
                               i == calls_before + static_cast<std::size_t>(nth) - 1;
        if (!is_others)
            break;
    }
    lines const after = outside(machine);
    seen.has_lost = !std::includes(after.begin(), after.end(), before.begin(), before.end());
    lines const after_away = away(machine);
    seen.has_lost_away = !std::includes(after_away.begin(), after_away.end(), before_away.begin(),
                                        before_away.end());
    seen.has_added = !std::includes(before.begin(), before.end(), after.begin(), after.end());
    EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0)
        << racer.name << ", " << other.name << ", window " << nth;
    return seen;
}

/// All windows of one operation and one change.
struct row
{
    int windows = 0;
    int changed = 0;
    int lost = 0;
    int lost_away = 0;
    int added = 0;
    int thrown = 0;
    std::set<std::string> losing_calls;
};

row run_row(racing const &racer, change const &other)
{
    row seen;
    for (int nth = 1;; ++nth) {
        bool is_there = false;
        window const one = run_window(racer, other, nth, is_there);
        if (!is_there)
            return seen;
        ++seen.windows;
        seen.changed += one.has_changed ? 1 : 0;
        seen.lost += one.has_lost ? 1 : 0;
        seen.lost_away += one.has_lost_away ? 1 : 0;
        seen.added += one.has_added ? 1 : 0;
        seen.thrown += one.has_thrown ? 1 : 0;
        if (one.has_lost)
            seen.losing_calls.insert(one.call);
    }
}

void print(racing const &racer, change const &other, row const &seen)
{
    std::cout << "| " << racer.name << " | " << other.name << " | " << seen.windows << " | "
              << seen.changed << " | " << seen.thrown << " | " << seen.lost << " | " << seen.added
              << " |";
    for (std::string const &call : seen.losing_calls)
        std::cout << ' ' << call;
    std::cout << '\n';
}

TEST(Races, NothingButARemovalByPathnameLosesWhatLiesOutsideInAnyWindow)
{
    int changed = 0;
    for (racing const &racer : racers) {
        for (change const &other : changes) {
            row const seen = run_row(racer, other);
            print(racer, other, seen);
            EXPECT_GT(seen.windows, 10) << racer.name;
            std::string const where = std::string(racer.name) + ", " + other.name;
            if (racer.kind != racing::by_pathname) {
                EXPECT_EQ(seen.lost_away, 0) << where;
                // a target is filled up through the links in it
                bool const is_target = std::string(other.name).starts_with("the target");
                EXPECT_EQ(seen.added > 0,
                          is_target && racer.kind == racing::harmless && seen.changed > 0)
                    << where;
            }
            if (racer.kind == racing::held || racer.kind == racing::harmless) {
                EXPECT_EQ(seen.lost, 0) << where;
                changed += seen.changed;
            }
        }
    }
    EXPECT_GT(changed, 100) << "others could do too little";
}

} // namespace
} // namespace reliability
