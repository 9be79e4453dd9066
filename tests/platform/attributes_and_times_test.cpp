#include "platform/contract.hpp"

#include <cstdint>

namespace contract {

namespace {

DWORD get_data(std::wstring const &name, WIN32_FILE_ATTRIBUTE_DATA &data)
{
    return outcome_of([&] {
        return ::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data) != FALSE;
    });
}

std::int64_t number(FILETIME time)
{
    return (std::int64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

TEST(FileData, Outcomes)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    auto const get = [&](std::wstring const &name) { return get_data(name, data); };
    expect_codes(fill, get, names_of_file, names_of_directories, missing_names, as_it_stands,
                 no_names, missing_roots);
    workspace space;
    fill(space);
    EXPECT_EQ(get_data(in(space, LR"(file\)"), data),
              expected(ERROR_INVALID_NAME, ERROR_PATH_NOT_FOUND))
        << "a file is no directory";
    EXPECT_EQ(get_data(LR"(C:\)", data), success) << "the root of a drive";
    EXPECT_TRUE(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

TEST(SettingAttributes, Outcomes)
{
    constexpr call_row directory_cases[] = {
        {LR"(@\dir)", success, "a directory"},
        {LR"(@\DIR\)", success, "with a separator, in another case"},
        {LR"(@\file\)", ERROR_INVALID_NAME, "a file is no directory"},
    };
    auto const set = [](std::wstring const &name) {
        return set_attributes(name, FILE_ATTRIBUTE_ARCHIVE);
    };
    expect_codes(fill, set, names_of_file, missing_names, as_it_stands, no_names, missing_roots,
                 directory_cases);
}

TEST(FileData, HasAttributesAndSize)
{
    workspace space;
    fill(space);
    WIN32_FILE_ATTRIBUTE_DATA file = {}, directory = {};
    EXPECT_EQ(get_data(in(space, L"file"), file), success);
    EXPECT_EQ(file.dwFileAttributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(file.nFileSizeHigh, 0U);
    EXPECT_EQ(file.nFileSizeLow, 7U);
    directory.nFileSizeLow = 123;
    EXPECT_EQ(get_data(in(space, L"dir"), directory), success);
    EXPECT_EQ(directory.dwFileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(directory.nFileSizeHigh, 0U);
    EXPECT_EQ(directory.nFileSizeLow, 0U);
}

TEST(FileData, HasTheTimesThatWereSet)
{
    constexpr std::int64_t moment = 126'500'000'001'234'567;
    workspace space;
    fill(space);
    for (wchar_t const *name : {L"file", L"dir"}) {
        FILE_BASIC_INFO info = {};
        info.LastAccessTime.QuadPart = moment;
        info.LastWriteTime.QuadPart = moment + 1;
        handle const opened = look_at(in(space, name), FILE_WRITE_ATTRIBUTES);
        EXPECT_TRUE(::SetFileInformationByHandle(opened.get(), FileBasicInfo, &info, sizeof info));
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        EXPECT_EQ(get_data(in(space, name), data), success);
        EXPECT_EQ(number(data.ftLastAccessTime), moment) << name;
        EXPECT_EQ(number(data.ftLastWriteTime), moment + 1) << name;
        EXPECT_NE(number(data.ftCreationTime), 0) << name;
    }
}

TEST(FileData, HasOneLevel)
{
    workspace space;
    fill(space);
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    EXPECT_EQ(outcome_of([&] {
                  return ::GetFileAttributesExW(in(space, L"file").c_str(), GetFileExMaxInfoLevel,
                                                &data) != FALSE;
              }),
              DWORD{ERROR_INVALID_PARAMETER});
}

TEST(FileData, IsMadeUpForDevices)
{
    constexpr DWORD wine = ERROR_BAD_DEV_TYPE;
    workspace space;
    fill(space);
    for (std::wstring const &name : {std::wstring(L"nul"), std::wstring(LR"(\\.\con)")}) {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        data.nFileSizeLow = 123;
        EXPECT_EQ(get_data(name, data), expected(success, wine));
        EXPECT_EQ(data.dwFileAttributes, expected(FILE_ATTRIBUTE_ARCHIVE, 0));
        EXPECT_EQ(data.nFileSizeLow, expected(0, 123));
        EXPECT_EQ(number(data.ftLastWriteTime), 0);
    }
}

TEST(FileData, NeedsALongPrefixFrom260Units)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    expect_limit_of_260([&](std::wstring const &name) { return get_data(name, data); });
    expect_limit_of_260(
        [](std::wstring const &name) { return set_attributes(name, FILE_ATTRIBUTE_ARCHIVE); });
}

TEST(FileData, OfANameOf260Units)
{
    workspace space;
    fill(space);
    std::wstring const bare(260, L'n');
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    // where the pathname is short enough, the name is still too long for any disk
    DWORD const windows = takes_long_pathnames() ? ERROR_INVALID_NAME : ERROR_PATH_NOT_FOUND;
    EXPECT_EQ(get_data(bare, data), expected(windows, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(set_attributes(bare, FILE_ATTRIBUTE_NORMAL), expected(windows, ERROR_FILE_NOT_FOUND));
}

/// Attributes set for a file and for a directory, and those that they have then.
struct set_case
{
    DWORD given, file, directory;
    char const *why;
};

constexpr DWORD readonly = FILE_ATTRIBUTE_READONLY, hidden = FILE_ATTRIBUTE_HIDDEN,
                system = FILE_ATTRIBUTE_SYSTEM, archive = FILE_ATTRIBUTE_ARCHIVE,
                normal = FILE_ATTRIBUTE_NORMAL, directory = FILE_ATTRIBUTE_DIRECTORY,
                not_indexed = FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

constexpr set_case set_cases[] = {
    {readonly, readonly, readonly | directory, "one"},
    {hidden, hidden, hidden | directory, "one"},
    {system, system, system | directory, "one"},
    {archive, archive, archive | directory, "one"},
    {not_indexed, not_indexed, not_indexed | directory, "one"},
    {0x2027, 0x2027, 0x2037, "all"},
    {normal, normal, directory, "none"},
    {0, normal, directory, "0 is none as well"},
    {normal | hidden, hidden, hidden | directory, "normal counts alone only"},
    {directory, normal, directory, "neither makes a directory nor unmakes one"},
    {directory | hidden, hidden, hidden | directory, "beside another"},
    {FILE_ATTRIBUTE_REPARSE_POINT | hidden, hidden, hidden | directory, "no link is made"},
    {0x80000000 | hidden, hidden, hidden | directory, "unknown bits are left out"},
};

TEST(SettingAttributes, SetsThoseThatCanBeSet)
{
    for (set_case const &row : set_cases) {
        workspace space;
        fill(space);
        EXPECT_EQ(set_attributes(in(space, L"file"), row.given), success) << row.given;
        EXPECT_EQ(attributes_of(in(space, L"file")), kept_attributes(row.file))
            << row.given << ": " << row.why;
        EXPECT_EQ(set_attributes(in(space, L"dir"), row.given), success) << row.given;
        EXPECT_EQ(attributes_of(in(space, L"dir")), kept_attributes(row.directory))
            << row.given << ": " << row.why;
    }
}

TEST(SettingAttributes, ReplacesTheFormerOnes)
{
    workspace space;
    fill(space);
    for (wchar_t const *name : {L"file", L"dir"}) {
        EXPECT_EQ(set_attributes(in(space, name), readonly | hidden), success);
        EXPECT_EQ(set_attributes(in(space, name), system | archive), success)
            << "also of what is read-only";
        DWORD const kind = attributes_of(in(space, name)) & directory;
        EXPECT_EQ(attributes_of(in(space, name)), kept_attributes(kind | system | archive));
    }
}

TEST(SettingAttributes, MindsNoOpenHandle)
{
    workspace space;
    fill(space);
    handle const alone = open(in(space, L"file"), {.access = GENERIC_ALL, .share = 0});
    EXPECT_EQ(set_attributes(in(space, L"file"), readonly | archive), success);
    EXPECT_EQ(attributes_of(in(space, L"file")), readonly | archive);
}

// A directory that is read-only takes entries all the same.
TEST(SettingAttributes, LeavesTheInsideOfADirectoryAlone)
{
    workspace space;
    fill(space);
    EXPECT_EQ(set_attributes(in(space, L"dir"), readonly), success);
    EXPECT_EQ(create_directory(in(space, LR"(dir\new)")), success);
}

// Wine takes it, and forgets it.
TEST(SettingAttributes, RefusesATemporaryDirectory)
{
    workspace space;
    fill(space);
    EXPECT_EQ(set_attributes(in(space, L"dir"), FILE_ATTRIBUTE_TEMPORARY),
              expected(ERROR_INVALID_PARAMETER, success));
    EXPECT_EQ(attributes_of(in(space, L"dir")), directory);
}

// Wine sets nothing there and calls it success.
TEST(SettingAttributes, RefusesDevices)
{
    workspace space;
    EXPECT_EQ(set_attributes(L"nul", archive), expected(ERROR_INVALID_FUNCTION, success));
}

} // namespace

} // namespace contract
