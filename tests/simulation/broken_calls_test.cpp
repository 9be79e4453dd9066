// Every call, broken: it answers as it does when it fails, and nothing has happened.

#include "platform/finding.hpp"
#include "platform/links.hpp"
#include "platform/shell_link.hpp"

#include <simulation/machine.hpp>

#include <winnetwk.h>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace fl::simulation {

namespace {

using contract::success;

/// A machine with something for each call to act on, all opened ahead.
struct broken_machine
{
    broken_machine()
    {
        machine.add_file(u"C:\\dir\\file", "text").add_file(u"C:\\dir\\more", "more");
        machine.add_directory(u"C:\\empty").add_junction(u"C:\\junction", u"C:\\dir");
        machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
        machine.add_shortcut(u"C:\\a.lnk", u"C:\\dir");
        ::SetEnvironmentVariableW(L"variable", L"value");
        file.emplace(L"C:\\dir\\file", GENERIC_READ | GENERIC_WRITE | DELETE);
        empty.emplace(L"C:\\empty");
        junction.emplace(L"C:\\junction");
        find = ::FindFirstFileW(L"C:\\dir\\*", &found);
    }
    ~broken_machine() { ::FindClose(find); }
    broken_machine(broken_machine const &) = delete;
    broken_machine &operator=(broken_machine const &) = delete;

    simulated_machine machine;
    contract::apartment apartment;
    contract::shortcut shortcut;
    std::optional<contract::opened> file;
    std::optional<contract::reparse_point> empty;
    std::optional<contract::reparse_point> junction;
    HANDLE find = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW found = {};
};

void tell(std::u16string const &path, simulated_machine const &machine, std::string &told)
{
    times const taken = machine.times_of(path);
    told += test_support::wide(path) == L"" ? "" : std::string(path.begin(), path.end());
    told += ' ' + std::to_string(machine.attributes(path)) + ' ' + machine.reparse_data(path);
    told += ' ' + std::to_string(taken.creation) + ' ' + std::to_string(taken.access) + ' ' +
            std::to_string(taken.write) + ' ' + std::to_string(machine.link_count(path));
    if (machine.is_file(path)) {
        told += ' ' + machine.content(path) + '\n';
        return;
    }
    told += '\n';
    for (std::u16string const &name : machine.entries(path))
        tell(path + (path.ends_with(u'\\') ? u"" : u"\\") + name, machine, told);
}

/// All that a call could have changed.
std::string state_of(broken_machine &broken)
{
    simulated_machine &machine = broken.machine;
    std::string told;
    tell(u"C:\\", machine, told);
    std::u16string const current = machine.current_directory();
    told += std::string(current.begin(), current.end());
    for (int const count : {machine.open_handles(), machine.find_handles(),
                            machine.live_interfaces(), machine.com_apartments()})
        told += ' ' + std::to_string(count);
    wchar_t value[10] = L"";
    ::GetEnvironmentVariableW(L"variable", value, 10);
    std::wstring const text = value + std::wstring(L" ") + broken.shortcut.path();
    FILE_STANDARD_INFO standard = {};
    ::GetFileInformationByHandleEx(broken.file->get(), FileStandardInfo, &standard,
                                   sizeof standard);
    return told + std::string(text.begin(), text.end()) + std::to_string(standard.DeletePending);
}

constexpr DWORD code = ERROR_IO_DEVICE;
wchar_t buffer[200];
DWORD number = 0;

struct broken_call
{
    char const *function;
    /// Whether it answers as it does when it fails.
    std::function<bool(broken_machine &)> fails;
};

DWORD with_bytes(HANDLE handle, DWORD control, contract::bytes data)
{
    return static_cast<DWORD>(::DeviceIoControl(handle, control, data.data(),
                                                static_cast<DWORD>(data.size()), nullptr, 0,
                                                &number, nullptr));
}

bool marks_for_deletion(HANDLE handle)
{
    FILE_DISPOSITION_INFO gone = {TRUE};
    return ::SetFileInformationByHandle(handle, FileDispositionInfo, &gone, sizeof gone) != FALSE;
}

using on = broken_machine &;

broken_call const calls[] = {
    {"GetFullPathNameW", [](on) { return ::GetFullPathNameW(L"a", 200, buffer, nullptr) == 0; }},
    {"GetCurrentDirectoryW", [](on) { return ::GetCurrentDirectoryW(200, buffer) == 0; }},
    {"SetCurrentDirectoryW", [](on) { return !::SetCurrentDirectoryW(L"C:\\dir"); }},
    {"GetEnvironmentVariableW",
     [](on) { return ::GetEnvironmentVariableW(L"variable", buffer, 200) == 0; }},
    {"SetEnvironmentVariableW", [](on) { return !::SetEnvironmentVariableW(L"variable", L"b"); }},
    {"CreateDirectoryW", [](on) { return !::CreateDirectoryW(L"C:\\new", nullptr); }},
    {"RemoveDirectoryW", [](on) { return !::RemoveDirectoryW(L"C:\\empty"); }},
    {"GetFileAttributesW",
     [](on) { return ::GetFileAttributesW(L"C:\\") == INVALID_FILE_ATTRIBUTES; }},
    {"GetFileAttributesExW",
     [](on) { return !::GetFileAttributesExW(L"C:\\", GetFileExInfoStandard, buffer); }},
    {"SetFileAttributesW", [](on) { return !::SetFileAttributesW(L"C:\\dir\\file", 1); }},
    {"CreateFileW",
     [](on) {
         return ::CreateFileW(L"C:\\new", GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr) ==
                INVALID_HANDLE_VALUE;
     }},
    {"CreateFileW",
     [](on) {
         return ::CreateFileW(L"C:\\dir\\more", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0,
                              nullptr) == INVALID_HANDLE_VALUE;
     }},
    {"ReadFile",
     [](on broken) { return !::ReadFile(broken.file->get(), buffer, 4, &number, nullptr); }},
    {"WriteFile",
     [](on broken) { return !::WriteFile(broken.file->get(), "abc", 3, &number, nullptr); }},
    {"DeviceIoControl",
     [](on broken) {
         contract::bytes data;
         return broken.junction->read(data) == code;
     }},
    {"DeviceIoControl",
     [](on broken) {
         return with_bytes(broken.empty->get(), FSCTL_SET_REPARSE_POINT,
                           contract::junction_data(L"C:\\")) == 0;
     }},
    {"DeviceIoControl",
     [](on broken) {
         return with_bytes(broken.junction->get(), FSCTL_DELETE_REPARSE_POINT,
                           contract::with_header(contract::mount_point_tag, {})) == 0;
     }},
    {"GetFileInformationByHandle",
     [](on broken) {
         BY_HANDLE_FILE_INFORMATION information;
         return !::GetFileInformationByHandle(broken.file->get(), &information);
     }},
    {"GetFileInformationByHandleEx",
     [](on broken) {
         return !::GetFileInformationByHandleEx(broken.file->get(), FileBasicInfo, buffer,
                                                sizeof buffer);
     }},
    {"SetFileInformationByHandle",
     [](on broken) { return !marks_for_deletion(broken.file->get()); }},
    {"GetFinalPathNameByHandleW",
     [](on broken) {
         return ::GetFinalPathNameByHandleW(broken.file->get(), buffer, 200, 0) == 0;
     }},
    {"FindFirstFileExW",
     [](on broken) {
         return ::FindFirstFileExW(L"C:\\*", FindExInfoBasic, &broken.found, FindExSearchNameMatch,
                                   nullptr, 0) == INVALID_HANDLE_VALUE;
     }},
    {"FindFirstFileW",
     [](on broken) { return ::FindFirstFileW(L"C:\\*", &broken.found) == INVALID_HANDLE_VALUE; }},
    {"FindNextFileW", [](on broken) { return !::FindNextFileW(broken.find, &broken.found); }},
    {"DeleteFileW", [](on) { return !::DeleteFileW(L"C:\\dir\\more"); }},
    {"MoveFileExW", [](on) { return !::MoveFileExW(L"C:\\dir\\more", L"C:\\moved", 0); }},
    {"CopyFileW", [](on) { return !::CopyFileW(L"C:\\dir\\more", L"C:\\copy", FALSE); }},
    {"CreateHardLinkW",
     [](on) { return !::CreateHardLinkW(L"C:\\hard", L"C:\\dir\\more", nullptr); }},
    {"CreateSymbolicLinkW", [](on) { return !::CreateSymbolicLinkW(L"C:\\link", L"a", 0); }},
    {"VirtualQuery",
     [](on) {
         MEMORY_BASIC_INFORMATION information;
         return ::VirtualQuery(buffer, &information, sizeof information) == 0;
     }},
    {"GetModuleFileNameW", [](on) { return ::GetModuleFileNameW(nullptr, buffer, 200) == 0; }},
    {"GetDiskFreeSpaceExW",
     [](on) { return !::GetDiskFreeSpaceExW(L"C:\\", nullptr, nullptr, nullptr); }},
    {"GetVolumePathNameW", [](on) { return !::GetVolumePathNameW(L"C:\\", buffer, 200); }},
};

TEST(BrokenCalls, AnswerAsFailedAndDoNothing)
{
    for (broken_call const &row : calls) {
        broken_machine broken;
        std::string const before = state_of(broken);
        {
            fault const made = broken.machine.fail_call(row.function, 1, code);
            ::SetLastError(contract::untouched);
            EXPECT_TRUE(row.fails(broken)) << row.function;
            EXPECT_EQ(::GetLastError(), code) << row.function;
            EXPECT_TRUE(made.fired()) << row.function;
            EXPECT_EQ(broken.machine.journal().back().function, row.function);
            EXPECT_EQ(broken.machine.journal().back().last_error, code) << row.function;
            EXPECT_EQ(state_of(broken), before) << row.function;
        }
        EXPECT_FALSE(row.fails(broken)) << row.function << ", mended";
    }
}

// The answer is the code itself, and the last error isn't used.
broken_call const calls_that_answer_codes[] = {
    {"WNetGetUniversalNameW",
     [](on) {
         alignas(8) char bytes[500];
         DWORD size = sizeof bytes;
         return ::WNetGetUniversalNameW(L"X:\\a", UNIVERSAL_NAME_INFO_LEVEL, bytes, &size) == code;
     }},
};

constexpr DWORD result = contract::from_win32(code);

bool is_result(HRESULT answer)
{
    return contract::code_of(answer) == result;
}

broken_call const com_calls[] = {
    {"CoInitialize", [](on) { return is_result(::CoInitialize(nullptr)); }},
    {"CoInitializeEx",
     [](on) { return is_result(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }},
    {"CoCreateInstance",
     [](on) {
         void *made = buffer;
         bool const has_failed = contract::create_link(&made) == result && made == nullptr;
         if (made != nullptr)
             static_cast<IShellLinkW *>(made)->Release();
         return has_failed;
     }},
    {"IUnknown::QueryInterface",
     [](on broken) {
         void *other = buffer;
         HRESULT const answer = broken.shortcut.link()->QueryInterface(IID_IPersistFile, &other);
         if (other != nullptr)
             static_cast<IPersistFile *>(other)->Release();
         return is_result(answer) && other == nullptr;
     }},
    {"IShellLinkW::GetPath",
     [](on broken) { return is_result(broken.shortcut.link()->GetPath(buffer, 200, nullptr, 0)); }},
    {"IShellLinkW::SetPath",
     [](on broken) { return broken.shortcut.set_path(L"C:\\dir") == result; }},
    {"IShellLinkW::Resolve", [](on broken) { return broken.shortcut.resolve() == result; }},
    {"IPersist::GetClassID",
     [](on broken) {
         CLSID id;
         return is_result(broken.shortcut.file()->GetClassID(&id));
     }},
    {"IPersistFile::IsDirty",
     [](on broken) { return is_result(broken.shortcut.file()->IsDirty()); }},
    {"IPersistFile::Load", [](on broken) { return broken.shortcut.load(L"C:\\a.lnk") == result; }},
    {"IPersistFile::Save", [](on broken) { return broken.shortcut.save(L"C:\\b.lnk") == result; }},
    {"IPersistFile::SaveCompleted",
     [](on broken) { return is_result(broken.shortcut.file()->SaveCompleted(L"C:\\b.lnk")); }},
};

void check_answers(broken_call const &row)
{
    broken_machine broken;
    std::string const before = state_of(broken);
    {
        fault const made = broken.machine.fail_call(row.function, 1, code);
        EXPECT_TRUE(row.fails(broken)) << row.function;
        EXPECT_TRUE(made.fired()) << row.function;
        EXPECT_EQ(state_of(broken), before) << row.function;
    }
    EXPECT_FALSE(row.fails(broken)) << row.function << ", mended";
}

TEST(BrokenCalls, AnswerCodesAndResults)
{
    for (broken_call const &row : calls_that_answer_codes)
        check_answers(row);
    for (broken_call const &row : com_calls)
        check_answers(row);
}

TEST(BrokenCalls, ReadAndFindGoOnWhereTheyStood)
{
    broken_machine broken;
    char bytes[4] = {};
    {
        fault const made = broken.machine.fail_call(1, code);
        EXPECT_FALSE(::ReadFile(broken.file->get(), bytes, 2, &number, nullptr));
    }
    ASSERT_TRUE(::ReadFile(broken.file->get(), bytes, 2, &number, nullptr));
    EXPECT_EQ(std::string(bytes, number), "te");
    ASSERT_TRUE(::FindNextFileW(broken.find, &broken.found)); // `..` behind `.`
    {
        fault const made = broken.machine.fail_call(1, code);
        EXPECT_FALSE(::FindNextFileW(broken.find, &broken.found));
    }
    ASSERT_TRUE(::FindNextFileW(broken.find, &broken.found));
    EXPECT_STREQ(broken.found.cFileName, L"file");
}

TEST(BrokenCalls, ClosingClosesAllTheSame)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file");
    HANDLE const file =
        ::CreateFileW(L"C:\\file", GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    WIN32_FIND_DATAW data;
    HANDLE const find = ::FindFirstFileW(L"C:\\*", &data);
    ASSERT_TRUE(marks_for_deletion(file));
    fault const closing = machine.fail_every_call_on("CloseHandle", code);
    fault const ending = machine.fail_every_call_on("FindClose", code);
    EXPECT_FALSE(::CloseHandle(file));
    EXPECT_EQ(::GetLastError(), code);
    EXPECT_FALSE(::FindClose(find));
    EXPECT_EQ(::GetLastError(), code);
    EXPECT_TRUE(closing.fired() && ending.fired());
    EXPECT_EQ(machine.open_handles(), 0);
    EXPECT_EQ(machine.find_handles(), 0);
    EXPECT_FALSE(machine.exists(u"C:\\file")) << "it has gone with its last handle";
    EXPECT_FALSE(::FindNextFileW(find, &data));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

// Some of the spellings mean no file there, such as a slash behind a long prefix.
constexpr wchar_t const *spellings[] = {
    L"C:\\dir\\file",
    L"c:\\DIR\\File",
    L"C:/dir//file",
    L"file",
    L".\\..\\dir\\file",
    L"C:file",
    L"\\dir\\file",
    L"C:\\dir\\file. .",
    L"\\\\?\\C:\\dir\\file",
    L"\\\\.\\C:\\dir\\file",
    L"\\\\.\\c:/dir/x/../file",
    L"\\??\\C:\\dir\\file",
};

TEST(BrokenNames, AreKnownByEachSpelling)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\file", "text").set_current_directory(u"C:\\dir");
    for (wchar_t const *spelling : spellings) {
        ASSERT_EQ(contract::get_file_attributes(spelling), success)
            << testing::PrintToString(std::wstring(spelling));
        fault const broken =
            machine.fail_every_call_on_name(test_support::units(spelling), ERROR_NOT_READY);
        for (wchar_t const *other : spellings)
            EXPECT_EQ(contract::get_file_attributes(other), DWORD{ERROR_NOT_READY})
                << testing::PrintToString(std::wstring(other));
        EXPECT_EQ(contract::get_file_attributes(L"C:\\dir"), success) << "the one above";
        EXPECT_EQ(contract::get_file_attributes(L"C:\\dir\\file2"), DWORD{ERROR_FILE_NOT_FOUND})
            << "a longer one";
    }
}

TEST(BrokenNames, OnSharesAndRoots)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share").add_directory(u"\\\\server\\share\\dir");
    fault const share = machine.fail_every_call_on_name(u"\\\\server\\share\\dir", code);
    fault const root = machine.fail_every_call_on_name(u"C:\\", ERROR_NOT_READY);
    for (wchar_t const *spelling :
         {L"\\\\SERVER\\share\\dir", L"//server/share/dir/", L"\\\\?\\UNC\\server\\share\\dir",
          L"\\\\.\\unc\\server\\share\\dir"})
        EXPECT_EQ(contract::get_file_attributes(spelling), code);
    for (wchar_t const *spelling : {L"c:\\", L"C:", L"\\", L"\\\\?\\C:\\"})
        EXPECT_EQ(contract::get_file_attributes(spelling), DWORD{ERROR_NOT_READY});
}

TEST(BrokenNames, AreKnownByHandles)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\file", "text").add_file(u"C:\\dir\\other");
    contract::opened const file(L"\\\\?\\c:\\dir\\FILE", GENERIC_READ);
    contract::opened const other(L"C:\\dir\\other", GENERIC_READ);
    fault const broken = machine.fail_every_call_on_name(u"C:\\dir\\file", code);
    char bytes[4];
    EXPECT_FALSE(::ReadFile(file.get(), bytes, 4, &number, nullptr));
    EXPECT_EQ(::GetLastError(), code);
    EXPECT_EQ(::GetFinalPathNameByHandleW(file.get(), buffer, 200, 0), 0U);
    EXPECT_EQ(::GetLastError(), code);
    EXPECT_TRUE(::ReadFile(other.get(), bytes, 4, &number, nullptr));
    EXPECT_FALSE(
        ::CloseHandle(::CreateFileW(L"C:\\dir\\file", 0, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
}

TEST(BrokenNames, AreKnownAsTheSecondName)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file").add_directory(u"C:\\dir");
    fault const broken = machine.fail_every_call_on_name(u"C:\\target", code);
    EXPECT_FALSE(::MoveFileExW(L"C:\\file", L"C:\\TARGET", 0));
    EXPECT_FALSE(::CopyFileW(L"C:\\file", L"C:\\target", TRUE));
    EXPECT_FALSE(::CreateHardLinkW(L"C:\\target", L"C:\\file", nullptr));
    EXPECT_EQ(machine.entries(u"C:\\").size(), 2U);
}

TEST(BrokenNames, AreOnlyThoseOfWhatIsActedOn)
{
    simulated_machine machine;
    fault const broken = machine.fail_every_call_on_name(u"C:\\temp", code);
    EXPECT_TRUE(::SetEnvironmentVariableW(L"TEMP", L"C:\\temp")) << "a variable is no file";
    EXPECT_EQ(::GetEnvironmentVariableW(L"TEMP", buffer, 200), 7U);
    EXPECT_TRUE(::CreateSymbolicLinkW(L"C:\\link", L"C:\\temp", 0)) << "nobody looks there";
    EXPECT_FALSE(broken.fired());
    EXPECT_FALSE(::CreateSymbolicLinkW(L"C:\\temp", L"C:\\a", 0));
    EXPECT_TRUE(broken.fired());
}

TEST(BrokenNames, ForOneFunctionOnly)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a").add_file(u"C:\\b");
    fault const broken = machine.fail_every_call_on_name("DeleteFileW", u"C:\\a", code);
    EXPECT_EQ(contract::get_file_attributes(L"C:\\a"), success);
    EXPECT_EQ(contract::delete_file(L"C:\\b"), success);
    EXPECT_FALSE(broken.fired());
    EXPECT_EQ(contract::delete_file(L"c:/A"), code);
    EXPECT_EQ(contract::delete_file(L"C:\\a"), code) << "each time";
    EXPECT_TRUE(broken.fired());
}

// However many calls there are, each is one of the count, those of COM among them.
TEST(BrokenCalls, AreCountedOverAllFunctions)
{
    for (int nth = 1; nth <= 9; ++nth) {
        simulated_machine machine;
        machine.add_file(u"C:\\file", "text");
        fault const broken = machine.fail_call(nth, code);
        ::SetLastError(1);
        HANDLE const file =
            ::CreateFileW(L"C:\\file", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ::ReadFile(file, buffer, 4, &number, nullptr);
        ::CloseHandle(file);
        WIN32_FIND_DATAW data;
        HANDLE const find = ::FindFirstFileW(L"C:\\*", &data);
        ::FindNextFileW(find, &data);
        ::FindClose(find);
        ::CoInitialize(nullptr);
        void *object = nullptr;
        contract::create_link(&object);
        if (object != nullptr)
            static_cast<IShellLinkW *>(object)->Release();
        ::CoUninitialize();
        EXPECT_TRUE(broken.fired()) << nth;
        auto const journal = machine.journal();
        ASSERT_EQ(journal.size(), 9U) << nth;
        DWORD const told = journal[static_cast<std::size_t>(nth) - 1].last_error;
        EXPECT_EQ(told, code) << nth;
        EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0) << nth;
        EXPECT_EQ(machine.live_interfaces() + machine.com_apartments(), 0) << nth;
    }
}

} // namespace

} // namespace fl::simulation
