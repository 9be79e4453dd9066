// Large directories and deep trees. They take no more than their size, and no stack.

#include "platform/finding.hpp"
#include "support/small_stack.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace fl::simulation {

namespace {

using contract::success;

/// Records how long a part of a test has taken; nothing depends on it.
class stopwatch
{
public:
    explicit stopwatch(char const *part) : part_(part) {}
    ~stopwatch()
    {
        auto const taken = std::chrono::steady_clock::now() - begin_;
        auto const count = std::chrono::duration_cast<std::chrono::milliseconds>(taken).count();
        testing::Test::RecordProperty(part_, std::to_string(count));
    }
    stopwatch(stopwatch const &) = delete;
    stopwatch &operator=(stopwatch const &) = delete;

private:
    char const *part_;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

constexpr int many = 100'000;

std::wstring nth_name(int number)
{
    return L"C:\\dir\\entry" + std::to_wstring(number);
}

void create_many()
{
    stopwatch const watch("create_milliseconds");
    int created = 0;
    for (int number = 0; number < many; ++number)
        created += ::CreateDirectoryW(nth_name(number).c_str(), nullptr);
    EXPECT_EQ(created, many);
}

void find_many()
{
    stopwatch const watch("find_milliseconds");
    WIN32_FIND_DATAW data;
    HANDLE const find = ::FindFirstFileW(L"C:\\dir\\entry*", &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    std::wstring last;
    int found = 0;
    int in_order = 0;
    do {
        ++found;
        in_order += last < data.cFileName;
        last = data.cFileName;
    } while (::FindNextFileW(find, &data));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_EQ(found, many);
    EXPECT_EQ(in_order, many);
    EXPECT_TRUE(::FindClose(find));
}

void remove_many()
{
    stopwatch const watch("remove_milliseconds");
    int removed = 0;
    for (int number = 0; number < many; ++number)
        removed += ::RemoveDirectoryW(nth_name(number).c_str());
    EXPECT_EQ(removed, many);
}

TEST(Scale, ADirectoryOfManyEntries)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir");
    create_many();
    EXPECT_EQ(machine.entries(u"C:\\dir").size(), std::size_t{many});
    find_many();
    remove_many();
    EXPECT_TRUE(machine.entries(u"C:\\dir").empty());
}

constexpr std::size_t small_stack = 256 * 1024;

constexpr std::size_t deepest = (32767 - 6) / 2; // names of one unit behind `\\?\C:`

std::wstring deep_name(std::size_t levels)
{
    std::wstring name = L"\\\\?\\C:";
    for (std::size_t level = 0; level < levels; ++level)
        name += L"\\d";
    return name;
}

TEST(Scale, ATreeAsDeepAsPathnamesReach)
{
    test_support::run_on_stack_of(small_stack, [] {
        auto machine = std::make_unique<simulated_machine>();
        std::wstring const name = deep_name(deepest);
        ASSERT_GE(name.size(), 32766U);
        machine->add_directory(test_support::units(deep_name(deepest - 1)));
        EXPECT_EQ(contract::create_directory(name), success);
        EXPECT_EQ(contract::create_directory(name), DWORD{ERROR_ALREADY_EXISTS});
        EXPECT_EQ(contract::get_file_attributes(name), success);
        EXPECT_TRUE(machine->is_directory(test_support::units(name)));
        {
            contract::handle const last = contract::look_at(name);
            std::wstring shown(33000, L'\0');
            DWORD const size =
                ::GetFinalPathNameByHandleW(last.get(), shown.data(), 33000, VOLUME_NAME_DOS);
            EXPECT_EQ(size, name.size());
            EXPECT_FALSE(::MoveFileExW(L"C:\\d", L"C:\\e", 0)) << "something is open far below";
        }
        EXPECT_TRUE(::MoveFileExW(L"C:\\d", L"C:\\e", 0));
        std::wstring root(100, L'\0');
        ASSERT_TRUE(::GetVolumePathNameW(name.c_str(), root.data(), 100));
        EXPECT_STREQ(root.c_str(), L"\\\\?\\C:\\");
        machine->remove(u"C:\\e");
        EXPECT_TRUE(machine->entries(u"C:\\").empty());
        machine->add_directory(test_support::units(name));
        machine.reset();
    });
}

TEST(Scale, ATreeIsTakenAwayStepByStep)
{
    test_support::run_on_stack_of(small_stack, [] {
        simulated_machine machine;
        constexpr std::size_t levels = 2000;
        machine.add_directory(test_support::units(deep_name(levels)));
        for (std::size_t level = levels; level > 0; --level)
            ASSERT_EQ(contract::remove_directory(deep_name(level)), success) << level;
        EXPECT_TRUE(machine.entries(u"C:\\").empty());
    });
}

/// What so many looks take, the shortest of several tries.
std::chrono::nanoseconds time_of_looks(wchar_t const *name)
{
    auto shortest = std::chrono::nanoseconds::max();
    for (int attempt = 0; attempt < 7; ++attempt) {
        auto const begin = std::chrono::steady_clock::now();
        for (int look = 0; look < 500; ++look)
            EXPECT_NE(::GetFileAttributesW(name), INVALID_FILE_ATTRIBUTES);
        shortest =
            std::min<std::chrono::nanoseconds>(shortest, std::chrono::steady_clock::now() - begin);
    }
    return shortest;
}

// A thousand times as many entries would take a thousand times as long if a look went
// through them all.
TEST(Scale, ALookDependsOnTheDepthOnly)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\small\\name");
    for (int number = 0; number < 30'000; ++number)
        machine.add_file(u"C:\\large\\" + test_support::units(std::to_wstring(number)));
    machine.add_directory(u"C:\\large\\name");
    EXPECT_LT(time_of_looks(L"C:\\large\\name"), 50 * time_of_looks(L"C:\\small\\name"));
}

} // namespace

} // namespace fl::simulation
