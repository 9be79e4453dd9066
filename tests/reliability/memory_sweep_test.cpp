// Every operation and every text function with each of its allocations failing in turn: it ends
// with `std::bad_alloc`, or as its own rule says, and leaves nothing behind.

#include "reliability/fault_rules.hpp"
#include "reliability/sampling.hpp"

#include "support/allocations.hpp"

#include <algorithm>
#include <iostream>
#include <new>
#include <optional>
#include <set>
#include <sstream>

namespace reliability {

namespace {

using namespace test_support;

/// What came of a run in which the nth allocation failed.
struct starved_run
{
    bool has_failed = false; ///< there was an nth one
    bool is_out_of_memory = false;
    outcome seen;
};

/// `describe` allocates, too, so it runs once nothing fails any more. `what` may not fail: it
/// ends the process.
template <typename Act>
starved_run run_starved(std::size_t nth, Act act)
{
    starved_run run;
    count_all_but(simulation::is_in_call);
    std::optional<failing_allocation> failing(nth);
    try {
        std::string answer = act();
        run.has_failed = failing->fired();
        failing.reset();
        run.seen.answer = std::move(answer);
    } catch (std::bad_alloc const &) {
        run.has_failed = failing->fired();
        failing.reset();
        run.is_out_of_memory = true;
    } catch (ff::FsysExceptionBase const &exception) {
        run.has_failed = failing->fired();
        failing.reset();
        run.seen.told = describe(exception);
    }
    count_all_but(nullptr);
    return run;
}

/// Where an operation has a rule of its own for memory that runs out.
struct memory_rule
{
    std::vector<std::string> operations;
    char const *answer; ///< none: it throws; empty: any
    unsigned int code;
    char const *why;
};

memory_rule const memory_rules[] = {
    {{"read_symlink", "copy_symlink", "copy a tree"},
     nullptr,
     ERROR_NOT_ENOUGH_MEMORY,
     "no buffer for reparse data"},
    {{"create_symlink", "copy as links"}, nullptr, 12, "no memory for the link's text"},
    {{"weakly_canonical"}, "", 0, "the walk ends where it runs out"},
    {{"weakly_canonical"}, nullptr, 0, "behind what it reached no root can go"},
    {{"get_base_path"}, R"(C:\program\bin\win64\program.exe)", 0, "the module is what is left"},
};

bool has_rule(operation const &tried, outcome const &seen)
{
    return std::any_of(std::begin(memory_rules), std::end(memory_rules), [&](auto const &rule) {
        if (!matches(tried.name, rule.operations))
            return false;
        if (rule.answer != nullptr)
            return !seen.told && (*rule.answer == '\0' || seen.answer == rule.answer);
        return seen.told && seen.told->error_code == rule.code;
    });
}

bool is_open(simulated_machine const &machine)
{
    return machine.open_handles() != 0 || machine.find_handles() != 0 ||
           machine.live_interfaces() != 0 || machine.orphaned_interfaces() != 0 ||
           machine.all_com_apartments() != 0;
}

class memory_sweep
{
public:
    memory_sweep(operation const &tried, subject const &on) : tried_(tried), on_(on) {}

    /// Returns how many allocations failed.
    long run();

    std::set<std::string> mismatches;

private:
    bool run_case(std::size_t nth);
    void tell(std::size_t nth, char const *what, outcome const &seen);

    operation const &tried_;
    subject const &on_;
    outcome good_;
    lines before_;
    lines finished_;
};

long memory_sweep::run()
{
    {
        simulated_machine machine;
        build_disk(machine);
        on_.build(machine);
        before_ = disk_of(machine);
        good_ = run_starved(0, [&] { return tried_.run(tried_.given(on_)); }).seen;
        finished_ = disk_of(machine);
    }
    std::size_t nth = 1;
    while (run_case(nth))
        ++nth;
    return static_cast<long>(nth) - 1;
}

bool memory_sweep::run_case(std::size_t nth)
{
    simulated_machine machine;
    build_disk(machine);
    on_.build(machine);
    text const given = tried_.given(on_);
    starved_run const run = run_starved(nth, [&] { return tried_.run(given); });
    if (is_open(machine))
        tell(nth, "something stays open", run.seen);
    if (!run.has_failed)
        return false;
    if (!run.is_out_of_memory && run.seen != good_ && !has_rule(tried_, run.seen))
        tell(nth, "it is neither out of memory nor as if nothing had failed", run.seen);
    lines const after = disk_of(machine);
    if (!is_between(after, {before_, finished_}))
        tell(nth, "the disk is neither as before nor on its way", run.seen);
    if (!run.is_out_of_memory && !good_.told && run.seen == good_ && after != finished_)
        tell(nth, "the disk isn't finished though all is well", run.seen);
    return true;
}

void memory_sweep::tell(std::size_t nth, char const *what, outcome const &seen)
{
    std::ostringstream line;
    line << tried_.name << " of " << on_.name << ", allocation " << nth << ": " << what << "; seen "
         << seen;
    mismatches.insert(line.str());
}

TEST(MemorySweep, EachFailingAllocationOfEachOperationIsToldOrMakesNoDifference)
{
    long cases = 0;
    std::set<std::string> mismatches;
    for (operation const &tried : operations()) {
        for (subject const &on : subjects()) {
            if (!takes(tried, on) || !is_this_ones_turn())
                continue;
            memory_sweep sweep(tried, on);
            cases += sweep.run();
            mismatches.insert(sweep.mismatches.begin(), sweep.mismatches.end());
        }
    }
    std::cout << "memory sweep: " << cases << " failing allocations under operations\n";
    print_some(mismatches);
    EXPECT_GT(cases, 200);
}

// Text.

/// A function of text, and what of its own arguments it changes.
struct text_function
{
    char const *name;
    std::string (*run)(text const &given);
};

std::string shown(text const &made)
{
    return printable(made);
}

text const tail = u"a name that no string holds in itself.text";

/// Changes a path by `change`. It stays as it was if memory runs out.
template <typename Change>
std::string changed_path(text const &given, Change change)
{
    ff::upath path(given);
    text const before = path.native();
    try {
        change(path);
    } catch (std::bad_alloc const &) {
        if (path.native() != before)
            return "it has changed";
        throw;
    }
    return shown(path.native());
}

template <typename Change>
std::string changed_text(text const &given, Change change)
{
    text made = given;
    try {
        change(made);
    } catch (std::bad_alloc const &) {
        if (made != given)
            return "it has changed";
        throw;
    }
    return shown(made);
}

text_function const text_functions[] = {
    {"extract_root_name", [](text const &t) { return shown(ff::detail::extract_root_name(t)); }},
    {"extract_root_directory",
     [](text const &t) { return shown(ff::detail::extract_root_directory(t)); }},
    {"extract_root_path", [](text const &t) { return shown(ff::detail::extract_root_path(t)); }},
    {"extract_relative_path",
     [](text const &t) { return shown(ff::detail::extract_relative_path(t)); }},
    {"extract_parent_path",
     [](text const &t) { return shown(ff::detail::extract_parent_path(t)); }},
    {"extract_filename", [](text const &t) { return shown(ff::detail::extract_filename(t)); }},
    {"extract_stem", [](text const &t) { return shown(ff::detail::extract_stem(t)); }},
    {"extract_extension", [](text const &t) { return shown(ff::detail::extract_extension(t)); }},
    {"make_native_form", [](text const &t) { return shown(ff::detail::make_native_form(t)); }},
    {"make_generic_form", [](text const &t) { return shown(ff::detail::make_generic_form(t)); }},
    {"make_expanded_path", [](text const &t) { return shown(ff::detail::make_expanded_path(t)); }},
    {"to_filesystem", [](text const &t) { return shown(units(ff::detail::to_filesystem(t))); }},
    {"make_access_form",
     [](text const &t) { return shown(units(ff::detail::make_access_form(wide(t)))); }},
    {"elements",
     [](text const &t) {
         std::string all;
         for (auto const &element : ff::upath(t))
             all += shown(element) + ";";
         return all;
     }},
    {"upath", [](text const &t) { return shown(ff::upath(t).native()); }},
    {"to_utf8", [](text const &t) { return ff::to_utf8(t); }},
    {"from_utf8", [](text const &t) { return shown(ff::from_utf8(ff::to_utf8(t))); }},
    {"concatenate_pathname",
     [](text const &t) {
         return changed_text(t, [](text &made) { ff::detail::concatenate_pathname(made, tail); });
     }},
    {"remove_filename",
     [](text const &t) {
         return changed_text(t, [](text &made) { ff::detail::remove_filename(made); });
     }},
    {"replace_extension",
     [](text const &t) {
         return changed_text(t, [](text &made) { ff::detail::replace_extension(made, tail); });
     }},
    {"upath =", [](text const &t) { return changed_path(t, [](auto &path) { path = tail; }); }},
    {"upath /=", [](text const &t) { return changed_path(t, [](auto &path) { path /= tail; }); }},
    {"upath +=", [](text const &t) { return changed_path(t, [](auto &path) { path += tail; }); }},
    {"upath replace_extension",
     [](text const &t) {
         return changed_path(t, [](auto &path) { path.replace_extension(tail); });
     }},
    {"upath remove_extension",
     [](text const &t) { return changed_path(t, [](auto &path) { path.remove_extension(); }); }},
    {"upath replace_filename",
     [](text const &t) {
         return changed_path(t, [](auto &path) { path.replace_filename(tail); });
     }},
    {"upath remove_filename",
     [](text const &t) { return changed_path(t, [](auto &path) { path.remove_filename(); }); }},
};

text const sample_texts[] = {
    uR"(C:\a directory of some length\and a name in it.text)",
    uR"(\\server with a name\share with a name\directory\name.text)",
    uR"(\\?\UNC\server with a name\share with a name\directory\name.text)",
    u"C:/a//directory/of some/length//and a name in it.text   ",
    u"C:relative to the drive's own\\directory\\name",
    u"relative/../and/./with dots/a name of some length",
    u"name",
};

TEST(MemorySweep, EachFailingAllocationOfTextFunctionsLeavesTheirArgumentsAlone)
{
    long cases = 0;
    for (text_function const &tried : text_functions) {
        for (text const &given : sample_texts) {
            outcome const good = run_starved(0, [&] { return tried.run(given); }).seen;
            for (std::size_t nth = 1;; ++nth) {
                starved_run const run = run_starved(nth, [&] { return tried.run(given); });
                if (!run.has_failed)
                    break;
                ++cases;
                EXPECT_TRUE(run.is_out_of_memory || run.seen == good)
                    << tried.name << " of " << printable(given) << ", allocation " << nth << ": "
                    << run.seen;
            }
        }
    }
    std::cout << "memory sweep: " << cases << " failing allocations under text functions\n";
    EXPECT_GT(cases, 400);
}

// Objects that keep something.

TEST(MemorySweep, AnEntryKeepsWhatItKnowsWhereAskingAgainHasNoMemory)
{
    for (std::size_t nth = 1;; ++nth) {
        simulated_machine machine;
        machine.add_file(uR"(C:\a directory of some length\f)", "abc");
        ff::directory_entry entry(uR"(C:\a directory of some length\f)");
        machine.remove(uR"(C:\a directory of some length\f)");
        starved_run const run = run_starved(nth, [&] {
            entry.refresh();
            return std::string();
        });
        if (!run.has_failed) {
            EXPECT_GT(nth, 1U) << "nothing was allocated";
            EXPECT_FALSE(entry.exists());
            break;
        }
        EXPECT_TRUE(run.is_out_of_memory) << nth;
        EXPECT_EQ(entry.known().get_size(), 3U) << nth;
    }
}

TEST(MemorySweep, AListingThatRanOutOfMemoryIsAtItsEndAndClosed)
{
    for (std::size_t nth = 1;; ++nth) {
        simulated_machine machine;
        for (char16_t const letter : text(u"abcdefgh"))
            machine.add_file(text(u"C:\\d\\") + letter + uR"(\a name that no string holds)");
        starved_run run;
        bool is_at_end = true;
        {
            ff::recursive_directory_iterator it;
            run = run_starved(nth, [&] {
                it = ff::recursive_directory_iterator(u"C:\\d");
                while (it != ff::recursive_directory_iterator())
                    ++it;
                return std::string();
            });
            is_at_end = it == ff::recursive_directory_iterator();
            EXPECT_EQ(machine.find_handles(), 0) << nth;
        }
        EXPECT_TRUE(is_at_end) << nth;
        if (!run.has_failed)
            break;
        EXPECT_TRUE(run.is_out_of_memory) << nth;
    }
}

} // namespace
} // namespace reliability
