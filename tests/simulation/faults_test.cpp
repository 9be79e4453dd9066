#include "platform/contract.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace fl::simulation {

namespace {

using contract::get_file_attributes;
using contract::success;

TEST(Faults, FailTheNthCallOfAFunction)
{
    simulated_machine machine;
    ASSERT_EQ(get_file_attributes(L"C:\\"), success);
    fault const second = machine.fail_call("GetFileAttributesW", 2, ERROR_IO_DEVICE);
    EXPECT_TRUE(::CreateDirectoryW(L"C:\\dir", nullptr)) << "another function";
    EXPECT_EQ(get_file_attributes(L"C:\\"), success) << "the first from now on";
    EXPECT_FALSE(second.fired());
    EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_IO_DEVICE});
    EXPECT_TRUE(second.fired());
    EXPECT_EQ(get_file_attributes(L"C:\\"), success) << "only that one";
}

TEST(Faults, FailTheNthCallOfAny)
{
    simulated_machine machine;
    fault const second = machine.fail_call(2, ERROR_IO_DEVICE);
    ::SetLastError(1);
    EXPECT_EQ(::GetLastError(), 1U) << "these are no calls";
    EXPECT_EQ(get_file_attributes(L"C:\\"), success);
    EXPECT_FALSE(::CreateDirectoryW(L"C:\\dir", nullptr));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_IO_DEVICE});
    EXPECT_FALSE(machine.exists(u"C:\\dir")) << "a failed call has no effect";
    EXPECT_TRUE(second.fired());
}

TEST(Faults, FailEveryCallWhileTheyLive)
{
    simulated_machine machine;
    {
        fault const each = machine.fail_every_call_on("GetFileAttributesW", ERROR_NOT_READY);
        EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_NOT_READY});
        EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_NOT_READY});
    }
    EXPECT_EQ(get_file_attributes(L"C:\\"), success);
}

TEST(Faults, CountForThemselves)
{
    simulated_machine machine;
    fault const first = machine.fail_call("GetFileAttributesW", 1, ERROR_NOT_READY);
    fault const second = machine.fail_call("GetFileAttributesW", 2, ERROR_IO_DEVICE);
    EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_NOT_READY});
    EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_IO_DEVICE});
    EXPECT_TRUE(first.fired() && second.fired());
}

TEST(Faults, MoveAndOutliveTheirMachine)
{
    fault kept = [] {
        simulated_machine machine;
        fault made = machine.fail_call(1, ERROR_IO_DEVICE);
        EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_IO_DEVICE});
        return made;
    }();
    EXPECT_TRUE(kept.fired());
    simulated_machine machine;
    kept = machine.fail_call(1, ERROR_NOT_READY);
    EXPECT_FALSE(kept.fired());
    fault const moved = std::move(kept);
    EXPECT_EQ(get_file_attributes(L"C:\\"), DWORD{ERROR_NOT_READY}) << "moved, it still lives";
    EXPECT_TRUE(moved.fired());
}

TEST(Faults, AnswerAsEachFunctionFails)
{
    simulated_machine machine;
    wchar_t buffer[20] = L"untouched";
    auto const failing = [&machine] { return machine.fail_call(1, ERROR_IO_DEVICE); };
    {
        fault const broken = failing();
        EXPECT_EQ(::GetFullPathNameW(L"a", 20, buffer, nullptr), 0U);
    }
    {
        fault const broken = failing();
        EXPECT_EQ(::GetCurrentDirectoryW(20, buffer), 0U);
    }
    {
        fault const broken = failing();
        EXPECT_EQ(::GetEnvironmentVariableW(L"a", buffer, 20), 0U);
    }
    {
        fault const broken = failing();
        EXPECT_EQ(::GetFileAttributesW(L"C:\\"), INVALID_FILE_ATTRIBUTES);
    }
    {
        fault const broken = failing();
        EXPECT_FALSE(::SetCurrentDirectoryW(L"C:\\"));
    }
    {
        fault const broken = failing();
        EXPECT_FALSE(::SetEnvironmentVariableW(L"a", L"b"));
    }
    {
        fault const broken = failing();
        EXPECT_FALSE(::RemoveDirectoryW(L"C:\\dir"));
    }
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_IO_DEVICE});
    EXPECT_STREQ(buffer, L"untouched");
}

TEST(Faults, AHookAnswersForTheFullPathName)
{
    simulated_machine machine;
    DWORD seen = 0;
    fault const hooked = machine.on_full_path_name([&](DWORD room, wchar_t *buffer) {
        seen = room;
        std::fill(buffer, buffer + room, L'x');
        return std::optional<DWORD>(room); // exactly the buffer: no documented answer
    });
    wchar_t buffer[8];
    EXPECT_FALSE(hooked.fired());
    EXPECT_EQ(::GetFullPathNameW(L"a", 8, buffer, nullptr), 8U);
    EXPECT_TRUE(hooked.fired());
    EXPECT_EQ(seen, 8U);
    EXPECT_EQ(std::wstring(buffer, 8), std::wstring(8, L'x'));
}

TEST(Faults, AHookMayLetACallPassOrFail)
{
    simulated_machine machine;
    std::optional<DWORD> answer;
    fault const hooked = machine.on_full_path_name([&](DWORD, wchar_t *) {
        ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return answer;
    });
    wchar_t buffer[8];
    EXPECT_EQ(::GetFullPathNameW(L"a", 8, buffer, nullptr), 4U);
    EXPECT_STREQ(buffer, L"C:\\a");
    EXPECT_FALSE(hooked.fired());
    answer = 0;
    EXPECT_EQ(::GetFullPathNameW(L"a", 8, buffer, nullptr), 0U);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
    EXPECT_TRUE(hooked.fired());
}

} // namespace

} // namespace fl::simulation
