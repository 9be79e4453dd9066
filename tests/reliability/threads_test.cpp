// Many threads at once: in what is found once, in what the process has one of, in trees of their
// own and in the same tree.

#include "reliability/names.hpp"

#include <boost/exception_ptr.hpp>

#include <algorithm>
#include <atomic>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace reliability {

namespace {

using namespace test_support;

/// Runs `body(number)` on so many threads, which begin together.
void run_together(int count, std::function<void(int)> const &body)
{
    std::atomic<int> waiting = 0;
    std::vector<std::thread> running;
    for (int number = 0; number < count; ++number) {
        running.emplace_back([&, number] {
            ++waiting;
            while (waiting < count)
                std::this_thread::yield();
            body(number);
        });
    }
    for (std::thread &thread : running)
        thread.join();
}

text name_of(int number)
{
    return units(std::to_wstring(number));
}

TEST(Threads, ThirtyTwoAreFirstToAskForTheInstallation)
{
    simulated_machine machine;
    machine.add_file(uR"(C:\program\bin\win64\program.exe)");
    machine.set_program_pathname(uR"(C:\program\bin\win64\program.exe)");
    std::vector<text> told(32);
    run_together(
        32, [&](int number) { told[static_cast<std::size_t>(number)] = ff::get_install_path(); });
    EXPECT_EQ(told, std::vector<text>(32, uR"(C:\program)"));
}

TEST(Threads, TheCurrentDirectoryAndItsVariableNeverPart)
{
    simulated_machine machine;
    machine.keep_journal(false);
    for (int number = 0; number < 16; ++number)
        machine.add_directory(u"C:\\d" + name_of(number));
    for (int round = 0; round < 60; ++round) {
        run_together(16, [&](int number) {
            for (int i = 0; i < 8; ++i)
                ff::change_current_path(u"C:\\d" + name_of((number + i) % 16));
        });
        wchar_t value[300] = {};
        ASSERT_NE(::GetEnvironmentVariableW(L"=C:", value, 300), 0U);
        EXPECT_EQ(units(value), ff::get_current_path()) << round;
    }
}

/// Makes, lists, copies and removes a tree.
void work_in(text const &at)
{
    for (int round = 0; round < 4; ++round) {
        ff::ensure_directories(at + uR"(\from\a\b)");
        ff::create_directory(at + uR"(\from\c)");
        ff::create_junction(at + uR"(\from\a)", at + uR"(\from\j)");
        ff::copy(at + uR"(\from)", at + uR"(\to)",
                 copy_options::recursive | copy_options::copy_symlinks);
        int count = 0;
        for (auto const &entry : ff::recursive_directory_iterator(at + uR"(\to)"))
            count += ff::exists(entry.path().native()) ? 1 : 0;
        EXPECT_EQ(count, 4);
        EXPECT_EQ(ff::status(at + uR"(\to\j)").get_type(), ff::file_status::directory_file);
        ff::remove_all(at + uR"(\from)");
        EXPECT_EQ(ff::remove_all(at + uR"(\to)", ff::removal_options()).removed(), 5U);
    }
}

TEST(Threads, InTreesOfTheirOwnDontNoticeOneAnother)
{
    simulated_machine machine;
    machine.keep_journal(false);
    run_together(16, [](int number) { work_in(u"C:\\t" + name_of(number)); });
    for (int number = 0; number < 16; ++number)
        EXPECT_EQ(machine.entries(u"C:\\t" + name_of(number)), names());
    EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0);
}

/// What one does in a tree in which others do the same: nothing but the library's failures.
void disturb(int number)
{
    for (int round = 0; round < 12; ++round) {
        try {
            switch ((number + round) % 6) {
            case 0:
                ff::create_directories(uR"(C:\t\a\b)");
                break;
            case 1:
                ff::copy(text(uR"(C:\t)"), text(uR"(C:\to)"), copy_options::recursive);
                break;
            case 2:
                ff::remove_all(text(uR"(C:\t\a)"));
                break;
            case 3:
                ff::remove_all(text(uR"(C:\to)"), ff::removal_options().keep_going());
                break;
            case 4:
                for (auto const &entry : ff::recursive_directory_iterator(text(u"C:\\")))
                    ff::status(entry.path());
                break;
            default:
                ff::rename(text(uR"(C:\t\a)"), text(uR"(C:\t\c)"));
            }
        } catch (ff::FsysExceptionBase const &) {
            // another thread was faster
        }
    }
}

TEST(Threads, InTheSameTreeMeetTheLibrarysFailuresAndNothingElse)
{
    simulated_machine machine;
    machine.keep_journal(false);
    machine.add_file(uR"(C:\t\f)", "kept");
    run_together(16, disturb);
    EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0);
    EXPECT_EQ(machine.all_com_apartments(), 0);
    EXPECT_EQ(machine.content(uR"(C:\t\f)"), "kept") << "nobody was to remove it";
}

// What an iterator knows of an entry it fills anew for the next one, unless somebody has kept it.
TEST(Threads, EntriesAreReadByOneWhileTheIteratorOfAnotherGoesOn)
{
    constexpr int count = 600;
    simulated_machine machine;
    machine.keep_journal(false);
    names expected;
    for (int number = 0; number < count; ++number) {
        expected.push_back(name_of(number));
        machine.add_file(u"C:\\t\\" + expected.back(), std::string(3, 'x'));
    }
    std::mutex lock;
    std::deque<ff::directory_entry> handed;
    auto const take = [&] {
        std::lock_guard const here(lock);
        ff::directory_entry taken;
        if (!handed.empty()) {
            taken = std::move(handed.front());
            handed.pop_front();
        }
        return taken;
    };
    names read;
    std::uint64_t bytes = 0;
    std::thread reader([&] {
        while (read.size() < std::size_t{count}) {
            ff::directory_entry const taken = take(); // let go of without the lock
            if (taken.path().empty()) {
                std::this_thread::yield();
                continue;
            }
            read.push_back(taken.filename());
            bytes += taken.file_size();
        }
    });
    for (ff::directory_entry const &entry : ff::directory_iterator(text(uR"(C:\t)"))) {
        {
            std::lock_guard const here(lock);
            handed.push_back(entry);
        }
        std::this_thread::yield();
    }
    reader.join();
    std::sort(expected.begin(), expected.end());
    std::sort(read.begin(), read.end());
    EXPECT_EQ(read, expected);
    EXPECT_EQ(bytes, 3U * count);
}

TEST(Threads, FailuresAreCarriedFromOneToAnother)
{
    simulated_machine machine;
    std::vector<std::exception_ptr> standard(16);
    std::vector<boost::exception_ptr> boosted(16);
    run_together(16, [&](int number) {
        std::size_t const at = static_cast<std::size_t>(number);
        try {
            ff::remove_all(u"C:\\no" + name_of(number));
        } catch (...) {
            standard[at] = std::current_exception();
            boosted[at] = boost::current_exception();
        }
    });
    for (int number = 0; number < 16; ++number) {
        std::size_t const at = static_cast<std::size_t>(number);
        failure const expected = not_found(u"C:\\no" + name_of(number));
        EXPECT_EQ(failure_of([&] { boost::rethrow_exception(boosted[at]); }), expected);
        EXPECT_THROW(std::rethrow_exception(standard[at]), ff::PathNotFound);
    }
}

} // namespace
} // namespace reliability
