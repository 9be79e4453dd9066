// Every operation on every kind of object, with each of its calls failing in turn with each of
// many codes. What may come of it is told in rules beside this, in fault_rules.cpp; the sweep
// holds the library to them, and the disk to what was finished.

#include "reliability/fault_rules.hpp"
#include "reliability/sampling.hpp"

#include <algorithm>
#include <array>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>

namespace reliability {

namespace {

using namespace test_support;

outcome run(operation const &tried, text const &p)
{
    outcome seen;
    try {
        seen.answer = tried.run(p);
    } catch (fl::filesystem::FsysExceptionBase const &exception) {
        seen.told = describe(exception);
    } catch (std::filesystem::filesystem_error const &exception) {
        seen.other = "filesystem_error " + std::to_string(exception.code().value());
    }
    return seen;
}

// The sweep.

constexpr std::array<DWORD, 24> win32_codes = {0,   2,   3,   5,    8,    32,   33,   53,
                                               64,  80,  87,  112,  123,  145,  161,  183,
                                               206, 234, 267, 1392, 1463, 1920, 4390, 4393};

/// E_FAIL, E_ACCESSDENIED, "no such file" and "no memory" as HRESULTs, REGDB_E_CLASSNOTREG,
/// CO_E_NOTINITIALIZED, RPC_E_CHANGED_MODE, STG_E_FILEALREADYEXISTS.
constexpr std::array<DWORD, 8> results = {0x80004005, 0x80070005, 0x80070002, 0x8007000E,
                                          0x80040154, 0x800401F0, 0x80010106, 0x80030050};

bool gives_result(std::string const &function)
{
    return function.starts_with("Co") && !function.starts_with("Copy")
               ? true
               : function.find("::") != function.npos;
}

/// Calls that change a disk.
bool changes_disk(std::string const &function)
{
    for (char const *one :
         {"DeleteFileW", "RemoveDirectoryW", "CreateDirectoryW", "MoveFileExW", "CopyFileW",
          "CreateSymbolicLinkW", "CreateHardLinkW", "SetFileAttributesW",
          "SetFileInformationByHandle", "IPersistFile::Save", "SetCurrentDirectoryW"}) {
        if (function == one)
            return true;
    }
    return false;
}

bool has_changed_disk(simulated_machine const &machine)
{
    for (auto const &made : machine.journal()) {
        constexpr DWORD set_reparse_point = 0x900A4;
        bool const sets_link =
            made.function == "DeviceIoControl" && made.flags == set_reparse_point;
        bool const has_succeeded = made.last_error == simulation::stale_last_error;
        if (has_succeeded && (changes_disk(made.function) || sets_link))
            return true;
    }
    return false;
}

bool is_below(std::string const &line, text const &path)
{
    std::string const name = printable(path);
    return line.starts_with(name + ' ') || line.starts_with(name + '\\');
}

class sweep_of
{
public:
    sweep_of(operation const &tried, subject const &on) : tried_(tried), on_(on) {}

    /// Runs it without a failure. Returns what it called.
    std::vector<std::string> prepare();
    /// Returns how many cases ran.
    long run_all();
    /// The same with two calls failing.
    long run_pairs();

    std::set<std::string> const &mismatches() const { return mismatches_; }

private:
    void build(simulated_machine &machine) const;
    bool run_case(int nth, DWORD code);
    bool run_pair(int first, int second, DWORD code);
    void check_open(simulated_machine const &machine, occurrence const &at, outcome const &seen);
    void check_outcome(occurrence const &at, outcome const &seen);
    bool differs_only_at(lines const &after, occurrence const &at) const;
    void check_disk(simulated_machine const &machine, occurrence const &at, outcome const &seen);
    void tell(occurrence const &at, std::string const &what, outcome const &seen);

    operation const &tried_;
    subject const &on_;
    outcome good_;
    disk_states states_;
    std::set<std::string> mismatches_;
};

void sweep_of::build(simulated_machine &machine) const
{
    build_disk(machine);
    on_.build(machine);
    machine.clear_journal();
}

std::vector<std::string> sweep_of::prepare()
{
    simulated_machine machine;
    build(machine);
    states_.before = disk_of(machine);
    good_ = run(tried_, tried_.given(on_));
    states_.finished = disk_of(machine);
    std::vector<std::string> functions;
    for (auto const &made : machine.journal())
        functions.push_back(made.function);
    return functions;
}

long sweep_of::run_all()
{
    std::vector<std::string> const functions = prepare();
    long cases = 0;
    for (int nth = 1; nth <= static_cast<int>(functions.size()); ++nth) {
        for (DWORD const code : win32_codes)
            cases += run_case(nth, code) ? 1 : 0;
        if (!gives_result(functions[static_cast<std::size_t>(nth) - 1]))
            continue;
        for (DWORD const code : results)
            cases += run_case(nth, code) ? 1 : 0;
    }
    return cases;
}

bool sweep_of::run_case(int nth, DWORD code)
{
    if (!is_this_ones_turn())
        return false;
    simulated_machine machine;
    build(machine);
    auto const fault = machine.fail_call(nth, code);
    outcome const seen = run(tried_, tried_.given(on_));
    auto const journal = machine.journal();
    if (!fault.fired() || journal.size() < static_cast<std::size_t>(nth)) {
        mismatches_.insert(std::string(tried_.name) + ": the same calls weren't made again");
        return false;
    }
    occurrence const at{tried_, on_, journal[static_cast<std::size_t>(nth) - 1], code, good_};
    check_outcome(at, seen);
    check_disk(machine, at, seen);
    check_open(machine, at, seen);
    return true;
}

void sweep_of::check_open(simulated_machine const &machine, occurrence const &at,
                          outcome const &seen)
{
    if (machine.open_handles() != 0 || machine.find_handles() != 0 ||
        machine.live_interfaces() != 0 || machine.orphaned_interfaces() != 0 ||
        machine.all_com_apartments() != 0)
        tell(at, "something stays open", seen);
}

long sweep_of::run_pairs()
{
    long cases = 0;
    int const calls = static_cast<int>(prepare().size());
    for (DWORD const code : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_DISK_FULL}}) {
        for (int first = 1; first <= calls; ++first) {
            for (int second = first + 1; run_pair(first, second, code); ++second)
                ++cases;
        }
    }
    return cases;
}

/// Returns whether both calls were made.
bool sweep_of::run_pair(int first, int second, DWORD code)
{
    simulated_machine machine;
    build(machine);
    auto const one = machine.fail_call(first, code);
    auto const next = machine.fail_call(second, code);
    outcome const seen = run(tried_, tried_.given(on_));
    if (!next.fired())
        return false;
    auto const journal = machine.journal();
    occurrence const at{tried_, on_, journal[static_cast<std::size_t>(first) - 1], code, good_};
    occurrence const then{tried_, on_, journal[static_cast<std::size_t>(second) - 1], code, good_};
    outcomes all = allowed_behind(at, then);
    all.push_back(good_);
    if (std::find(all.begin(), all.end(), seen) == all.end())
        tell(then, "wrong outcome of the second failure", seen);
    check_open(machine, then, seen);
    lines const after = disk_of(machine);
    if (!is_between(after, states_) && !differs_only_at(after, at))
        tell(then, "the disk is neither as before nor on its way", seen);
    return true;
}

void sweep_of::check_outcome(occurrence const &at, outcome const &seen)
{
    outcomes all = allowed(at);
    if (all.empty())
        return tell(at, "no rule", seen);
    bool const has_failed_before = good_.told || !good_.other.empty();
    if (has_failed_before) // it ends as it ends without the fault, unless that is seen earlier
        all.push_back(good_);
    if (std::find(all.begin(), all.end(), seen) != all.end())
        return;
    std::ostringstream expected;
    for (outcome const &one : all)
        expected << "; expected " << one;
    tell(at, "wrong outcome" + expected.str(), seen);
}

/// Whether the names that aren't as before are those that it was about.
bool sweep_of::differs_only_at(lines const &after, occurrence const &at) const
{
    lines changed;
    std::set_symmetric_difference(after.begin(), after.end(), states_.before.begin(),
                                  states_.before.end(), std::back_inserter(changed));
    return std::all_of(changed.begin(), changed.end(), [&](std::string const &line) {
        return is_below(line, tried_.given(on_)) ||
               (at.tried.second != nullptr && is_below(line, at.tried.second));
    });
}

void sweep_of::check_disk(simulated_machine const &machine, occurrence const &at,
                          outcome const &seen)
{
    lines const after = disk_of(machine);
    bool const is_done = !seen.told && seen.other.empty() && seen == good_;
    if (!has_changed_disk(machine)) {
        if (after != states_.before)
            tell(at, "the disk has changed without a call", seen);
        return;
    }
    if (ends_otherwise(at) && differs_only_at(after, at))
        return;
    if (!is_between(after, states_))
        tell(at, "the disk is neither as before nor on its way", seen);
    if (is_done && !tried_.may_pass_over && after != states_.finished)
        tell(at, "the disk isn't finished though all is well", seen);
}

void sweep_of::tell(occurrence const &at, std::string const &what, outcome const &seen)
{
    std::ostringstream line;
    line << tried_.name << " of " << on_.name << ", " << at.call.function << "("
         << printable(at.call.text) << ") fails with " << at.code << ": " << what << "; seen "
         << seen;
    mismatches_.insert(line.str());
}

TEST(FaultSweep, EachFailingCallOfEachOperationEndsAsTheRulesSay)
{
    long cases = 0;
    std::set<std::string> mismatches;
    for (operation const &tried : operations()) {
        for (subject const &on : subjects()) {
            if (!takes(tried, on))
                continue;
            sweep_of sweep(tried, on);
            cases += sweep.run_all();
            mismatches.insert(sweep.mismatches().begin(), sweep.mismatches().end());
        }
    }
    std::cout << "fault sweep: " << operations().size() << " operations, " << subjects().size()
              << " kinds of objects, " << cases << " cases\n";
    print_some(mismatches);
    EXPECT_GT(cases, 5000);
}

TEST(FaultSweep, OfTwoFailingCallsOneIsTold)
{
    long cases = 0;
    std::set<std::string> mismatches;
    for (operation const &tried : operations()) {
        if (!matches(tried.name, {"remove_all*", "copy", "copy a tree", "copy over", "rename*"}))
            continue;
        for (subject const &on : subjects()) {
            sweep_of sweep(tried, on);
            cases += sweep.run_pairs();
            mismatches.insert(sweep.mismatches().begin(), sweep.mismatches().end());
        }
    }
    std::cout << "fault sweep: " << cases << " pairs\n";
    print_some(mismatches);
    EXPECT_GT(cases, 5000);
}

} // namespace
} // namespace reliability
