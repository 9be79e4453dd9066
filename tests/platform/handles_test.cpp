#include "platform/contract.hpp"

#include <cstdint>

namespace contract {

namespace {

constexpr DWORD both = GENERIC_READ | GENERIC_WRITE;

DWORD write_to(HANDLE file, std::string const &content)
{
    DWORD written = 12345;
    DWORD const size = static_cast<DWORD>(content.size());
    DWORD const code = outcome_of(
        [&] { return ::WriteFile(file, content.data(), size, &written, nullptr) != FALSE; });
    EXPECT_EQ(written, code == success ? size : 0U);
    return code;
}

/// What one call reads of at most `size` bytes.
std::string read_from(HANDLE file, DWORD size)
{
    std::string content(size, '?');
    DWORD got = 12345;
    EXPECT_TRUE(::ReadFile(file, content.data(), size, &got, nullptr));
    content.resize(got);
    return content;
}

DWORD code_of_read(HANDLE file)
{
    char buffer[8] = {};
    DWORD got = 12345;
    DWORD const code =
        outcome_of([&] { return ::ReadFile(file, buffer, 8, &got, nullptr) != FALSE; });
    EXPECT_EQ(got == 0 || code == success, true) << "nothing is read by a call that fails";
    return code;
}

DWORD close(HANDLE raw)
{
    return outcome_of([&] { return ::CloseHandle(raw) != FALSE; });
}

BY_HANDLE_FILE_INFORMATION information(handle const &opened)
{
    BY_HANDLE_FILE_INFORMATION info = {};
    EXPECT_TRUE(::GetFileInformationByHandle(opened.get(), &info));
    return info;
}

template <typename Info>
DWORD code_of_get(HANDLE file, FILE_INFO_BY_HANDLE_CLASS which, Info &info,
                  DWORD size = sizeof(Info))
{
    return outcome_of(
        [&] { return ::GetFileInformationByHandleEx(file, which, &info, size) != FALSE; });
}

template <typename Info>
DWORD code_of_set(HANDLE file, FILE_INFO_BY_HANDLE_CLASS which, Info info,
                  DWORD size = sizeof(Info))
{
    return outcome_of(
        [&] { return ::SetFileInformationByHandle(file, which, &info, size) != FALSE; });
}

FILE_BASIC_INFO basic(handle const &opened)
{
    FILE_BASIC_INFO info = {};
    EXPECT_EQ(code_of_get(opened.get(), FileBasicInfo, info), success);
    return info;
}

std::int64_t number(FILETIME time)
{
    return (std::int64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

std::uint64_t index_of(BY_HANDLE_FILE_INFORMATION const &info)
{
    return (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
}

TEST(Contents, ComeBackAsWritten)
{
    workspace space;
    std::wstring const name = in(space, L"file");
    std::string const content("one\0two\r\n\xFF", 10);
    handle file = open(name, {.access = both, .disposition = CREATE_NEW});
    EXPECT_EQ(write_to(file.get(), content), success);
    EXPECT_EQ(read_from(file.get(), 4), "") << "the position is behind what was written";
    file.close();
    handle const again = open(name);
    EXPECT_EQ(read_from(again.get(), 100), content);
    EXPECT_EQ(read_from(again.get(), 100), "") << "success at the end, and no bytes";
}

TEST(Contents, AreReadFromThePositionOn)
{
    workspace space;
    space.make_file(space.path(u"file"), "abcdefgh");
    handle const file = open(in(space, L"file"), {.access = both});
    handle const other = open(in(space, L"file"));
    EXPECT_EQ(read_from(file.get(), 3), "abc");
    EXPECT_EQ(read_from(file.get(), 0), "") << "nothing asked for";
    EXPECT_EQ(write_to(file.get(), "DE"), success) << "one position for both";
    EXPECT_EQ(read_from(file.get(), 9), "fgh") << "no more than there is";
    EXPECT_EQ(read_from(other.get(), 9), "abcDEfgh") << "each handle has its own";
    EXPECT_EQ(write_to(file.get(), "ij"), success);
    EXPECT_EQ(read_from(other.get(), 9), "ij") << "the end is where it is now";
}

TEST(Contents, AreAppendedWithThatRightAlone)
{
    workspace space;
    space.make_file(space.path(u"file"), "abc");
    handle file = open(in(space, L"file"), {.access = FILE_APPEND_DATA});
    EXPECT_EQ(write_to(file.get(), "de"), success);
    file.close();
    EXPECT_EQ(read_from(open(in(space, L"file")).get(), 9), "abcde");
}

TEST(Contents, NeedTheRight)
{
    workspace space;
    space.make_file(space.path(u"file"), "abc");
    std::wstring const name = in(space, L"file");
    for (DWORD const access : {DWORD{0}, DWORD{FILE_READ_ATTRIBUTES}, DWORD{DELETE}}) {
        EXPECT_EQ(code_of_read(look_at(name, access).get()), DWORD{ERROR_ACCESS_DENIED});
        EXPECT_EQ(write_to(look_at(name, access).get(), "d"), DWORD{ERROR_ACCESS_DENIED});
    }
    EXPECT_EQ(code_of_read(look_at(name, GENERIC_WRITE).get()), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(write_to(look_at(name, GENERIC_READ).get(), "d"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(read_from(look_at(name, GENERIC_READ).get(), 9), "abc");
}

TEST(Contents, DirectoriesHaveNone)
{
    workspace space;
    handle const directory = look_at(wide(space.root()), both);
    ASSERT_TRUE(directory);
    EXPECT_EQ(code_of_read(directory.get()), DWORD{ERROR_INVALID_FUNCTION});
    EXPECT_EQ(write_to(directory.get(), "a"),
              expected(ERROR_INVALID_FUNCTION, ERROR_INVALID_HANDLE));
}

TEST(Contents, OfTheNullDevice)
{
    handle const device = open(L"nul", {.access = both});
    EXPECT_EQ(write_to(device.get(), "abc"), success);
    EXPECT_EQ(read_from(device.get(), 9), "");
}

// A file can be made read-only by the one who writes it.
TEST(Contents, AreWrittenToAFileMadeReadOnly)
{
    workspace space;
    std::wstring const name = in(space, L"file");
    handle const file = open(
        name,
        {.access = GENERIC_WRITE, .disposition = CREATE_NEW, .flags = FILE_ATTRIBUTE_READONLY});
    EXPECT_EQ(write_to(file.get(), "abc"), success);
    EXPECT_EQ(read_from(open(name).get(), 9), "abc");
}

TEST(Handles, CloseOnce)
{
    workspace space;
    HANDLE const raw =
        ::CreateFileW(L"nul", GENERIC_READ, share_all, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(raw, INVALID_HANDLE_VALUE);
    EXPECT_EQ(close(raw), success);
    EXPECT_EQ(close(raw), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(close(nullptr), DWORD{ERROR_INVALID_HANDLE});
}

/// Each call on one thing that is no handle of a file.
void expect_all_refuse(HANDLE raw, char const *why)
{
    constexpr DWORD refused = ERROR_INVALID_HANDLE;
    BY_HANDLE_FILE_INFORMATION info = {};
    FILE_BASIC_INFO basic_info = {};
    wchar_t buffer[MAX_PATH] = {};
    EXPECT_EQ(code_of_read(raw), refused) << why;
    EXPECT_EQ(write_to(raw, "a"), refused) << why;
    EXPECT_EQ(outcome_of([&] { return ::GetFileInformationByHandle(raw, &info) != FALSE; }),
              refused)
        << why;
    EXPECT_EQ(code_of_get(raw, FileBasicInfo, basic_info), refused) << why;
    EXPECT_EQ(code_of_set(raw, FileBasicInfo, basic_info), refused) << why;
    EXPECT_EQ(
        outcome_of([&] { return ::GetFinalPathNameByHandleW(raw, buffer, MAX_PATH, 0) != 0; }),
        refused)
        << why;
}

TEST(Handles, EachCallWantsAnOpenOne)
{
    expect_all_refuse(INVALID_HANDLE_VALUE, "what a failed open returns");
    expect_all_refuse(nullptr, "none");
    HANDLE const raw =
        ::CreateFileW(L"nul", GENERIC_READ, share_all, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_EQ(close(raw), success);
    expect_all_refuse(raw, "closed");
}

TEST(FileInformation, OfAFile)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    std::wstring const name = in(space, L"file");
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ASSERT_TRUE(::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data));
    BY_HANDLE_FILE_INFORMATION const info = information(look_at(name, 0));
    EXPECT_EQ(info.dwFileAttributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(info.nFileSizeHigh, 0U);
    EXPECT_EQ(info.nFileSizeLow, 7U);
    EXPECT_EQ(info.nNumberOfLinks, 1U);
    EXPECT_NE(index_of(info), 0U);
    EXPECT_EQ(number(info.ftCreationTime), number(data.ftCreationTime));
    EXPECT_EQ(number(info.ftLastAccessTime), number(data.ftLastAccessTime));
    EXPECT_EQ(number(info.ftLastWriteTime), number(data.ftLastWriteTime));
}

TEST(FileInformation, OfADirectory)
{
    workspace space;
    BY_HANDLE_FILE_INFORMATION const info = information(look_at(wide(space.root())));
    EXPECT_EQ(info.dwFileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(info.nFileSizeHigh, 0U);
    EXPECT_EQ(info.nFileSizeLow, 0U);
    EXPECT_EQ(info.nNumberOfLinks, 1U);
    EXPECT_NE(index_of(info), 0U);
    EXPECT_NE(number(info.ftLastWriteTime), 0);
}

TEST(FileInformation, TellsFilesApart)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    space.make_file(space.path(u"dir\\file"));
    space.make_file(space.path(u"other"));
    BY_HANDLE_FILE_INFORMATION const file = information(look_at(in(space, LR"(dir\file)")));
    BY_HANDLE_FILE_INFORMATION const same = information(look_at(in(space, LR"(DIR\..\dir\FILE)")));
    BY_HANDLE_FILE_INFORMATION const other = information(look_at(in(space, L"other")));
    BY_HANDLE_FILE_INFORMATION const directory = information(look_at(in(space, L"dir")));
    EXPECT_EQ(index_of(file), index_of(same));
    EXPECT_NE(index_of(file), index_of(other));
    EXPECT_NE(index_of(file), index_of(directory));
    EXPECT_NE(index_of(other), index_of(directory));
    for (BY_HANDLE_FILE_INFORMATION const &info : {same, other, directory})
        EXPECT_EQ(info.dwVolumeSerialNumber, file.dwVolumeSerialNumber);
}

void expect_untagged(handle const &opened, DWORD attributes)
{
    FILE_ATTRIBUTE_TAG_INFO tag = {123, 123};
    EXPECT_EQ(code_of_get(opened.get(), FileAttributeTagInfo, tag), success);
    EXPECT_EQ(tag.FileAttributes, attributes);
    EXPECT_EQ(tag.ReparseTag, 0U);
}

TEST(FileInformation, OfTheClassesInUse)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    handle const file = look_at(in(space, L"file"), 0);
    BY_HANDLE_FILE_INFORMATION const info = information(file);
    FILE_BASIC_INFO const times = basic(file);
    EXPECT_EQ(times.FileAttributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(times.CreationTime.QuadPart, number(info.ftCreationTime));
    EXPECT_EQ(times.LastAccessTime.QuadPart, number(info.ftLastAccessTime));
    EXPECT_EQ(times.LastWriteTime.QuadPart, number(info.ftLastWriteTime));
    EXPECT_NE(times.ChangeTime.QuadPart, 0);
    FILE_STANDARD_INFO standard = {};
    EXPECT_EQ(code_of_get(file.get(), FileStandardInfo, standard), success);
    EXPECT_EQ(standard.EndOfFile.QuadPart, 7);
    EXPECT_GE(standard.AllocationSize.QuadPart, 7);
    EXPECT_EQ(standard.NumberOfLinks, 1U);
    EXPECT_FALSE(standard.DeletePending);
    EXPECT_FALSE(standard.Directory);
    expect_untagged(file, FILE_ATTRIBUTE_ARCHIVE);
}

TEST(FileInformation, OfTheClassesInUseForADirectory)
{
    workspace space;
    handle const directory = look_at(wide(space.root()), 0);
    EXPECT_EQ(basic(directory).FileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    FILE_STANDARD_INFO standard = {};
    EXPECT_EQ(code_of_get(directory.get(), FileStandardInfo, standard), success);
    EXPECT_EQ(standard.EndOfFile.QuadPart, 0);
    EXPECT_TRUE(standard.Directory);
    expect_untagged(directory, FILE_ATTRIBUTE_DIRECTORY);
}

TEST(FileInformation, HasAnIdentityOf128Bits)
{
    workspace space;
    space.make_file(space.path(u"file"));
    space.make_file(space.path(u"other"));
    auto const identity = [&](wchar_t const *name) {
        FILE_ID_INFO id = {};
        EXPECT_EQ(code_of_get(look_at(in(space, name)).get(), FileIdInfo, id), success);
        return std::pair(id.VolumeSerialNumber,
                         std::string(id.FileId.Identifier, id.FileId.Identifier + 16));
    };
    EXPECT_EQ(identity(L"file"), identity(L"FILE"));
    EXPECT_NE(identity(L"file").second, identity(L"other").second);
    EXPECT_EQ(identity(L"file").first, identity(L"other").first);
}

TEST(FileInformation, ClassesWithoutRoom)
{
    workspace space;
    handle const directory = look_at(wide(space.root()), FILE_WRITE_ATTRIBUTES);
    constexpr DWORD short_of_room = ERROR_BAD_LENGTH;
    FILE_BASIC_INFO info = {};
    FILE_STANDARD_INFO standard = {};
    FILE_ATTRIBUTE_TAG_INFO tag = {};
    FILE_ID_INFO id = {};
    constexpr auto unknown = static_cast<FILE_INFO_BY_HANDLE_CLASS>(31);
    HANDLE const raw = directory.get();
    EXPECT_EQ(code_of_get(raw, FileBasicInfo, info, sizeof info - 1), short_of_room);
    EXPECT_EQ(code_of_get(raw, FileStandardInfo, standard, 4), short_of_room);
    EXPECT_EQ(code_of_get(raw, FileAttributeTagInfo, tag, 7), short_of_room);
    EXPECT_EQ(code_of_get(raw, FileIdInfo, id, sizeof id - 1), short_of_room);
    EXPECT_EQ(code_of_get(raw, FileBasicInfo, info, 0), short_of_room);
    EXPECT_EQ(code_of_get(raw, unknown, info), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(code_of_set(raw, FileBasicInfo, info, sizeof info - 1),
              expected(short_of_room, ERROR_INVALID_PARAMETER));
    EXPECT_EQ(code_of_set(raw, unknown, info), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(code_of_set(raw, FileAttributeTagInfo, tag), DWORD{ERROR_INVALID_PARAMETER})
        << "only to be asked for";
    EXPECT_EQ(code_of_get(raw, FileDispositionInfo, info), DWORD{ERROR_INVALID_PARAMETER})
        << "only to be set";
}

FILE_BASIC_INFO times(std::int64_t created, std::int64_t accessed, std::int64_t written,
                      DWORD attributes = 0)
{
    FILE_BASIC_INFO info = {};
    info.CreationTime.QuadPart = created;
    info.LastAccessTime.QuadPart = accessed;
    info.LastWriteTime.QuadPart = written;
    info.FileAttributes = attributes;
    return info;
}

/// A moment of the year 2001, with a fraction that no second has.
constexpr std::int64_t moment = 126'500'000'001'234'567;

TEST(SettingInformation, TimesComeBackExactly)
{
    workspace space;
    space.make_file(space.path(u"file"));
    for (wchar_t const *name : {L"file", L"."}) {
        handle const opened = look_at(in(space, name), FILE_WRITE_ATTRIBUTES);
        FILE_BASIC_INFO const before = basic(opened);
        EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(0, moment + 1, moment + 2)),
                  success);
        FILE_BASIC_INFO const after = basic(opened);
        EXPECT_EQ(after.LastAccessTime.QuadPart, moment + 1);
        EXPECT_EQ(after.LastWriteTime.QuadPart, moment + 2);
        EXPECT_EQ(after.FileAttributes, before.FileAttributes) << "0 leaves them alone";
    }
}

TEST(SettingInformation, TimeOfCreation)
{
    workspace space;
    space.make_file(space.path(u"file"));
    handle const opened = look_at(in(space, L"file"), FILE_WRITE_ATTRIBUTES);
    FILE_BASIC_INFO const before = basic(opened);
    EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(moment, 0, 0)), success);
    FILE_BASIC_INFO const after = basic(opened);
    EXPECT_EQ(after.CreationTime.QuadPart,
              runs_under_wine() ? before.CreationTime.QuadPart : moment);
    EXPECT_EQ(after.LastWriteTime.QuadPart, before.LastWriteTime.QuadPart);
    EXPECT_EQ(after.LastAccessTime.QuadPart, before.LastAccessTime.QuadPart);
}

TEST(SettingInformation, LeavesWhatIsNotGivenAlone)
{
    workspace space;
    space.make_file(space.path(u"file"));
    handle const opened = look_at(in(space, L"file"), FILE_WRITE_ATTRIBUTES);
    ASSERT_EQ(code_of_set(opened.get(), FileBasicInfo, times(0, moment, moment)), success);
    for (std::int64_t const none : {0, -1}) {
        EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(none, none, none)), success);
        EXPECT_EQ(basic(opened).LastAccessTime.QuadPart, moment) << none;
        EXPECT_EQ(basic(opened).LastWriteTime.QuadPart, moment) << none;
    }
    EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(0, 0, moment + 1)), success);
    EXPECT_EQ(basic(opened).LastAccessTime.QuadPart, moment);
    EXPECT_EQ(basic(opened).LastWriteTime.QuadPart, moment + 1);
    EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(0, -2, 0)),
              DWORD{ERROR_INVALID_PARAMETER})
        << "no time is before the first";
}

/// Attributes set by a handle on something, and what they are then.
struct set_case
{
    wchar_t const *name;
    DWORD given, code, found;
    char const *why;
    DWORD wine = as_windows;
};

constexpr set_case set_cases[] = {
    {L"file", 0, success, FILE_ATTRIBUTE_ARCHIVE, "0 leaves them alone"},
    {L"file", FILE_ATTRIBUTE_NORMAL, success, FILE_ATTRIBUTE_NORMAL, "none"},
    {L"file", FILE_ATTRIBUTE_READONLY, success, FILE_ATTRIBUTE_READONLY, "in place of the others"},
    {L"file", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE, success,
     FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE, "two"},
    {L"file", FILE_ATTRIBUTE_DIRECTORY, ERROR_INVALID_PARAMETER, FILE_ATTRIBUTE_ARCHIVE,
     "a file stays a file", success},
    {L"dir", FILE_ATTRIBUTE_NORMAL, success, FILE_ATTRIBUTE_DIRECTORY, "a directory stays one"},
    {L"dir", FILE_ATTRIBUTE_HIDDEN, success, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN,
     "a directory stays one"},
    {L"dir", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY, success,
     FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY, "its own bit may be given"},
    {L"dir", FILE_ATTRIBUTE_TEMPORARY, ERROR_INVALID_PARAMETER, FILE_ATTRIBUTE_DIRECTORY,
     "only files are temporary", success},
};

TEST(SettingInformation, Attributes)
{
    for (set_case const &row : set_cases) {
        workspace space;
        space.make_file(space.path(u"file"));
        space.make_directory(space.path(u"dir"));
        handle const opened = look_at(in(space, row.name), FILE_WRITE_ATTRIBUTES);
        EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(0, 0, 0, row.given)),
                  expected(row.code, row.wine))
            << row.name << ' ' << row.given << ": " << row.why;
        EXPECT_EQ(attributes_of(in(space, row.name)), kept_attributes(row.found))
            << row.name << ' ' << row.given << ": " << row.why;
    }
}

// Wine asks for no right.
TEST(SettingInformation, NeedsTheRight)
{
    workspace space;
    space.make_file(space.path(u"file"));
    for (DWORD const access : {DWORD{GENERIC_READ}, DWORD{DELETE}, DWORD{0}}) {
        handle const opened = look_at(in(space, L"file"), access);
        EXPECT_EQ(code_of_set(opened.get(), FileBasicInfo, times(0, 0, moment)),
                  expected(ERROR_ACCESS_DENIED, success))
            << access;
    }
    handle const writer = look_at(in(space, L"file"), GENERIC_WRITE);
    EXPECT_EQ(code_of_set(writer.get(), FileBasicInfo, times(0, 0, moment)), success);
}

handle open_again(handle const &opened, DWORD access, DWORD share = share_all)
{
    return handle(::ReOpenFile(opened.get(), access, share, FILE_FLAG_BACKUP_SEMANTICS));
}

// Wine goes by the name that the file was opened with.
TEST(OpeningAgain, IsTheFileAndNotItsFormerName)
{
    workspace space;
    space.make_file(space.path(u"file"), "content");
    handle const first = look_at(in(space, L"file"), DELETE);
    ASSERT_TRUE(::MoveFileExW(in(space, L"file").c_str(), in(space, L"moved").c_str(), 0));
    space.make_file(space.path(u"file"), "another");
    handle const second = open_again(first, GENERIC_READ);
    ASSERT_TRUE(second);
    EXPECT_EQ(read_from(second.get(), 20), runs_under_wine() ? "another" : "content");
    EXPECT_EQ(index_of(information(second)) == index_of(information(first)), !runs_under_wine());
}

TEST(OpeningAgain, HasItsOwnRights)
{
    workspace space;
    space.make_file(space.path(u"file"));
    handle const first = look_at(in(space, L"file"), DELETE);
    handle const second = open_again(first, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
    FILE_BASIC_INFO hidden = {};
    hidden.FileAttributes = FILE_ATTRIBUTE_HIDDEN;
    EXPECT_EQ(code_of_set(second.get(), FileBasicInfo, hidden), success);
    EXPECT_EQ(attributes_of(in(space, L"file")) & FILE_ATTRIBUTE_HIDDEN,
              DWORD{FILE_ATTRIBUTE_HIDDEN});
}

TEST(OpeningAgain, WorksOnADirectory)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    EXPECT_TRUE(open_again(look_at(in(space, L"dir"), DELETE), FILE_READ_ATTRIBUTES));
}

TEST(OpeningAgain, ComesToTermsWithTheFirst)
{
    workspace space;
    space.make_file(space.path(u"file"));
    handle const first = open(in(space, L"file"), {.share = FILE_SHARE_READ});
    EXPECT_EQ(outcome_of([&] { return static_cast<bool>(open_again(first, GENERIC_WRITE)); }),
              DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(outcome_of([&] { return static_cast<bool>(open_again(handle(), GENERIC_READ)); }),
              DWORD{ERROR_INVALID_HANDLE});
}

std::wstring final_path(handle const &opened, DWORD flags)
{
    std::wstring buffer(40000, L'\0');
    DWORD const room = static_cast<DWORD>(buffer.size());
    buffer.resize(::GetFinalPathNameByHandleW(opened.get(), buffer.data(), room, flags));
    return buffer;
}

TEST(FinalPathNames, AreSpelledAsOnTheDisk)
{
    workspace space;
    space.make_file(space.path(u"Dir\\File.txt"));
    handle const file = look_at(in(space, LR"(DIR\..\dir\FILE.TXT)"), 0);
    std::wstring const name = in(space, LR"(Dir\File.txt)");
    std::wstring const root = final_path(look_at(wide(space.root())), 0);
    EXPECT_EQ(final_path(file, 0), root + LR"(\Dir\File.txt)");
    EXPECT_EQ(root.substr(0, 7), LR"(\\?\C:\)");
    EXPECT_EQ(final_path(file, VOLUME_NAME_NONE), root.substr(6) + LR"(\Dir\File.txt)");
    EXPECT_EQ(final_path(file, FILE_NAME_OPENED), root + LR"(\Dir\File.txt)");
}

TEST(FinalPathNames, OfARoot)
{
    handle const root = look_at(LR"(C:\)");
    EXPECT_EQ(final_path(root, 0), LR"(\\?\C:\)");
    EXPECT_EQ(final_path(root, VOLUME_NAME_NONE), LR"(\)");
}

/// The volume of a file and the file on it.
std::pair<DWORD, unsigned long long> place_of(handle const &opened)
{
    BY_HANDLE_FILE_INFORMATION const info = information(opened);
    return {info.dwVolumeSerialNumber, index_of(info)};
}

// The object manager knows every volume, also those that nobody gave a letter.
TEST(FinalPathNames, OfTheObjectManagerLeadToTheFile)
{
    workspace space;
    space.make_file(space.path(u"Dir\\File.txt"));
    handle const file = look_at(in(space, LR"(DIR\FILE.TXT)"));
    std::wstring const name = final_path(file, VOLUME_NAME_NT);
    if (runs_under_wine() && name.empty())
        GTEST_SKIP() << "this Wine knows no names of the object manager";
    EXPECT_EQ(name.substr(0, 8), LR"(\Device\)");
    EXPECT_TRUE(name.ends_with(final_path(file, VOLUME_NAME_NONE))) << name;
    handle const again = look_at(LR"(\\?\GLOBALROOT)" + name);
    if (runs_under_wine() && !again)
        GTEST_SKIP() << "this Wine knows no root of the object manager";
    ASSERT_TRUE(again);
    EXPECT_EQ(place_of(again), place_of(file));
    EXPECT_EQ(final_path(again, 0), final_path(file, 0));
}

// Wine finds none for a name as long as this.
TEST(FinalPathNames, HaveNoLimit)
{
    workspace space;
    std::wstring const name = long_path(space, 1000);
    space.make_file(units(name));
    handle const file = look_at(LR"(\\?\)" + name);
    std::wstring const root = final_path(look_at(wide(space.root())), 0);
    std::wstring const windows = root + name.substr(space.root().size());
    EXPECT_EQ(final_path(file, 0), runs_under_wine() ? L"" : windows);
}

TEST(FinalPathNames, MeasureTheBuffer)
{
    workspace space;
    handle const opened = look_at(wide(space.root()));
    std::wstring const name = final_path(opened, 0);
    DWORD const length = static_cast<DWORD>(name.size());
    for (DWORD const room : {DWORD{0}, DWORD{1}, length}) {
        std::wstring buffer(length + 10, L'#');
        EXPECT_EQ(::GetFinalPathNameByHandleW(opened.get(), buffer.data(), room, 0), length + 1)
            << room;
    }
    for (DWORD const room : {length + 1, length + 2}) {
        std::wstring buffer(length + 10, L'#');
        EXPECT_EQ(::GetFinalPathNameByHandleW(opened.get(), buffer.data(), room, 0), length);
        EXPECT_EQ(buffer.c_str(), name);
    }
}

TEST(FinalPathNames, RefuseUnknownFlags)
{
    workspace space;
    handle const opened = look_at(wide(space.root()));
    wchar_t buffer[MAX_PATH] = {};
    auto const code = [&](DWORD flags) {
        return outcome_of([&] {
            return ::GetFinalPathNameByHandleW(opened.get(), buffer, MAX_PATH, flags) != 0;
        });
    };
    EXPECT_EQ(code(0x10), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(code(VOLUME_NAME_NONE | VOLUME_NAME_NT), DWORD{ERROR_INVALID_PARAMETER});
}

TEST(FinalPathNames, OfAShare)
{
    workspace space;
    NEEDS(space.has_share(), "there is no share");
    NEEDS(!runs_under_wine(), "Wine names files of a share by their place on the host");
    std::wstring const root = wide(space.share_root());
    space.make_file(space.share_root() + u"\\File");
    EXPECT_EQ(final_path(look_at(root + LR"(\FILE)"), 0),
              LR"(\\?\UNC)" + root.substr(1) + LR"(\File)");
    EXPECT_EQ(final_path(look_at(root + LR"(\FILE)"), VOLUME_NAME_NONE),
              root.substr(1) + LR"(\File)");
}

} // namespace

} // namespace contract
