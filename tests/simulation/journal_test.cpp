// What calls leave behind: the journal, the last error, the buffer.

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace fl::simulation {

namespace {

TEST(Journal, HoldsEachCall)
{
    simulated_machine machine;
    ::CreateDirectoryW(L"C:\\dir", nullptr);
    ::GetFileAttributesW(L"missing");
    ::GetCurrentDirectoryW(0, nullptr);

    auto const journal = machine.journal();
    ASSERT_EQ(journal.size(), 3U);
    EXPECT_EQ(journal[0].function, "CreateDirectoryW");
    EXPECT_EQ(journal[0].text, u"C:\\dir");
    EXPECT_EQ(journal[0].answer, 1U);
    EXPECT_EQ(journal[0].last_error, stale_last_error);
    EXPECT_EQ(journal[1].function, "GetFileAttributesW");
    EXPECT_EQ(journal[1].text, u"missing") << "as the caller wrote it";
    EXPECT_EQ(journal[1].answer, INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(journal[1].last_error, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(journal[2].text, u"");
    EXPECT_EQ(journal[2].answer, 4U);
}

TEST(Journal, HoldsOnlyCalls)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir").set_current_directory(u"C:\\dir");
    machine.entries(u"C:\\");
    ::SetLastError(1);
    ::GetLastError();
    EXPECT_TRUE(machine.journal().empty());
}

TEST(Journal, CountsAndForgets)
{
    simulated_machine machine;
    ::GetFileAttributesW(L"a");
    ::GetFileAttributesW(L"b");
    ::CreateDirectoryW(L"c", nullptr);
    EXPECT_EQ(machine.calls_of("GetFileAttributesW"), 2);
    EXPECT_EQ(machine.calls_of("CreateDirectoryW"), 1);
    EXPECT_EQ(machine.calls_of("RemoveDirectoryW"), 0);
    machine.clear_journal();
    EXPECT_EQ(machine.calls_of("GetFileAttributesW"), 0);
}

TEST(Journal, HoldsCallsThatWereBroken)
{
    simulated_machine machine;
    fault const broken = machine.fail_call(1, ERROR_IO_DEVICE);
    ::GetFileAttributesW(L"C:\\");
    ASSERT_EQ(machine.journal().size(), 1U);
    EXPECT_EQ(machine.journal()[0].last_error, DWORD{ERROR_IO_DEVICE});
}

TEST(LastError, IsStaleAfterSuccess)
{
    simulated_machine machine;
    ::SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(::CreateDirectoryW(L"C:\\dir", nullptr));
    EXPECT_EQ(::GetLastError(), stale_last_error);
}

TEST(LastError, BelongsToAThread)
{
    simulated_machine machine;
    ::GetFileAttributesW(L"C:\\missing");
    DWORD other = 1;
    std::thread([&] {
        other = ::GetLastError();
        ::SetLastError(ERROR_IO_DEVICE);
    }).join();
    EXPECT_EQ(other, DWORD{ERROR_SUCCESS}) << "a thread begins without one";
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(Buffer, IsJunkBehindTheText)
{
    simulated_machine machine;
    std::wstring buffer(10, L'#');
    ASSERT_EQ(::GetFullPathNameW(L"C:\\a", 8, buffer.data(), nullptr), 4U);
    EXPECT_EQ(buffer, std::wstring(L"C:\\a") + L'\0' + std::wstring(3, buffer_junk) + L"##")
        << "but only in the room that there is";
}

TEST(Threads, CallAndLookAtTheSameTime)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir");
    constexpr int threads = 4;
    constexpr int rounds = 200;
    std::vector<int> right_codes(threads);
    std::vector<std::thread> running;
    for (int thread = 0; thread < threads; ++thread) {
        running.emplace_back([&, thread] {
            std::wstring const name = L"C:\\dir\\" + std::to_wstring(thread);
            for (int round = 0; round < rounds; ++round) {
                ::CreateDirectoryW(name.c_str(), nullptr);
                DWORD const code = round == 0 ? stale_last_error : DWORD{ERROR_ALREADY_EXISTS};
                right_codes[static_cast<std::size_t>(thread)] += ::GetLastError() == code;
                machine.entries(u"C:\\dir");
                fault const passing = machine.fail_call("RemoveDirectoryW", 1, ERROR_IO_DEVICE);
            }
        });
    }
    for (std::thread &thread : running)
        thread.join();
    EXPECT_EQ(right_codes, std::vector<int>(threads, rounds));
    EXPECT_EQ(machine.entries(u"C:\\dir").size(), std::size_t{threads});
    EXPECT_EQ(machine.calls_of("CreateDirectoryW"), threads * rounds);
}

} // namespace

} // namespace fl::simulation
