// Several threads at once on one machine, all over the same names.

#include "platform/finding.hpp"
#include "platform/shell_link.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <set>
#include <thread>

namespace fl::simulation {

namespace {

using contract::success;

constexpr int rounds = 150;

/// Runs `body(thread)` on four threads, which begin together.
void run_together(std::function<void(int)> const &body)
{
    std::atomic<bool> may_begin = false;
    std::vector<std::thread> running;
    for (int thread = 0; thread < 4; ++thread) {
        running.emplace_back([&, thread] {
            while (!may_begin)
                std::this_thread::yield();
            body(thread);
        });
    }
    may_begin = true;
    for (std::thread &thread : running)
        thread.join();
}

TEST(SharedMachine, AFileIsMadeByOneThread)
{
    simulated_machine machine;
    std::atomic<int> made = 0;
    std::atomic<int> met = 0;
    std::atomic<int> others = 0;
    run_together([&](int) {
        for (int round = 0; round < rounds; ++round) {
            std::wstring const name = L"C:\\file" + std::to_wstring(round);
            contract::manner const how = {.access = GENERIC_WRITE, .disposition = CREATE_NEW};
            DWORD const code = contract::code_of_open(name, how);
            ++(code == success ? made : code == ERROR_FILE_EXISTS ? met : others);
        }
    });
    EXPECT_EQ(made, rounds);
    EXPECT_EQ(met, 3 * rounds);
    EXPECT_EQ(others, 0);
    EXPECT_EQ(machine.entries(u"C:\\").size(), std::size_t{rounds});
    EXPECT_EQ(machine.calls_of("CreateFileW"), 4 * rounds);
}

// Who has it open for himself alone is alone.
TEST(SharedMachine, ShareModesKeepThreadsApart)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    std::atomic<int> inside = 0;
    std::atomic<int> most_inside = 0;
    std::atomic<int> entered = 0;
    std::atomic<int> wrong_codes = 0;
    run_together([&](int) {
        for (int round = 0; round < rounds; ++round) {
            contract::handle file = contract::open(L"C:\\file", {.share = 0});
            if (!file) {
                wrong_codes += ::GetLastError() != ERROR_SHARING_VIOLATION;
                continue;
            }
            ++entered;
            if (++inside > most_inside)
                most_inside = inside.load();
            std::this_thread::yield();
            --inside;
        }
    });
    EXPECT_EQ(most_inside, 1);
    EXPECT_GT(entered, 0);
    EXPECT_EQ(wrong_codes, 0);
    EXPECT_EQ(machine.open_handles(), 0);
}

TEST(SharedMachine, AppendedBytesAreAllThere)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    run_together([&](int thread) {
        std::string const line(7, static_cast<char>('a' + thread));
        for (int round = 0; round < rounds; ++round) {
            contract::handle const file = contract::open(L"C:\\file", {.access = FILE_APPEND_DATA});
            DWORD written = 0;
            EXPECT_TRUE(::WriteFile(file.get(), line.data(), 7, &written, nullptr));
        }
    });
    std::string const content = machine.content(u"C:\\file");
    ASSERT_EQ(content.size(), std::size_t{4 * rounds * 7});
    for (std::size_t line = 0; line < content.size(); line += 7)
        EXPECT_EQ(content.substr(line, 7), std::string(7, content[line]));
}

/// Creates, deletes and moves names that the others create, delete and move as well.
void churn(int thread, std::atomic<int> &balance)
{
    for (int round = 0; round < rounds; ++round) {
        std::wstring const name = L"C:\\dir\\" + std::to_wstring((round + thread) % 5);
        if (::CreateDirectoryW(name.c_str(), nullptr))
            ++balance;
        ::MoveFileExW(name.c_str(), (name + L"moved").c_str(), 0);
        if (::RemoveDirectoryW((name + L"moved").c_str()))
            --balance;
    }
}

/// Enumerates, and returns whether each name was told once.
bool enumerate()
{
    std::set<std::wstring> names;
    bool is_sound = true;
    contract::search find(L"C:\\dir\\*");
    for (DWORD code = find.code; code == success; code = find.next())
        is_sound = names.insert(find.data.cFileName).second && is_sound;
    return is_sound && names.contains(L".") && names.contains(L"..");
}

TEST(SharedMachine, NamesComeAndGoWhileOthersLook)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir");
    std::atomic<int> balance = 0;
    std::atomic<int> unsound = 0;
    run_together([&](int thread) {
        if (thread < 2)
            return churn(thread, balance);
        for (int round = 0; round < rounds; ++round) {
            unsound += !enumerate();
            unsound += machine.entries(u"C:\\dir").size() > 10;
            machine.exists(u"C:\\dir\\1");
            unsound += machine.open_handles() != 0;
        }
    });
    EXPECT_EQ(unsound, 0);
    EXPECT_EQ(machine.entries(u"C:\\dir").size(), static_cast<std::size_t>(balance.load()));
    EXPECT_EQ(machine.find_handles(), 0);
    EXPECT_EQ(contract::outcome_of([] { return ::MoveFileExW(L"C:\\dir", L"C:\\d", 0) != 0; }),
              success)
        << "nothing was left open";
}

// Each thread breaks calls on a name of its own, and meets no other's faults.
TEST(SharedMachine, CallsAreBrokenFromSeveralThreads)
{
    simulated_machine machine;
    std::atomic<int> right_codes = 0;
    run_together([&](int thread) {
        std::wstring const name = L"C:\\dir" + std::to_wstring(thread);
        DWORD const code = 5000U + static_cast<DWORD>(thread);
        for (int round = 0; round < rounds; ++round) {
            fault const broken = machine.fail_every_call_on_name(test_support::units(name), code);
            right_codes += contract::create_directory(name) == code && broken.fired();
            machine.journal();
        }
        right_codes += contract::create_directory(name) == success;
    });
    EXPECT_EQ(right_codes, 4 * (rounds + 1));
}

// When a fault has gone, its hook runs no more, on no thread.
TEST(SharedMachine, HooksEndWithTheirFault)
{
    simulated_machine machine;
    std::atomic<bool> is_over = false;
    std::atomic<int> late = 0;
    std::thread caller([&] {
        wchar_t buffer[50];
        while (!is_over)
            ::GetFullPathNameW(L"a", 50, buffer, nullptr);
    });
    for (int round = 0; round < rounds; ++round) {
        std::atomic<bool> has_gone = false;
        {
            fault const hooked = machine.on_full_path_name([&](DWORD, wchar_t *) {
                late += has_gone;
                return std::optional<DWORD>();
            });
            std::this_thread::yield();
        }
        has_gone = true;
    }
    is_over = true;
    caller.join();
    EXPECT_EQ(late, 0);
}

TEST(SharedMachine, ObjectsAreMadeAndUsedOnEachThread)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir");
    std::atomic<int> right_paths = 0;
    run_together([&](int thread) {
        contract::apartment const here;
        std::wstring const own = L"C:\\" + std::to_wstring(thread) + L".lnk";
        for (int round = 0; round < rounds / 5; ++round) {
            contract::shortcut made;
            made.set_path(L"C:\\dir");
            made.save(own);
            made.save(L"C:\\all.lnk");
            made.load(own);
            right_paths += made.path() == L"C:\\dir";
            machine.live_interfaces();
        }
    });
    EXPECT_EQ(right_paths, 4 * (rounds / 5));
    EXPECT_EQ(machine.live_interfaces(), 0);
    EXPECT_EQ(machine.all_com_apartments(), 0);
    EXPECT_EQ(machine.shortcut_target(u"C:\\all.lnk"), u"C:\\dir");
}

TEST(SharedMachine, LastErrorsStayApart)
{
    simulated_machine machine;
    std::atomic<int> wrong = 0;
    run_together([&](int thread) {
        bool const fails = thread % 2 == 0;
        for (int round = 0; round < rounds; ++round) {
            ::GetFileAttributesW(fails ? L"C:\\none" : L"C:\\");
            wrong += ::GetLastError() != (fails ? DWORD{ERROR_FILE_NOT_FOUND} : stale_last_error);
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(TwoMachines, EachThreadOnItsOwn)
{
    std::atomic<int> wrong = 0;
    run_together([&](int thread) {
        machine mine;
        on_this_thread const here(mine);
        std::wstring const name = L"C:\\of" + std::to_wstring(thread);
        for (int round = 0; round < rounds; ++round) {
            auto const broken = mine.faults().fail_call("CreateDirectoryW", 2, ERROR_DISK_FULL);
            wrong += ::CreateDirectoryW(name.c_str(), nullptr) ? 0 : 1;
            wrong += ::CreateDirectoryW(L"C:\\full", nullptr) ? 1 : 0;
            wrong += ::RemoveDirectoryW(name.c_str()) ? 0 : 1;
        }
        wrong += mine.calls().calls_of("CreateDirectoryW") == 2 * rounds ? 0 : 1;
        wrong += mine.look().entries(u"C:\\").empty() ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

TEST(TwoMachines, TheLastThatAThreadChoseIsItsOwn)
{
    machine outer;
    machine inner; // that of the process
    on_this_thread const here(outer);
    ::CreateDirectoryW(L"C:\\outer", nullptr);
    {
        on_this_thread const there(inner);
        ::CreateDirectoryW(L"C:\\inner", nullptr);
    }
    ::CreateDirectoryW(L"C:\\outer2", nullptr);
    EXPECT_EQ(outer.look().entries(u"C:\\"), (std::vector<std::u16string>{u"outer", u"outer2"}));
    EXPECT_EQ(inner.look().entries(u"C:\\"), std::vector<std::u16string>{u"inner"});
}

} // namespace

} // namespace fl::simulation
