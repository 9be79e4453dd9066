// The types that own what the system hands out: each closes once what it holds, and
// nothing that it doesn't.

#include "platform/com_apartment.hpp"
#include "platform/owned_handle.hpp"
#include "platform/shell_link_object.hpp"

#include "support/calls.hpp"

#include <type_traits>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

class FileHandle : public testing::Test
{
protected:
    FileHandle() { machine.add_file(u"C:\\a").add_file(u"C:\\b"); }

    static file_handle open(wchar_t const *name)
    {
        return file_handle(
            ::CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    }

    int closed() const { return machine.calls_of("CloseHandle"); }

    simulated_machine machine;
};

TEST_F(FileHandle, EmptyClosesNothing)
{
    {
        file_handle const none;
        EXPECT_FALSE(none);
        EXPECT_EQ(none.get(), INVALID_HANDLE_VALUE);
        file_handle const failed = open(L"C:\\missing");
        EXPECT_FALSE(failed);
    }
    EXPECT_EQ(closed(), 0);
}

TEST_F(FileHandle, ClosesOnce)
{
    {
        file_handle const held = open(L"C:\\a");
        EXPECT_TRUE(held);
        EXPECT_EQ(machine.open_handles(), 1);
    }
    EXPECT_EQ(machine.open_handles(), 0);
    EXPECT_EQ(closed(), 1);
}

TEST_F(FileHandle, MovedFromHoldsNothing)
{
    {
        file_handle former = open(L"C:\\a");
        HANDLE const raw = former.get();
        file_handle const held(std::move(former));
        EXPECT_FALSE(former);
        EXPECT_EQ(held.get(), raw);
        EXPECT_EQ(machine.open_handles(), 1);
    }
    EXPECT_EQ(closed(), 1);
}

TEST_F(FileHandle, AssignedOverAHeldOneClosesIt)
{
    {
        file_handle held = open(L"C:\\a");
        file_handle other = open(L"C:\\b");
        HANDLE const raw = other.get();
        held = std::move(other);
        EXPECT_EQ(machine.open_handles(), 1) << "that of `a` is closed";
        EXPECT_EQ(machine.journal().back().text, u"C:\\a");
        EXPECT_EQ(held.get(), raw);
        EXPECT_FALSE(other);
        held = file_handle();
        EXPECT_EQ(machine.open_handles(), 0);
    }
    EXPECT_EQ(closed(), 2);
}

class FindHandle : public testing::Test
{
protected:
    FindHandle() { machine.add_file(u"C:\\a"); }

    static find_handle search(wchar_t const *pattern)
    {
        WIN32_FIND_DATAW found{};
        return find_handle(::FindFirstFileExW(pattern, FindExInfoStandard, &found,
                                              FindExSearchNameMatch, nullptr, 0));
    }

    int closed() const { return machine.calls_of("FindClose"); }

    simulated_machine machine;
};

TEST_F(FindHandle, EmptyClosesNothing)
{
    {
        find_handle const none;
        EXPECT_FALSE(none);
        find_handle const failed = search(L"C:\\missing\\*");
        EXPECT_FALSE(failed);
    }
    EXPECT_EQ(closed(), 0);
}

TEST_F(FindHandle, ClosesOnce)
{
    {
        find_handle const held = search(L"C:\\*");
        EXPECT_TRUE(held);
        EXPECT_EQ(machine.find_handles(), 1);
    }
    EXPECT_EQ(machine.find_handles(), 0);
    EXPECT_EQ(closed(), 1);
}

TEST_F(FindHandle, MovedFromHoldsNothing)
{
    {
        find_handle former = search(L"C:\\*");
        find_handle const held(std::move(former));
        EXPECT_FALSE(former);
        EXPECT_TRUE(held);
        EXPECT_EQ(machine.find_handles(), 1);
    }
    EXPECT_EQ(closed(), 1);
}

TEST_F(FindHandle, AssignedOverAHeldOneClosesIt)
{
    {
        find_handle held = search(L"C:\\*");
        find_handle other = search(L"C:\\*");
        HANDLE const raw = other.get();
        held = std::move(other);
        EXPECT_EQ(machine.find_handles(), 1);
        EXPECT_EQ(held.get(), raw);
        EXPECT_FALSE(other);
    }
    EXPECT_EQ(closed(), 2);
}

TEST_F(FindHandle, ReleasedIsTheCallersToClose)
{
    HANDLE raw = INVALID_HANDLE_VALUE;
    {
        find_handle held = search(L"C:\\*");
        raw = held.release();
        EXPECT_FALSE(held);
    }
    EXPECT_EQ(closed(), 0);
    EXPECT_TRUE(::FindClose(raw));
    EXPECT_EQ(machine.find_handles(), 0);
}

class ComPointer : public testing::Test
{
protected:
    static com_pointer<IShellLinkW> create()
    {
        com_pointer<IShellLinkW> link;
        EXPECT_EQ(create_shell_link(link), S_OK);
        return link;
    }

    simulated_machine machine;
    com_apartment const apartment;
};

TEST_F(ComPointer, EmptyReleasesNothing)
{
    com_pointer<IShellLinkW> const none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.get(), nullptr);
}

TEST_F(ComPointer, ReleasesOnce)
{
    {
        auto const held = create();
        EXPECT_TRUE(held);
        EXPECT_EQ(machine.live_interfaces(), 1);
    }
    EXPECT_EQ(machine.live_interfaces(), 0);
}

TEST_F(ComPointer, MovedFromHoldsNothing)
{
    {
        auto former = create();
        IShellLinkW *const raw = former.get();
        com_pointer<IShellLinkW> const held(std::move(former));
        EXPECT_FALSE(former);
        EXPECT_EQ(held.get(), raw);
        EXPECT_EQ(machine.live_interfaces(), 1);
    }
    EXPECT_EQ(machine.live_interfaces(), 0);
}

TEST_F(ComPointer, AssignedOverAHeldOneReleasesIt)
{
    auto held = create();
    auto other = create();
    held = std::move(other);
    EXPECT_EQ(machine.live_interfaces(), 1);
    EXPECT_FALSE(other);
    held = com_pointer<IShellLinkW>();
    EXPECT_EQ(machine.live_interfaces(), 0);
}

TEST_F(ComPointer, AcquiringOverAHeldOneReleasesIt)
{
    auto held = create();
    EXPECT_EQ(create_shell_link(held), S_OK);
    EXPECT_EQ(machine.live_interfaces(), 1);
    auto const fault = machine.fail_call("CoCreateInstance", 1, static_cast<DWORD>(E_FAIL));
    EXPECT_EQ(create_shell_link(held), E_FAIL);
    EXPECT_FALSE(held);
    EXPECT_EQ(machine.live_interfaces(), 0);
}

TEST_F(ComPointer, AsksForAnotherInterface)
{
    auto const link = create();
    com_pointer<IPersistFile> persistence;
    EXPECT_EQ(query_persistence(link, persistence), S_OK);
    EXPECT_TRUE(persistence);
    EXPECT_EQ(machine.live_interfaces(), 2);
}

static_assert(!std::is_copy_constructible_v<file_handle>);
static_assert(!std::is_copy_constructible_v<find_handle>);
static_assert(!std::is_copy_constructible_v<com_pointer<IShellLinkW>>);
static_assert(!std::is_move_constructible_v<com_apartment> &&
              !std::is_copy_assignable_v<com_apartment>);

TEST(ComApartment, LeavesWhatItEntered)
{
    simulated_machine machine;
    {
        com_apartment const outer;
        EXPECT_EQ(machine.com_apartments(), 1);
        {
            com_apartment const inner;
            EXPECT_EQ(machine.com_apartments(), 2);
        }
        EXPECT_EQ(machine.com_apartments(), 1);
    }
    EXPECT_EQ(machine.com_apartments(), 0);
    EXPECT_EQ(machine.calls_of("CoInitialize"), 2);
    EXPECT_EQ(machine.calls_of("CoUninitialize"), 2);
}

} // namespace
} // namespace fl::filesystem::detail
