// Many entries, long pathnames and a full disk: work grows as the number of names, and what is
// there when it ends early is whole.

#include "reliability/fault_rules.hpp"
#include "reliability/sampling.hpp"

#include "support/allocations.hpp"
#include "support/calls.hpp"
#include "support/small_stack.hpp"

#include <chrono>
#include <iostream>

namespace reliability {

namespace {

using namespace test_support;

text name_of(long number)
{
    return units(std::to_wstring(number));
}

void fill(simulated_machine &machine, long entries, bool is_deep)
{
    machine.keep_journal(false);
    for (long number = 0; number < entries; ++number) {
        text const in = is_deep ? u"C:\\t\\" + name_of(number % 100) + u"\\" : text(u"C:\\t\\");
        machine.add_file(in + name_of(number), "whole");
    }
}

/// What some work took.
struct cost
{
    std::size_t allocations;
    double seconds;
};

template <typename Work>
cost cost_of(long entries, bool is_deep, Work work)
{
    simulated_machine machine;
    fill(machine, entries, is_deep);
    count_all_but(simulation::is_in_call);
    auto const begin = std::chrono::steady_clock::now();
    cost taken{allocations_of(work), 0};
    taken.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    count_all_but(nullptr);
    return taken;
}

struct work
{
    char const *name;
    void (*run)();
};

work const works[] = {
    {"list",
     [] {
         ff::recursive_directory_iterator it(text(uR"(C:\t)"));
         while (it != ff::recursive_directory_iterator())
             ++it;
     }},
    {"copy", [] { ff::copy(text(uR"(C:\t)"), text(uR"(C:\to)"), copy_options::recursive); }},
    {"remove_all", [] { ff::remove_all(text(uR"(C:\t)")); }},
    {"remove_all with options", [] { ff::remove_all(text(uR"(C:\t)"), ff::removal_options()); }},
};

TEST(Scale, WorkGrowsAsTheNumberOfEntries)
{
    long const most = number_from("FL_RELIABILITY_ENTRIES", 4000);
    for (bool const is_deep : {false, true}) {
        for (work const &one : works) {
            cost const quarter = cost_of(most / 4, is_deep, one.run);
            cost const half = cost_of(most / 2, is_deep, one.run);
            cost const whole = cost_of(most, is_deep, one.run);
            std::cout << "scale: " << one.name << (is_deep ? " of a tree" : " of a directory")
                      << " of " << most << ": " << whole.allocations << " allocations, "
                      << whole.seconds << " s; of a quarter " << quarter.seconds << " s\n";
            EXPECT_LE(half.allocations, 2 * quarter.allocations + 500) << one.name;
            EXPECT_LE(whole.allocations, 2 * half.allocations + 500) << one.name;
            // four times the entries: four times the time, and a square would be sixteen times
            EXPECT_LE(whole.seconds, 10 * quarter.seconds + 0.2) << one.name;
        }
    }
}

/// The files below `C:\to`, of which none may be cut short.
names whole_files_there(simulated_machine const &machine)
{
    names files;
    for (auto const &entry : ff::recursive_directory_iterator(text(uR"(C:\to)"))) {
        if (entry.is_directory())
            continue;
        files.push_back(entry.path().native());
        EXPECT_EQ(machine.content(files.back()), "whole") << printable(files.back());
    }
    std::sort(files.begin(), files.end());
    return files;
}

struct full_disk
{
    bool is_deep;
    char const *function;
    long nth;
    long copied; ///< files
};

// Nothing but the pathnames that were given is in the exception: what is there already knows who
// had himself told of it, and no more than that is there.
TEST(Scale, AFullDiskLeavesWholeFilesAndTellsWhich)
{
    // each of the hundred directories of a tree has as many of them
    long const each = std::min(number_from("FL_RELIABILITY_ENTRIES", 4000) / 400, 100L);
    long const files = 100 * each;
    full_disk const cases[] = {{false, "CopyFileW", files / 2, files / 2 - 1},
                               {true, "CopyFileW", files / 2, files / 2 - 1},
                               {true, "CreateDirectoryW", 50, 48 * each}};
    for (full_disk const &when : cases) {
        simulated_machine machine;
        fill(machine, files, when.is_deep);
        names told;
        auto const tell = [&](ff::copy_progress const &progress) {
            if (machine.is_file(progress.to))
                told.push_back(progress.to);
            return true;
        };
        auto const copy = [&](copy_options how) {
            ff::copy(text(uR"(C:\t)"), text(uR"(C:\to)"), copy_options::recursive | how, tell);
        };
        {
            sure_fault const full =
                machine.fail_call(when.function, static_cast<int>(when.nth), ERROR_DISK_FULL);
            EXPECT_FAILURE(copy(copy_options::none),
                           system_error(ERROR_DISK_FULL, uR"(C:\t)", uR"(C:\to)"));
        }
        names const there = whole_files_there(machine);
        EXPECT_EQ(there.size(), static_cast<std::size_t>(when.copied)) << when.function;
        std::sort(told.begin(), told.end());
        EXPECT_EQ(told, there);

        copy(copy_options::skip_existing); // once there is room again
        EXPECT_EQ(whole_files_there(machine).size(), static_cast<std::size_t>(files));
    }
}

/// Those that hand pathnames over as they stand, and those of the shell.
std::vector<std::string> const short_only = {
    "create_symlink",       "copy_symlink",       "relative",
    "status_express_light", "read_shortcut",      "create_shortcut",
    "target_status_bridge", "change_current_path"};

/// A pathname of so many units, below which a file is.
text pathname_of(std::size_t size)
{
    text path = uR"(C:\)";
    while (path.size() + 201 < size)
        path += text(199, u'd') + u"\\";
    return path + text(size - path.size(), u'n');
}

TEST(Scale, EveryOperationTakesPathnamesOfEachLengthOrRefusesThem)
{
    for (operation const &tried : operations()) {
        if (!takes(tried, subjects().front()) || tried.below[0] != 0)
            continue;
        std::optional<bool> is_answered;
        for (std::size_t const size :
             {20U, 246U, 247U, 248U, 258U, 259U, 260U, 32766U, 32767U, 32768U}) {
            simulated_machine machine;
            machine.keep_journal(false);
            build_disk(machine);
            text const path = pathname_of(size);
            if (size < 32000)
                machine.add_file(path, "old");
            auto const told = failure_of([&] { tried.run(path); });
            std::string const where = std::string(tried.name) + ", " + std::to_string(size);
            expect_nothing_open(machine, where);
            if (!is_answered)
                is_answered = !told;
            if (size < 32000 && !matches(tried.name, short_only)) {
                EXPECT_EQ(!told, *is_answered) << where << ": " << told;
            }
            if (HasFailure())
                return;
        }
    }
}

/// As deep as pathnames allow, if so much is asked for.
std::size_t deepest_pathname()
{
    long const most = number_from("FL_RELIABILITY_ENTRIES", 4000) / 2;
    return static_cast<std::size_t>(std::min(most, 32767L - 6)); // a prefix, and what lists it
}

constexpr std::size_t small_stack = 128 * 1024;

/// The class of what an operation throws that is asked about the file `path`.
std::string class_of_failure(operation const &tried, text const &path)
{
    std::string thrown = "none";
    run_on_stack_of(small_stack, [&] {
        simulated_machine machine;
        machine.keep_journal(false);
        build_disk(machine);
        machine.add_file(path, "old");
        if (auto const told = failure_of([&] { tried.run(path + tried.below); }))
            thrown = told->what;
        expect_nothing_open(machine, tried.name);
    });
    return thrown;
}

text deep_in(text path, std::size_t size)
{
    while (path.size() + 2 <= size)
        path += u"\\d";
    return path;
}

TEST(Scale, EveryOperationDoesInTheDepthWhatItDoesAtTheTop)
{
    text const deep = deep_in(uR"(C:\d)", deepest_pathname() - 2) + u"\\f";
    for (operation const &tried : operations()) {
        // (a junction has no room for more than about 4000 units)
        if (!takes(tried, subjects().front()) || matches(tried.name, short_only) ||
            tried.name == std::string("create_junction"))
            continue;
        EXPECT_EQ(class_of_failure(tried, deep), class_of_failure(tried, uR"(C:\d\f)"))
            << tried.name;
    }
}

/// What is copied goes by names that are added to the text of its top, which is long enough here
/// to have a prefix.
text const top = u"C:\\" + text(250, u'l') + u"\\t";
text const other_top = u"C:\\" + text(250, u'l') + u"\\u";

/// A tree of one directory in another, and in the last one a file.
struct deep_tree
{
    text below = deep_in(u"", deepest_pathname() - top.size() - 2);
    text directory = top + below;
    text file = directory + u"\\f";
    text other_directory = other_top + below;
    text other_file = other_directory + u"\\f";
    std::size_t levels = below.size() / 2;
};

void copy_deep(copy_options options)
{
    ff::copy(top, other_top, copy_options::recursive | options);
}

std::size_t count_deep(ff::directory_options options)
{
    std::size_t count = 0;
    for (ff::recursive_directory_iterator it(top, options), end; it != end; ++it)
        ++count;
    return count;
}

struct deep_work
{
    char const *name;
    void (*run)(simulated_machine &machine, deep_tree const &tree);
};

deep_work const deep_works[] = {
    {"copy",
     [](auto &machine, auto const &tree) {
         copy_deep(copy_options::none);
         EXPECT_EQ(machine.content(tree.other_file), "deep");
     }},
    {"copy over another",
     [](auto &machine, auto const &tree) {
         machine.add_file(tree.other_file, "old");
         copy_deep(copy_options::overwrite_existing);
         EXPECT_EQ(machine.content(tree.other_file), "deep");
     }},
    {"copy as hard links",
     [](auto &machine, auto const &tree) {
         copy_deep(copy_options::create_hard_links);
         EXPECT_EQ(machine.link_count(tree.other_file), 2U);
     }},
    {"copy of directories",
     [](auto &machine, auto const &tree) {
         copy_deep(copy_options::directories_only);
         EXPECT_TRUE(machine.is_directory(tree.other_directory));
         EXPECT_FALSE(machine.exists(tree.other_file));
     }},
    {"copy that is watched",
     [](auto &machine, auto const &tree) {
         std::size_t steps = 0;
         ff::copy(top, other_top, copy_options::recursive, [&](ff::copy_progress const &) {
             ++steps;
             return true;
         });
         EXPECT_EQ(steps, tree.levels + 2);
         EXPECT_EQ(machine.content(tree.other_file), "deep");
     }},
    {"list",
     [](auto &, auto const &tree) {
         EXPECT_EQ(count_deep(ff::directory_options::none), tree.levels + 1);
     }},
    {"list through links",
     [](auto &, auto const &tree) {
         EXPECT_EQ(count_deep(ff::directory_options::follow_directory_symlink), tree.levels + 1);
     }},
    {"remove_all",
     [](auto &machine, auto const &) {
         ff::remove_all(top);
         EXPECT_FALSE(machine.exists(top));
     }},
    {"remove_all with options",
     [](auto &machine, auto const &tree) {
         EXPECT_EQ(ff::remove_all(top, ff::removal_options()).removed(), tree.levels + 2);
         EXPECT_FALSE(machine.exists(top));
     }},
    {"remove_all without hold",
     [](auto &machine, auto const &tree) {
         EXPECT_EQ(ff::remove_all(top, ff::removal_options().hold(false)).removed(),
                   tree.levels + 2);
         EXPECT_FALSE(machine.exists(top));
     }},
    {"remove_all that goes on",
     [](auto &machine, auto const &tree) {
         machine.set_attributes(tree.file, FILE_ATTRIBUTE_READONLY);
         auto const report = ff::remove_all(top, ff::removal_options().keep_going());
         EXPECT_EQ(report.removed(), 0U);
         ASSERT_EQ(report.failures().size(), 1U);
         EXPECT_EQ(report.failures()[0].id(), ff::fsys_excp_access_denied);
         EXPECT_EQ(report.failures()[0].path_name(), tree.file);
     }},
    {"create_directories",
     [](auto &machine, auto const &tree) {
         ff::create_directories(tree.other_directory);
         EXPECT_TRUE(machine.is_directory(tree.other_directory));
     }},
    {"ensure_directories",
     [](auto &machine, auto const &tree) {
         EXPECT_TRUE(ff::ensure_directories(tree.other_directory));
         EXPECT_TRUE(machine.is_directory(tree.other_directory));
         EXPECT_FALSE(ff::ensure_directories(tree.other_directory));
     }},
    {"absolute", [](auto &, auto const &tree) { EXPECT_EQ(ff::absolute(tree.file), tree.file); }},
    {"canonical", [](auto &, auto const &tree) { EXPECT_EQ(ff::canonical(tree.file), tree.file); }},
    {"canonical, through what is above",
     [](auto &, auto const &tree) {
         EXPECT_EQ(ff::canonical(tree.directory + uR"(\..)"),
                   tree.directory.substr(0, tree.directory.size() - 2));
     }},
    {"weakly_canonical",
     [](auto &, auto const &tree) {
         text const missing = top + tree.below.substr(8) + uR"(\n\n)";
         EXPECT_EQ(ff::weakly_canonical(missing), missing);
     }},
    {"links",
     [](auto &machine, auto const &tree) {
         text const link = tree.directory + u"\\l";
         machine.add_symbolic_link(link, u"f");
         EXPECT_EQ(ff::status(link).get_size(), 4U);
         EXPECT_EQ(ff::symlink_status(link).get_type(), ff::file_status::symlink_file);
         EXPECT_EQ(ff::read_symlink(link), u"f");
         EXPECT_EQ(ff::canonical(link), tree.file);
         auto const hops = ff::link_hops(link);
         ASSERT_EQ(hops.size(), 1U);
         EXPECT_EQ(hops[0].link, link);
     }},
    {"rename",
     [](auto &machine, auto const &tree) {
         ff::rename(top, other_top);
         EXPECT_EQ(machine.content(tree.other_file), "deep");
     }},
};

TEST(Scale, WhatWalksNeedsNoStackAtAnyDepth)
{
    deep_tree const tree;
    for (deep_work const &one : deep_works) {
        SCOPED_TRACE(one.name);
        run_on_stack_of(small_stack, [&] {
            simulated_machine machine;
            machine.keep_journal(false);
            machine.add_file(tree.file, "deep");
            one.run(machine, tree);
            expect_nothing_open(machine, one.name);
        });
    }
}

} // namespace
} // namespace reliability
