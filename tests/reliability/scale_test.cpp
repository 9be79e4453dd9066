// Many entries, long pathnames and a full disk: work grows as the number of names, and what is
// there when it ends early is whole.

#include "reliability/fault_rules.hpp"
#include "reliability/sampling.hpp"

#include "support/allocations.hpp"
#include "support/calls.hpp"
#include "support/small_stack.hpp"

#include <fl/filesystem.hpp>

#include <chrono>
#include <filesystem>
#include <iostream>

namespace reliability {

namespace {

using namespace test_support;
using text = std::u16string;
namespace ff = fl::filesystem;
using std::filesystem::copy_options;

text name_of(long number)
{
    return units(std::to_wstring(number));
}

void fill(simulated_machine &machine, long entries, bool is_deep)
{
    machine.keep_journal(false);
    for (long number = 0; number < entries; ++number) {
        text const in = is_deep ? u"C:\\t\\" + name_of(number % 100) + u"\\" : text(u"C:\\t\\");
        machine.add_file(in + name_of(number));
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

TEST(Scale, AFullDiskLeavesWholeFilesAndNamesTheNextOne)
{
    long const files = number_from("FL_RELIABILITY_ENTRIES", 4000) / 4;
    simulated_machine machine;
    machine.keep_journal(false);
    for (long number = 0; number < files; ++number)
        machine.add_file(u"C:\\t\\" + name_of(number), "whole");
    sure_fault const full =
        machine.fail_call("CopyFileW", static_cast<int>(files / 2), ERROR_DISK_FULL);
    text last;
    auto const tell = [&](ff::copy_progress const &progress) {
        last = progress.to;
        return true;
    };
    EXPECT_FAILURE(ff::copy(text(uR"(C:\t)"), text(uR"(C:\to)"), copy_options::recursive, tell),
                   system_error(ERROR_DISK_FULL, uR"(C:\t)", uR"(C:\to)"));
    names const there = machine.entries(uR"(C:\to)");
    EXPECT_EQ(there.size(), static_cast<std::size_t>(files / 2) - 1);
    EXPECT_EQ(last, u"C:\\to\\" + there.back()) << "the callback knows how far it came";
    for (text const &name : there)
        ASSERT_EQ(machine.content(u"C:\\to\\" + name), "whole");
}

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
    // those that hand pathnames over as they stand, and those of the shell
    std::vector<std::string> const short_only = {
        "create_symlink",       "copy_symlink",       "relative",
        "status_express_light", "read_shortcut",      "create_shortcut",
        "target_status_bridge", "change_current_path"};
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

TEST(Scale, TheDeepestTreesNeedNoStack)
{
    run_on_stack_of(256 * 1024, [] {
        simulated_machine machine;
        machine.keep_journal(false);
        text path = uR"(\\?\C:\t)";
        for (int level = 0; level < 1000; ++level)
            path += u"\\d";
        machine.add_file(path + u"\\f", "f");
        // with a prefix, as what is copied goes by added names
        text const far(250, u'l');
        machine.add_directory(uR"(\\?\C:\)" + far);
        ff::copy(text(uR"(\\?\C:\t)"), u"C:\\" + far + u"\\t", copy_options::none);
        EXPECT_EQ(ff::remove_all(text(uR"(C:\t)"), ff::removal_options()).removed(), 1002U);
    });
}

} // namespace
} // namespace reliability
