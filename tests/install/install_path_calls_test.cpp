// The install path is found once for each process, so each test here has one of its own. A
// process that ends with 0 has seen what it expected.

#include <fl/filesystem/install_path.hpp>

#include "support/calls.hpp"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace fl::filesystem::tests {
namespace {

constexpr char16_t module[] = uR"(D:\APPS\TOOL\bin\win64\lib.dll)";

/// All that the host has loaded counts as the program's file: the library, too.
void install(simulated_machine &machine)
{
    machine.add_drive(u'D').add_file(uR"(D:\Apps\Tool\bin\win64\lib.dll)");
    machine.set_program_pathname(module);
}

class InstallPathDeathTest : public testing::Test
{
protected:
    InstallPathDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

/// Runs a test's body as the whole of a process.
template <typename Body>
[[noreturn]] void run_alone(Body body)
{
    body();
    std::cout.flush();
    std::_Exit(testing::Test::HasFailure() ? 1 : 0);
}

void expect_it_is_kept()
{
    simulated_machine machine;
    install(machine);
    EXPECT_EQ(get_install_path(), uR"(D:\Apps\Tool)");
    EXPECT_EQ(machine.calls_of("GetModuleFileNameW"), 1);
    machine.remove(uR"(D:\Apps)").set_program_pathname(uR"(C:\elsewhere\lib.dll)");
    machine.clear_journal();
    EXPECT_EQ(get_install_path(), uR"(D:\Apps\Tool)");
    std::u16string mine = get_install_path();
    mine += u"changed";
    EXPECT_EQ(get_install_path(), uR"(D:\Apps\Tool)") << "callers get a copy";
    EXPECT_EQ(machine.journal().size(), 0U) << "nobody is asked again";
}

TEST_F(InstallPathDeathTest, IsKeptWhateverMoves)
{
    EXPECT_EXIT(run_alone(expect_it_is_kept), testing::ExitedWithCode(0), "");
}

void expect_failures_are_tried_again()
{
    simulated_machine machine;
    machine.set_program_pathname(module);
    EXPECT_EQ(failure_of(get_install_path), not_found(u"")) << "nothing there";
    install(machine);
    {
        sure_fault const fault = machine.fail_call("GetFullPathNameW", 1, 5);
        EXPECT_EQ(failure_of(get_install_path), denied(module));
    }
    EXPECT_EQ(get_install_path(), uR"(D:\Apps\Tool)");
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_EQ(get_install_path(), uR"(D:\Apps\Tool)") << "known by now";
}

TEST_F(InstallPathDeathTest, IsLookedForAgainAfterAFailure)
{
    EXPECT_EXIT(run_alone(expect_failures_are_tried_again), testing::ExitedWithCode(0), "");
}

/// Whatever there is in the first answer stays.
void expect_other_answers_are_kept(std::u16string const &first, char const *function, int nth)
{
    simulated_machine machine;
    install(machine);
    {
        sure_fault const fault = machine.fail_call(function, nth, 2);
        EXPECT_EQ(get_install_path(), first);
    }
    EXPECT_EQ(get_install_path(), first);
}

TEST_F(InstallPathDeathTest, IsKeptAlsoIfItIsTheModule)
{
    EXPECT_EXIT(run_alone([] { expect_other_answers_are_kept(module, "FindFirstFileExW", 2); }),
                testing::ExitedWithCode(0), "");
}

TEST_F(InstallPathDeathTest, IsKeptAlsoIfItIsEmpty)
{
    EXPECT_EXIT(run_alone([] { expect_other_answers_are_kept(u"", "GetModuleFileNameW", 1); }),
                testing::ExitedWithCode(0), "");
}

void expect_one_thread_finds_it()
{
    simulated_machine machine;
    install(machine);
    names answers(16);
    std::vector<std::thread> threads;
    for (std::u16string &answer : answers)
        threads.emplace_back([&answer] { answer = get_install_path(); });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(answers, names(16, uR"(D:\Apps\Tool)"));
    EXPECT_EQ(machine.calls_of("GetModuleFileNameW"), 1);
}

TEST_F(InstallPathDeathTest, IsFoundByOneOfManyThreads)
{
    EXPECT_EXIT(run_alone(expect_one_thread_finds_it), testing::ExitedWithCode(0), "");
}

void expect_a_failure_lets_another_thread_try()
{
    simulated_machine machine;
    install(machine);
    auto const fault = machine.fail_call("GetFullPathNameW", 1, 5);
    std::vector<maybe_failure> failures(16);
    names answers(16);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < answers.size(); ++i)
        threads.emplace_back([&failures, &answers, i] {
            failures[i] = failure_of([&] { answers[i] = get_install_path(); });
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_TRUE(fault.fired());
    EXPECT_EQ(std::count(failures.begin(), failures.end(), denied(module)), 1);
    EXPECT_EQ(std::count(failures.begin(), failures.end(), std::nullopt), 15);
    EXPECT_EQ(std::count(answers.begin(), answers.end(), uR"(D:\Apps\Tool)"), 15);
    EXPECT_EQ(machine.calls_of("GetModuleFileNameW"), 2);
}

TEST_F(InstallPathDeathTest, IsFoundByAnotherThreadAfterTheFirstHasFailed)
{
    EXPECT_EXIT(run_alone(expect_a_failure_lets_another_thread_try), testing::ExitedWithCode(0),
                "");
}

} // namespace
} // namespace fl::filesystem::tests
