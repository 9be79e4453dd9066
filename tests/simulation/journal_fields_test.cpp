// What the journal tells of every call.

#include "platform/links.hpp"
#include "platform/shell_link.hpp"

#include <simulation/machine.hpp>

#include <winnetwk.h>

#include <gtest/gtest.h>

#include <functional>

namespace fl::simulation {

namespace {

wchar_t buffer[200];
DWORD number = 0;

/// Handles that were opened by the texts in the rows below.
struct opened_things
{
    HANDLE file;
    HANDLE point;
    HANDLE find;
};

struct told_call
{
    std::function<std::uint64_t(opened_things const &)> run;
    journal_entry told; ///< but for the answer, which `run` hands back
};

template <typename Answer>
std::uint64_t as_told(Answer answer)
{
    return static_cast<std::make_unsigned_t<Answer>>(answer);
}

std::uint64_t as_told(HANDLE handle)
{
    return reinterpret_cast<std::uintptr_t>(handle);
}

constexpr DWORD access = GENERIC_READ | DELETE;
constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

using on = opened_things const &;

told_call const told_calls[] = {
    {[](on) { return as_told(::GetFullPathNameW(L"a/b", 200, buffer, nullptr)); },
     {"GetFullPathNameW", u"a/b", u""}},
    {[](on) { return as_told(::GetCurrentDirectoryW(200, buffer)); },
     {"GetCurrentDirectoryW", u"", u""}},
    {[](on) { return as_told(::SetCurrentDirectoryW(L"C:/")); },
     {"SetCurrentDirectoryW", u"C:/", u""}},
    {[](on) { return as_told(::SetEnvironmentVariableW(L"name", L"value")); },
     {"SetEnvironmentVariableW", u"name", u"value"}},
    {[](on) { return as_told(::GetEnvironmentVariableW(L"name", buffer, 200)); },
     {"GetEnvironmentVariableW", u"name", u""}},
    {[](on) { return as_told(::CreateDirectoryW(L"new ", nullptr)); },
     {"CreateDirectoryW", u"new ", u""}},
    {[](on) { return as_told(::RemoveDirectoryW(L"NEW")); }, {"RemoveDirectoryW", u"NEW", u""}},
    {[](on) { return as_told(::GetFileAttributesW(L"file")); },
     {"GetFileAttributesW", u"file", u""}},
    {[](on) { return as_told(::GetFileAttributesExW(L"file", GetFileExInfoStandard, buffer)); },
     {"GetFileAttributesExW", u"file", u""}},
    {[](on) { return as_told(::SetFileAttributesW(L"file", FILE_ATTRIBUTE_HIDDEN)); },
     {"SetFileAttributesW", u"file", u"", FILE_ATTRIBUTE_HIDDEN}},
    {[](on) {
         HANDLE const made = ::CreateFileW(L".\\file", access, share, nullptr, OPEN_EXISTING,
                                           FILE_FLAG_RANDOM_ACCESS, nullptr);
         std::uint64_t const answer = as_told(made);
         return answer;
     },
     {"CreateFileW", u".\\file", u"", FILE_FLAG_RANDOM_ACCESS, access, share, OPEN_EXISTING}},
    {[](on held) { return as_told(::ReadFile(held.file, buffer, 2, &number, nullptr)); },
     {"ReadFile", u"c:/FILE", u""}},
    {[](on held) { return as_told(::WriteFile(held.file, "ab", 2, &number, nullptr)); },
     {"WriteFile", u"c:/FILE", u""}},
    {[](on held) {
         return as_told(::DeviceIoControl(held.point, FSCTL_GET_REPARSE_POINT, nullptr, 0, buffer,
                                          sizeof buffer, &number, nullptr));
     },
     {"DeviceIoControl", u"C:\\point", u"", FSCTL_GET_REPARSE_POINT}},
    {[](on held) {
         BY_HANDLE_FILE_INFORMATION information;
         return as_told(::GetFileInformationByHandle(held.file, &information));
     },
     {"GetFileInformationByHandle", u"c:/FILE", u""}},
    {[](on held) {
         return as_told(
             ::GetFileInformationByHandleEx(held.file, FileIdInfo, buffer, sizeof buffer));
     },
     {"GetFileInformationByHandleEx", u"c:/FILE", u"", FileIdInfo}},
    {[](on held) {
         FILE_DISPOSITION_INFO kept = {FALSE};
         return as_told(
             ::SetFileInformationByHandle(held.file, FileDispositionInfo, &kept, sizeof kept));
     },
     {"SetFileInformationByHandle", u"c:/FILE", u"", FileDispositionInfo}},
    {[](on held) {
         return as_told(::GetFinalPathNameByHandleW(held.file, buffer, 200, VOLUME_NAME_GUID));
     },
     {"GetFinalPathNameByHandleW", u"c:/FILE", u"", VOLUME_NAME_GUID}},
    {[](on) {
         WIN32_FIND_DATAW data;
         return as_told(::FindFirstFileExW(L"*e", FindExInfoBasic, &data, FindExSearchNameMatch,
                                           nullptr, FIND_FIRST_EX_LARGE_FETCH));
     },
     {"FindFirstFileExW", u"*e", u"", FIND_FIRST_EX_LARGE_FETCH}},
    {[](on) {
         WIN32_FIND_DATAW data;
         return as_told(::FindFirstFileW(L"f*", &data));
     },
     {"FindFirstFileW", u"f*", u""}},
    {[](on held) {
         WIN32_FIND_DATAW data;
         return as_told(::FindNextFileW(held.find, &data));
     },
     {"FindNextFileW", u"c:/*", u""}},
    {[](on) { return as_told(::CopyFileW(L"file", L"./copy", TRUE)); },
     {"CopyFileW", u"file", u"./copy", TRUE}},
    {[](on) { return as_told(::MoveFileExW(L"copy", L"moved", MOVEFILE_WRITE_THROUGH)); },
     {"MoveFileExW", u"copy", u"moved", MOVEFILE_WRITE_THROUGH}},
    {[](on) { return as_told(::CreateHardLinkW(L"hard", L"moved", nullptr)); },
     {"CreateHardLinkW", u"hard", u"moved"}},
    {[](on) { return as_told(::DeleteFileW(L"hard")); }, {"DeleteFileW", u"hard", u""}},
    {[](on) { return as_told(::CreateSymbolicLinkW(L"link", L"..\\a", 3)); },
     {"CreateSymbolicLinkW", u"link", u"..\\a", 3}},
    {[](on) {
         MEMORY_BASIC_INFORMATION information;
         return as_told(::VirtualQuery(buffer, &information, sizeof information));
     },
     {"VirtualQuery", u"", u""}},
    {[](on) { return as_told(::GetDiskFreeSpaceExW(L"C:/", nullptr, nullptr, nullptr)); },
     {"GetDiskFreeSpaceExW", u"C:/", u""}},
    {[](on) { return as_told(::GetVolumePathNameW(L"file", buffer, 200)); },
     {"GetVolumePathNameW", u"file", u""}},
    {[](on held) { return as_told(::FindClose(held.find)); }, {"FindClose", u"c:/*", u""}},
    {[](on held) { return as_told(::CloseHandle(held.file)); }, {"CloseHandle", u"c:/FILE", u""}},
};

void check_told(journal_entry const &told, journal_entry const &wanted)
{
    EXPECT_EQ(told.function, wanted.function);
    EXPECT_EQ(told.text, wanted.text) << wanted.function;
    EXPECT_EQ(told.second_text, wanted.second_text) << wanted.function;
    EXPECT_EQ(told.flags, wanted.flags) << wanted.function;
    EXPECT_EQ(told.access, wanted.access) << wanted.function;
    EXPECT_EQ(told.share, wanted.share) << wanted.function;
    EXPECT_EQ(told.disposition, wanted.disposition) << wanted.function;
    EXPECT_EQ(told.answer, wanted.answer) << wanted.function;
    EXPECT_EQ(told.last_error, stale_last_error) << wanted.function;
}

TEST(JournalFields, TellEachCall)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file", "text").add_junction(u"C:\\point", u"C:\\");
    contract::handle file = contract::open(L"c:/FILE", {.access = FILE_ALL_ACCESS});
    contract::reparse_point const point(L"C:\\point", FILE_READ_EA);
    WIN32_FIND_DATAW data;
    opened_things const held = {file.get(), point.get(), ::FindFirstFileW(L"c:/*", &data)};
    for (told_call const &row : told_calls) {
        machine.clear_journal();
        journal_entry wanted = row.told;
        wanted.answer = row.run(held);
        ASSERT_EQ(machine.journal().size(), 1U) << wanted.function;
        EXPECT_NE(wanted.answer, 0U) << wanted.function << ": it should have succeeded";
        check_told(machine.journal()[0], wanted);
    }
}

TEST(JournalFields, TellWhatFailedAlike)
{
    simulated_machine machine;
    ::CreateFileW(L"none", access, share, nullptr, OPEN_ALWAYS + 7, 5, nullptr);
    ::MoveFileExW(L"none", L"b", 0);
    ::CloseHandle(nullptr);
    ::FindClose(INVALID_HANDLE_VALUE);
    ::GetFileAttributesW(nullptr);
    auto const journal = machine.journal();
    ASSERT_EQ(journal.size(), 5U);
    EXPECT_EQ(journal[0].answer, as_told(INVALID_HANDLE_VALUE));
    EXPECT_EQ(journal[0].disposition, DWORD{OPEN_ALWAYS + 7});
    EXPECT_EQ(journal[0].last_error, DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(journal[1].second_text, u"b");
    EXPECT_EQ(journal[1].last_error, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(journal[2].text, u"") << "no handle, no text";
    EXPECT_EQ(journal[2].last_error, DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(journal[3].last_error, DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(journal[4].last_error, DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(JournalFields, KeepTheTextOfAnOpeningThatTheFileHasLeft)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    contract::handle file = contract::open(L"C:\\file");
    ASSERT_TRUE(::MoveFileExW(L"C:\\file", L"C:\\moved", 0));
    file.close();
    EXPECT_EQ(machine.journal().back().text, u"C:\\file");
}

} // namespace

} // namespace fl::simulation
