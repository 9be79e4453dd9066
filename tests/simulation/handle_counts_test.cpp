// What is open on a machine, and whose it is.

#include "platform/finding.hpp"
#include "platform/links.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace fl::simulation {

namespace {

using contract::code_of_open;
using contract::outcome_of;
using contract::success;

TEST(HandleCounts, FollowOpeningAndClosing)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    EXPECT_EQ(machine.open_handles(), 0) << "the current directory is none of the caller's";
    {
        contract::handle first = contract::open(L"C:\\file");
        contract::handle const second = contract::open(L"C:\\file");
        EXPECT_EQ(machine.open_handles(), 2);
        contract::search const find(L"C:\\*");
        EXPECT_EQ(machine.open_handles(), 2) << "a search is counted apart";
        EXPECT_EQ(machine.find_handles(), 1);
        first.close();
        EXPECT_EQ(machine.open_handles(), 1);
    }
    EXPECT_EQ(machine.open_handles(), 0);
    EXPECT_EQ(machine.find_handles(), 0);
}

struct failing_open
{
    wchar_t const *name;
    contract::manner how;
    DWORD code;
};

constexpr failing_open failing_opens[] = {
    {L"C:\\none", {}, ERROR_FILE_NOT_FOUND},
    {L"C:\\dir", {}, ERROR_ACCESS_DENIED},
    {L"C:\\file", {.disposition = CREATE_NEW}, ERROR_FILE_EXISTS},
    {L"C:\\file", {.disposition = 77}, ERROR_INVALID_PARAMETER},
    {L"C:\\read_only", {.access = GENERIC_WRITE}, ERROR_ACCESS_DENIED},
    {L"C:\\read_only", {.flags = FILE_FLAG_DELETE_ON_CLOSE}, ERROR_ACCESS_DENIED},
    {L"C:\\held", {}, ERROR_SHARING_VIOLATION},
};

TEST(HandleCounts, StayAfterFailures)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file").add_directory(u"C:\\dir").add_file(u"C:\\held");
    machine.add_file(u"C:\\read_only").set_attributes(u"C:\\read_only", FILE_ATTRIBUTE_READONLY);
    contract::handle const held = contract::open(L"C:\\held", {.share = 0});
    for (failing_open const &row : failing_opens) {
        EXPECT_EQ(code_of_open(row.name, row.how), row.code);
        EXPECT_EQ(machine.open_handles(), 1);
    }
    for (wchar_t const *pattern : {L"C:\\none*", L"C:\\none\\*", L"C:\\file\\*", L"C:\\", L""}) {
        EXPECT_NE(contract::search(pattern).code, success);
        EXPECT_EQ(machine.find_handles(), 0);
    }
    EXPECT_EQ(contract::remove_directory(L"C:\\dir"), success) << "nobody holds it";
    EXPECT_EQ(code_of_open(L"C:\\file", {.share = 0}), success);
}

/// Whether nobody else has the file open.
bool is_free(wchar_t const *name)
{
    return code_of_open(name, {.access = GENERIC_READ | GENERIC_WRITE | DELETE, .share = 0}) ==
           success;
}

TEST(HandleCounts, ShareModesAreFreeAfterBrokenCalls)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file").add_file(u"C:\\other");
    for (char const *function : {"CreateFileW", "CopyFileW", "MoveFileExW", "DeleteFileW"}) {
        fault const broken = machine.fail_every_call_on(function, ERROR_IO_DEVICE);
        code_of_open(L"C:\\file", {.share = 0});
        ::CopyFileW(L"C:\\file", L"C:\\other", FALSE);
        ::MoveFileExW(L"C:\\file", L"C:\\file", 0);
        ::DeleteFileW(L"C:\\none");
    }
    {
        fault const broken = machine.fail_every_call_on("CloseHandle", ERROR_IO_DEVICE);
        EXPECT_EQ(code_of_open(L"C:\\file", {.share = 0}), success);
        EXPECT_TRUE(broken.fired());
    }
    EXPECT_TRUE(is_free(L"C:\\file"));
    EXPECT_TRUE(is_free(L"C:\\other"));
}

TEST(HandleCounts, HandlesOfOneKindAreNoneOfTheOther)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    contract::handle const file = contract::open(L"C:\\file");
    WIN32_FIND_DATAW data;
    HANDLE const find = ::FindFirstFileW(L"C:\\*", &data);
    EXPECT_EQ(outcome_of([&] { return ::FindClose(file.get()) != FALSE; }),
              DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(outcome_of([&] { return ::CloseHandle(find) != FALSE; }),
              DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(machine.open_handles(), 1);
    EXPECT_EQ(machine.find_handles(), 1);
    EXPECT_TRUE(::FindClose(find));
    EXPECT_EQ(outcome_of([&] { return ::FindClose(find) != FALSE; }), DWORD{ERROR_INVALID_HANDLE})
        << "once only";
}

TEST(HandleCounts, HandlesOfOneMachineAreNoneOfAnother)
{
    simulated_machine outer;
    outer.add_file(u"C:\\file", "outer");
    contract::handle file = contract::open(L"C:\\file", {.share = 0});
    WIN32_FIND_DATAW data;
    HANDLE const find = ::FindFirstFileW(L"C:\\*", &data);
    {
        simulated_machine inner;
        inner.add_file(u"C:\\file", "inner");
        contract::handle const own = contract::open(L"C:\\file");
        HANDLE const own_find = ::FindFirstFileW(L"C:\\*", &data);
        EXPECT_NE(own.get(), file.get());
        EXPECT_NE(own_find, find);
        EXPECT_EQ(outcome_of([&] { return ::CloseHandle(file.get()) != FALSE; }),
                  DWORD{ERROR_INVALID_HANDLE});
        EXPECT_EQ(outcome_of([&] { return ::FindNextFileW(find, &data) != FALSE; }),
                  DWORD{ERROR_INVALID_HANDLE});
        EXPECT_EQ(outcome_of([&] { return ::FindClose(find) != FALSE; }),
                  DWORD{ERROR_INVALID_HANDLE});
        EXPECT_EQ(inner.open_handles(), 1);
        EXPECT_EQ(outer.open_handles(), 1);
        EXPECT_TRUE(::FindClose(own_find));
    }
    EXPECT_EQ(outer.find_handles(), 1);
    EXPECT_TRUE(::FindClose(find));
    file.close();
    EXPECT_EQ(outer.open_handles(), 0);
}

TEST(HandleCounts, AMachineGoesWhileThingsAreOpen)
{
    HANDLE file = nullptr;
    HANDLE find = nullptr;
    WIN32_FIND_DATAW data;
    {
        simulated_machine machine;
        machine.add_file(u"C:\\dir\\sub\\file", "text").add_junction(u"C:\\j", u"C:\\dir");
        ASSERT_TRUE(::SetCurrentDirectoryW(L"C:\\j\\sub"));
        file = ::CreateFileW(L"file", DELETE, contract::share_all, nullptr, OPEN_EXISTING,
                             FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        find = ::FindFirstFileW(L"*", &data);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        ASSERT_NE(find, INVALID_HANDLE_VALUE);
        machine.remove(u"C:\\dir");
        machine.remove_drive(u'C');
    }
    simulated_machine next;
    EXPECT_EQ(next.open_handles() + next.find_handles(), 0);
    EXPECT_FALSE(::CloseHandle(file));
    EXPECT_FALSE(::FindNextFileW(find, &data));
}

TEST(HandleCounts, WhatATestRemovesMayBeOpen)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\file", "text").add_drive(u'D').add_file(u"D:\\file", "D");
    contract::opened const below(L"C:\\dir\\file", GENERIC_READ | GENERIC_WRITE);
    std::optional<contract::opened> directory(std::in_place, L"C:\\dir", GENERIC_READ | DELETE);
    contract::opened const on_drive(L"D:\\file", GENERIC_READ);
    machine.remove(u"C:\\dir").remove_drive(u'D').add_file(u"C:\\dir", "in its place");
    char bytes[4] = {};
    DWORD count = 0;
    EXPECT_TRUE(::ReadFile(below.get(), bytes, 4, &count, nullptr));
    EXPECT_EQ(std::string(bytes, count), "text");
    EXPECT_TRUE(::ReadFile(on_drive.get(), bytes, 4, &count, nullptr));
    FILE_DISPOSITION_INFO gone = {TRUE};
    ::SetFileInformationByHandle(directory->get(), FileDispositionInfo, &gone, sizeof gone);
    directory.reset();
    EXPECT_EQ(machine.content(u"C:\\dir"), "in its place") << "that is another";
    EXPECT_EQ(machine.open_handles(), 2);
}

} // namespace

} // namespace fl::simulation
