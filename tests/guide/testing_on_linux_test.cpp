// The code of docs/testing-on-linux.md, and the example that it leads to.

#include "guide/page.hpp"

#include <fl/simulation/machine.hpp>

#include <gtest/gtest.h>

#include <thread>

#define main save_settings_main
#include "save_settings/faults.cpp"
#undef main
#include "save_settings/settings.cpp"

namespace {

bool replace_file(wchar_t const *from, wchar_t const *to)
{
    ::DeleteFileW(to);
    return ::MoveFileExW(from, to, 0) != 0;
}

TEST(TestingGuide, AFirstTest)
{
    fl::simulation::machine windows;
    windows.build().add_file(u"C:\\new", "new").add_file(u"C:\\kept", "old");
    auto const held = windows.faults().fail_call("MoveFileExW", 1, ERROR_SHARING_VIOLATION);

    EXPECT_FALSE(replace_file(L"C:\\new", L"C:\\kept"));

    // it is lost: MoveFileExW has to do it alone, with MOVEFILE_REPLACE_EXISTING
    EXPECT_FALSE(windows.look().exists(u"C:\\kept"));
}

TEST(TestingGuide, BetweenTwoCalls)
{
    fl::simulation::machine windows;
    windows.build().add_file(u"C:\\a", "mine");
    auto const swap = windows.faults().before_call(
        "MoveFileExW", 1, [&windows] { windows.build().add_file(u"C:\\b", "somebody's"); });
    EXPECT_EQ(::MoveFileExW(L"C:\\a", L"C:\\b", 0), FALSE);
    EXPECT_EQ(windows.look().content(u"C:\\b"), "somebody's");
    EXPECT_TRUE(swap.fired());
}

TEST(TestingGuide, AMachineForEachThread)
{
    fl::simulation::machine windows;
    std::thread other([] {
        fl::simulation::machine mine;
        fl::simulation::on_this_thread const here(mine);
        ::CreateDirectoryW(L"C:\\dir", nullptr);
        EXPECT_TRUE(mine.look().is_directory(u"C:\\dir"));
    });
    other.join();
    EXPECT_FALSE(windows.look().exists(u"C:\\dir"));
}

TEST(TestingGuide, TenFaults)
{
    EXPECT_EQ(std::size(trials), 11U) << "one without a fault";
    for (trial const &one : trials)
        EXPECT_TRUE(holds(one)) << one.what;
}

/// A saver that writes over the file itself is caught by most of them.
TEST(TestingGuide, TheFaultsCatchASaverThatDoesntCare)
{
    fl::simulation::machine windows;
    windows.build().add_file(settings, "old");
    auto const full = windows.faults().fail_call("WriteFile", 1, ERROR_DISK_FULL);
    EXPECT_EQ(write_new(L"C:\\app\\settings.ini", "new"), DWORD{ERROR_DISK_FULL});
    EXPECT_EQ(windows.look().content(settings), "") << "old is lost";
}

} // namespace
