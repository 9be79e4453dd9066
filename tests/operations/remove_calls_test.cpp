// Which calls the removals of one name make, what they make of calls that fail, and what
// open files and links above it mean to them.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

// The right to delete (10000) and nothing else; the kind of information is 21.
TEST_ON_MACHINE(RemoveCalls, OpenMarkAndClose)
{
    machine.add_file(u"C:\\f");
    remove(u"C:\\f");
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{R"(GetFullPathNameW(C:\f))",
                     R"(CreateFileW(C:\f) access 10000 share 7 disposition 3 flags 2200000)",
                     R"(SetFileInformationByHandle(C:\f) flags 15)", R"(CloseHandle(C:\f))"}));
}

TEST_ON_MACHINE(RemoveCalls, AddAPrefixFrom248Units)
{
    for (std::size_t const size : {247U, 248U}) {
        simulated_machine fresh;
        std::u16string const path = u"C:\\" + std::u16string(size - 3, u'n');
        fresh.add_file(path);
        remove(path);
        EXPECT_EQ(fresh.journal().at(1).text, size == 247 ? path : uR"(\\?\)" + path);
        EXPECT_FALSE(fresh.exists(path));
    }
}

TEST_ON_MACHINE(RemoveCalls, ThatFail)
{
    machine.add_file(u"C:\\f");
    for (DWORD const code : {2U, 3U, 53U, 64U, 123U, 267U, 5U, 1920U, 32U, 1117U, 161U, 206U, 0U}) {
        sure_fault const fault = machine.fail_call("CreateFileW", 1, code);
        bool const is_missing = code == 53 || code == 64 || code == 123 || code == 267;
        // a code of 0: the system doesn't say why
        auto const expected =
            is_missing ? not_found(u"f") : translated(code == 0 ? ERROR_GEN_FAILURE : code, u"f");
        EXPECT_FAILURE(remove(u"f"), expected) << code;
        EXPECT_TRUE(machine.exists(u"C:\\f"));
    }
}

TEST_ON_MACHINE(RemoveCalls, OfTheEmptyPathFailForNobody)
{
    auto const fault = machine.fail_every_call_on("CreateFileW", 5);
    remove(u"");
    remove(upath());
}

TEST_ON_MACHINE(RemoveCalls, EachThatFailsReleasesTheFile)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(u"C:\\f").set_attributes(u"C:\\f", FILE_ATTRIBUTE_READONLY);
    };
    auto const reported = system_error(ERROR_IO_DEVICE, u"C:\\f");
    sweep(build, [&](failing_run const &run) {
        auto const thrown = failure_of([] { remove(u"C:\\f"); });
        EXPECT_EQ(run.machine.exists(u"C:\\f"), thrown.has_value());
        // the fourth call is the closing, which nobody can do anything about
        bool const is_reported = run.is_broken() && run.nth != 4;
        EXPECT_EQ(thrown, is_reported ? std::optional(reported) : std::nullopt);
    });
}

TEST_ON_MACHINE(RemoveFileCalls, OneDeletion)
{
    machine.add_file(u"C:\\f");
    remove_file(u"C:\\f");
    EXPECT_EQ(calls_on_disk(machine), lines{R"(DeleteFileW(C:\f))"});
}

TEST_ON_MACHINE(RemoveFileCalls, LookAtWhatIsThereOnlyIfDenied)
{
    machine.add_directory(u"C:\\d");
    for (DWORD const code : {2U, 32U, 267U, 1920U}) {
        sure_fault const fault = machine.fail_call("DeleteFileW", 1, code);
        EXPECT_NE(failure_of([] { remove_file(u"C:\\d"); }), std::nullopt);
        EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 0) << code;
    }
    machine.clear_journal();
    EXPECT_FAILURE(remove_file(u"C:\\d"), file_is_directory(u"C:\\d"));
    EXPECT_EQ(calls_on_disk(machine),
              (lines{R"(DeleteFileW(C:\d))", R"(GetFileAttributesExW(C:\d))"}));
}

TEST_ON_MACHINE(RemoveFileCalls, WhatCantBeLookedAtIsDenied)
{
    machine.add_directory(u"C:\\d");
    sure_fault const fault = machine.fail_call("GetFileAttributesExW", 1, ERROR_IO_DEVICE);
    EXPECT_FAILURE(remove_file(u"C:\\d"), denied(u"C:\\d"));
}

TEST_ON_MACHINE(RemoveDirectoryCalls, OneRemoval)
{
    machine.add_directory(u"C:\\d");
    remove_directory(u"C:\\d");
    EXPECT_FAILURE(remove_directory(u"C:\\d"), not_found(u"C:\\d"));
    EXPECT_EQ(calls_on_disk(machine),
              (lines{R"(RemoveDirectoryW(C:\d))", R"(RemoveDirectoryW(C:\d))"}));
}

TEST_ON_MACHINE(RemoveOneKindCalls, NoneForTheEmptyPath)
{
    remove_file(u"");
    remove_file(upath());
    remove_directory(u"");
    remove_directory(upath());
    EXPECT_EQ(calls_with_arguments(machine), lines{});
}

TEST_ON_MACHINE(RemoveOneKindCalls, ThatFailNameTheForm)
{
    machine.add_file(u"C:\\d");
    for (DWORD const code : {2U, 3U, 5U, 32U, 53U, 145U, 267U, 1117U}) {
        sure_fault const file = machine.fail_every_call_on("DeleteFileW", code);
        sure_fault const directory = machine.fail_every_call_on("RemoveDirectoryW", code);
        EXPECT_FAILURE(remove_file(u"d"), translated(code, u"C:\\d")) << code;
        EXPECT_FAILURE(remove_directory(u"d"), translated(code, u"C:\\d")) << code;
    }
}

/// Links ahead of the last element are followed by the system, the last one never.
TEST_ON_MACHINE(RemoveBelowLinks, TakesTheNameInTheTarget)
{
    machine.add_junction(u"C:\\j", uR"(C:\away)");
    for (char16_t const *name : {u"a", u"b"})
        machine.add_file(std::u16string(uR"(C:\away\)") + name);
    machine.add_directory(uR"(C:\away\c)");
    remove(uR"(C:\j\a)");
    remove_file(uR"(C:\j\b)");
    remove_directory(uR"(C:\j\c)");
    EXPECT_EQ(machine.entries(uR"(C:\away)"), names{});
    EXPECT_TRUE(machine.exists(u"C:\\j"));
}

class held_file
{
public:
    held_file(wchar_t const *name, DWORD share)
        : raw_(::CreateFileW(name, GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(raw_, INVALID_HANDLE_VALUE);
    }
    ~held_file() { ::CloseHandle(raw_); }
    held_file(held_file const &) = delete;
    held_file &operator=(held_file const &) = delete;

private:
    HANDLE raw_;
};

TEST_ON_MACHINE(RemoveOpenFiles, NeedsThemShared)
{
    machine.add_file(u"C:\\f");
    held_file const reader(L"C:\\f", FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_FAILURE(remove(u"f"), system_error(32, u"f"));
    EXPECT_FAILURE(remove_file(u"f"), system_error(32, u"C:\\f"));
    EXPECT_FAILURE(remove_all(u"f"), system_error(32, u"C:\\f"));
    EXPECT_TRUE(machine.exists(u"C:\\f"));
}

TEST_ON_MACHINE(RemoveOpenFiles, FreesTheNameAtOnce)
{
    machine.add_file(u"C:\\f");
    held_file const reader(L"C:\\f", FILE_SHARE_READ | FILE_SHARE_DELETE);
    remove(u"C:\\f");
    EXPECT_FALSE(machine.exists(u"C:\\f"));
    EXPECT_FAILURE(remove(u"C:\\f"), not_found(u"C:\\f"));
}

TEST_ON_MACHINE(RemoveOpenFiles, RemoveFileFreesTheNameAtOnce)
{
    for (auto const runs :
         {simulation::edition::windows_10_22h2, simulation::edition::windows_11}) {
        simulated_machine fresh;
        fresh.set_edition(runs).add_file(u"C:\\f");
        held_file const reader(L"C:\\f", FILE_SHARE_READ | FILE_SHARE_DELETE);
        EXPECT_EQ(failure_of([] { remove_file(u"C:\\f"); }), std::nullopt);
        EXPECT_FAILURE(remove_file(u"C:\\f"), not_found(u"C:\\f"));
        fresh.add_file(u"C:\\f", "another");
        EXPECT_EQ(fresh.content(u"C:\\f"), "another");
    }
}

// Before version 1903.
TEST_ON_MACHINE(RemoveOpenFiles, RemoveFileLeftTheNameToTheLastWhoHadItOpen)
{
    machine.set_edition(simulation::edition::windows_10_1809).add_file(u"C:\\f");
    {
        held_file const reader(L"C:\\f", FILE_SHARE_READ | FILE_SHARE_DELETE);
        EXPECT_EQ(failure_of([] { remove_file(u"C:\\f"); }), std::nullopt);
        EXPECT_FAILURE(remove_file(u"C:\\f"), denied(u"C:\\f")) << "until then";
        EXPECT_FAILURE(remove(u"C:\\f"), denied(u"C:\\f"));
    }
    EXPECT_FALSE(machine.exists(u"C:\\f"));
}

} // namespace
} // namespace fl::filesystem::tests
