// What queries say of names that are no links.

#include <fl/filesystem.hpp>

#include "status/outcomes.hpp"
#include "support/attributes_for_now.hpp"
#include "support/in_workspace.hpp"

#include <windows.h>

namespace fl::filesystem::tests {
namespace {

using test_support::outcome;

instant instant_of(FILETIME const &time)
{
    return static_cast<std::int64_t>(
        ((std::uint64_t{time.dwHighDateTime} << 32) + time.dwLowDateTime) / 10);
}

/// The record of `path` by the system's own words, but for its permissions.
record record_by_the_system(std::u16string const &path, unsigned int type, unsigned int perms)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    EXPECT_TRUE(::GetFileAttributesExW(wide(path).c_str(), GetFileExInfoStandard, &data));
    return {type,
            perms,
            instant_of(data.ftLastAccessTime),
            instant_of(data.ftLastWriteTime),
            instant_of(data.ftCreationTime),
            (std::uint64_t{data.nFileSizeHigh} << 32) + data.nFileSizeLow};
}

/// All queries but the short one agree on a name that is no link.
void expect_all(std::u16string const &path, outcome const &expected, char const *why)
{
    EXPECT_EQ(outcome_of([&] { return status(path); }), expected) << why;
    EXPECT_EQ(outcome_of([&] { return status(upath(path)); }), expected) << why;
    EXPECT_EQ(outcome_of([&] { return symlink_status(path); }), expected) << why;
    EXPECT_EQ(outcome_of([&] { return symlink_status(upath(path)); }), expected) << why;
}

void expect_missing(std::u16string const &path, char const *why)
{
    expect_all(path, missing(), why);
    EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), missing_light()) << why;
    EXPECT_FALSE(exists(path)) << why;
    EXPECT_FALSE(exists(upath(path))) << why;
}

void expect_present(std::u16string const &path, record const &expected, char const *why)
{
    expect_all(path, answers(expected), why);
    EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), answers(shortened(expected)))
        << why;
    EXPECT_TRUE(exists(path)) << why;
    EXPECT_TRUE(exists(upath(path))) << why;
}

constexpr unsigned int regular = 0x8000;
constexpr unsigned int directory = 0x4000;

TEST_IN_WORKSPACE(Status, OfTheEmptyPath)
{
    expect_missing(u"", "no text");
    file_status const seen = status(u"");
    EXPECT_FALSE(file_status::exists(seen));
    EXPECT_TRUE(seen.get_mtime().is_not_a_date_time());
}

TEST_IN_WORKSPACE(Status, OfAFile)
{
    std::u16string const path = make_file(u"file", "12345");
    attributes_for_now const plain(path, FILE_ATTRIBUTE_ARCHIVE);
    record const expected = record_by_the_system(path, regular, 0x1000 | 0666);
    EXPECT_EQ(expected.size, 5U);
    expect_present(path, expected, "a file");
    EXPECT_TRUE(file_status::is_regular(status(path)));
}

TEST_IN_WORKSPACE(Status, OfADirectory)
{
    make({u"dir\\", u"bin.exe\\"});
    for (char16_t const *name : {u"dir", u"bin.exe"}) {
        std::u16string const path = at(name);
        expect_present(path, record_by_the_system(path, directory, 0666), "never to be run");
        EXPECT_TRUE(file_status::is_directory(status(path)));
    }
    EXPECT_TRUE(file_status::is_directory(status(u"C:\\"))) << "a root";
    EXPECT_TRUE(file_status::is_directory(status(u".")));
    EXPECT_TRUE(exists(u"C:\\"));
}

TEST_IN_WORKSPACE(Status, OfWhatRuns)
{
    constexpr row_of<char16_t const *, unsigned int> cases[] = {
        {u"tool.exe", 0777, "a program"},    {u"tool2.EXE", 0777, "in upper case"},
        {u"tool.bat", 0777, "a batch file"}, {u"tool.com", 0777, "a program of old"},
        {u"tool.cmd", 0777, "a batch file"}, {u"tool.exe.txt", 0666, "the last one counts"},
        {u"tool.e", 0666, "one unit"},       {u"tool", 0666, "none"},
        {u"tool.lnk", 0666, "a shortcut"},   {u"toolexe", 0666, "no full stop"},
    };
    for (auto const &row : cases) {
        std::u16string const path = make_file(row.given);
        attributes_for_now const archive(path, FILE_ATTRIBUTE_ARCHIVE);
        EXPECT_EQ(status(path).get_perms(), 0x1000 | row.expected) << row.why;
        EXPECT_EQ(symlink_status(path).get_perms(), 0x1000 | row.expected) << row.why;
        attributes_for_now const read_only(path, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(status(path).get_perms(), 0x1000 | (row.expected & 0555)) << row.why;
    }
}

struct attribute_case
{
    DWORD attributes;
    unsigned int perms;
};

TEST_IN_WORKSPACE(Status, OfAttributes)
{
    std::u16string const path = make_file(u"file");
    constexpr attribute_case cases[] = {
        {FILE_ATTRIBUTE_READONLY, 0444},
        {FILE_ATTRIBUTE_HIDDEN, 0x4000 | 0666},
        {FILE_ATTRIBUTE_SYSTEM, 0x2000 | 0666},
        {FILE_ATTRIBUTE_ARCHIVE, 0x1000 | 0666},
        {FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE, 0x1000 | 0444},
        {FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM, 0x6000 | 0666},
    };
    for (attribute_case const &row : cases) {
        attributes_for_now const set(path, row.attributes);
        unsigned int expected = row.perms;
        if (runs_under_wine()) // which may add this one by itself
            expected |= (::GetFileAttributesW(wide(path).c_str()) & 0x20) != 0 ? 0x1000U : 0U;
        expect_present(path, record_by_the_system(path, regular, expected), "attributes");
    }
}

TEST_IN_WORKSPACE(Status, OfNamesThatAreNotThere)
{
    make_file(u"file");
    expect_missing(at(u"no"), "code 2");
    expect_missing(at(u"no\\no"), "code 3");
    expect_missing(at(u"a<b"), "code 123");
    expect_missing(at(u"a?b"), "code 123");
    expect_missing(at(u"file\\no"), "code 3, below a file");
    expect_missing(u"no", "relative");
}

TEST_IN_WORKSPACE(Status, OfPathnamesThatCannotBe)
{
    for (std::u16string const path : {u"\\\\server", u"\\\\.\\COM1", u"\\\\"}) {
        EXPECT_EQ(outcome_of([&] { return status(path); }), missing()) << printable(path);
        EXPECT_EQ(outcome_of([&] { return symlink_status(path); }), missing()) << printable(path);
    }
}

TEST_IN_WORKSPACE(Status, OfRelativePathnames)
{
    make_file(u"a\\file", "123");
    enter(u"a");
    for (std::u16string const path : {u"file", u".\\file", u"..\\a\\file", u"../a//file"}) {
        EXPECT_EQ(status(path).get_size(), 3U) << printable(path);
        EXPECT_EQ(symlink_status(path).get_size(), 3U) << printable(path);
        EXPECT_EQ(status_express_light(path).get_size(), 3U) << printable(path);
        EXPECT_TRUE(exists(path)) << printable(path);
    }
    EXPECT_FALSE(exists(u"a\\file"));
}

TEST_IN_WORKSPACE(Status, OfPathnamesAboutTheLimits)
{
    std::u16string const folder = of_size((work.root() + u"\\").c_str(), 200);
    for (std::size_t const size : {247U, 248U, 259U, 260U, 261U, 400U}) {
        std::u16string const path = of_size((folder + u"\\").c_str(), size);
        work.make_file(path, "1234");
        EXPECT_EQ(status(path).get_size(), 4U) << size;
        EXPECT_EQ(symlink_status(path).get_size(), 4U) << size;
        EXPECT_EQ(status_express_light(path).get_size(), 4U) << size;
        EXPECT_TRUE(exists(path)) << size;
        EXPECT_EQ(status_express_light(uR"(\\?\)" + path).get_size(), 4U) << size;
        expect_missing(of_size((folder + u"\\b").c_str(), size), "another name");
    }
}

TEST_IN_WORKSPACE(Status, ExpressRefusesLongTextsWithoutARoot)
{
    EXPECT_EQ(outcome_of([] { return status_express_light(of_size(u"rel", 260)); }),
              fails(invalid_argument("Long UNC path without root not permitted")));
}

TEST_IN_WORKSPACE(Status, OfAnExtensionBeyondAscii)
{
    std::u16string const path = make_file(u"f.b\u00E9x", "12");
    make_directory(u"d.b\u00E9x");
    expect_all(path, invalid_character(), "an extension of three units");
    EXPECT_EQ(status_express_light(path).get_size(), 2U);
    EXPECT_TRUE(exists(path));
    EXPECT_TRUE(file_status::is_directory(status(at(u"d.b\u00E9x"))));
    expect_missing(at(u"no.b\u00E9x"), "nobody looks at the extension of nothing");
    std::u16string const other = make_file(u"f.b\u00E9", "123");
    EXPECT_EQ(status(other).get_size(), 3U) << "two units";
}

TEST_IN_WORKSPACE(Status, OnAShare)
{
    NEEDS(work.has_share(), "there is no share here");
    std::u16string const file = work.share_root() + u"\\file";
    work.make_file(file, "123");
    attributes_for_now const archive(file, FILE_ATTRIBUTE_ARCHIVE);
    expect_present(file, record_by_the_system(file, regular, 0x1000 | 0666), "a file there");
    expect_missing(work.share_root() + u"\\no", "nothing there");
}

} // namespace
} // namespace fl::filesystem::tests
