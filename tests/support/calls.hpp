#ifndef FL_FILESYSTEM_TESTS_SUPPORT_CALLS_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_CALLS_HPP
// For tests on the simulated machine: the calls that it was asked for, and operations under
// which each of them fails in turn.

#include "support/names.hpp"

#include <simulation/machine.hpp>

#include <algorithm>
#include <cstdio>
#include <initializer_list>

namespace test_support {

using simulation::flavour;
using simulation::right;
using simulation::simulated_machine;

/// "function(text)" of each call so far.
inline lines calls(simulated_machine const &machine)
{
    lines all;
    for (auto const &entry : machine.journal())
        all.push_back(entry.function + "(" + printable(entry.text) + ")");
    return all;
}

/// One line for each call: its name, its text and then, where there are any, its
/// numbers: `CreateFileW(C:\a) access 8 share 7 disposition 3 flags 2200000`, in
/// hexadecimal.
inline lines calls_with_arguments(simulated_machine const &machine)
{
    auto const number = [](char const *name, DWORD value) {
        char text[40] = {};
        std::snprintf(text, sizeof text, " %s %X", name, static_cast<unsigned int>(value));
        return std::string(text);
    };
    lines all;
    for (auto const &entry : machine.journal()) {
        std::string line = entry.function + "(" + printable(entry.text) + ")";
        if (entry.function == "CreateFileW")
            line += number("access", entry.access) + number("share", entry.share) +
                    number("disposition", entry.disposition);
        if (entry.flags != 0)
            line += number("flags", entry.flags);
        all.push_back(line);
    }
    return all;
}

/// The same but for calls that bring the caller's pathname to its form.
inline lines calls_on_disk(simulated_machine const &machine)
{
    lines all = calls_with_arguments(machine);
    std::erase_if(all, [](std::string const &line) { return line.starts_with("GetFullPath"); });
    return all;
}

/// The calls of one function.
inline std::vector<simulation::journal_entry> entries_of(simulated_machine const &machine,
                                                         std::string const &function)
{
    auto all = machine.journal();
    std::erase_if(all, [&](auto const &entry) { return entry.function != function; });
    return all;
}

/// What they were handed over.
inline lines texts_of(simulated_machine const &machine, std::string const &function)
{
    lines texts;
    for (auto const &entry : entries_of(machine, function))
        texts.push_back(printable(entry.text));
    return texts;
}

/// What they were told of the room in the caller's buffer.
inline std::vector<std::uint64_t> rooms_of(simulated_machine const &machine,
                                           std::string const &function)
{
    std::vector<std::uint64_t> rooms;
    for (auto const &entry : entries_of(machine, function))
        rooms.push_back(entry.room);
    return rooms;
}

/// The three calls that read a link.
inline void add_reading(lines &all, std::string const &path)
{
    all.push_back("CreateFileW(" + path + ") access 8 share 7 disposition 3 flags 2200000");
    all.push_back("DeviceIoControl(" + path + ") flags 900A8");
    all.push_back("CloseHandle(" + path + ")");
}

inline lines reading(std::string const &path)
{
    lines all;
    add_reading(all, path);
    return all;
}

/// The lines of all parts, one part after another.
inline lines joined(std::initializer_list<lines> parts)
{
    lines all;
    for (lines const &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// No handle, interface or apartment outlives an operation, however it ends.
inline void expect_nothing_open(simulated_machine const &machine, std::string const &where = {})
{
    EXPECT_EQ(machine.open_handles(), 0) << where;
    EXPECT_EQ(machine.find_handles(), 0) << where;
    EXPECT_EQ(machine.live_interfaces(), 0) << where;
    EXPECT_EQ(machine.orphaned_interfaces(), 0) << where;
    EXPECT_EQ(machine.all_com_apartments(), 0) << where;
}

/// A test on a simulated machine. Nothing may be left open on it. Where a test needs one machine
/// after another, it makes those itself and calls each `fresh`.
class on_machine : public testing::Test
{
protected:
    void TearDown() override { expect_nothing_open(machine); }

    simulated_machine machine;
};

/// `TEST` with a machine: what follows is a member of `on_machine`, and so are all tests of the
/// suite.
#define TEST_ON_MACHINE(suite, name)                                                               \
    using suite = ::test_support::on_machine;                                                      \
    TEST_F(suite, name)

/// A fault that some call must meet while it lives.
class sure_fault
{
public:
    // (Clang 14 has no std::source_location)
    sure_fault(simulation::fault is, char const *file = __builtin_FILE(),
               int line = __builtin_LINE())
        : fault_(std::move(is)), file_(file), line_(line)
    {
    }
    ~sure_fault()
    {
        if (!fault_.fired())
            ADD_FAILURE_AT(file_, line_) << "no call met it";
    }
    sure_fault(sure_fault const &) = delete;
    sure_fault &operator=(sure_fault const &) = delete;

private:
    simulation::fault fault_;
    char const *file_;
    int line_;
};

/// Lets GetFullPathNameW answer `text`, whatever it is asked.
inline simulation::fault answering(simulated_machine &machine, std::wstring text)
{
    return machine.on_full_path_name([text](DWORD room, wchar_t *buffer) -> std::optional<DWORD> {
        if (text.size() >= room)
            return static_cast<DWORD>(text.size() + 1);
        std::copy(text.begin(), text.end(), buffer);
        buffer[text.size()] = L'\0';
        return static_cast<DWORD>(text.size());
    });
}

/// Calls `round` with 1, 2 and so on until it answers that nothing was broken any more, and
/// returns how many rounds broke something: none is a failure of the test, and so is no end.
template <typename Round>
int for_each_nth(Round round)
{
    for (int nth = 1; nth <= 1000; ++nth) {
        SCOPED_TRACE("number " + std::to_string(nth) + " is broken");
        if (round(nth))
            continue;
        EXPECT_GT(nth, 1) << "nothing was broken";
        return nth - 1;
    }
    ADD_FAILURE() << "it never ends";
    return 0;
}

/// A run of an operation in which one call fails.
struct failing_run
{
    simulated_machine &machine;
    int nth; ///< which call it is
    DWORD code;
    simulation::fault const &fault;

    /// False in the last run, in which there is no such call any more.
    bool is_broken() const { return fault.fired(); }
    /// What failed.
    simulation::journal_entry call() const
    {
        return machine.journal().at(static_cast<std::size_t>(nth) - 1);
    }
};

/// Runs `act` with a `failing_run` for each call that it makes and each of the codes, each time
/// on a machine that is new and as `build` makes it, and at last for each code with no call
/// failing. Nothing may stay open. Returns how many calls failed.
template <typename Build, typename Act>
int sweep(Build build, Act act, std::initializer_list<DWORD> codes = {ERROR_IO_DEVICE})
{
    int failed = 0;
    for (DWORD const code : codes) {
        SCOPED_TRACE("code " + std::to_string(code));
        failed += for_each_nth([&](int nth) {
            simulated_machine machine;
            build(machine);
            machine.clear_journal();
            auto const fault = machine.fail_call(nth, code);
            act(failing_run{machine, nth, code, fault});
            expect_nothing_open(machine);
            return fault.fired();
        });
    }
    return failed;
}

/// What `act` returns for each call that fails in turn.
template <typename Build, typename Act>
auto outcomes_of_each_call(Build build, Act act)
{
    std::vector<decltype(act())> outcomes;
    sweep(build, [&](failing_run const &) { outcomes.push_back(act()); });
    outcomes.pop_back(); // of the run without a failure
    return outcomes;
}

using failures = std::vector<maybe_failure>;

/// What `act` throws for each call that fails in turn, and nothing if none does.
template <typename Build, typename Act>
failures failures_of_each_call(Build build, Act act)
{
    failures told;
    sweep(build, [&](failing_run const &) { told.push_back(failure_of(act)); });
    EXPECT_EQ(told.back(), std::nullopt) << "though no call failed";
    told.pop_back();
    return told;
}

} // namespace test_support

#endif
