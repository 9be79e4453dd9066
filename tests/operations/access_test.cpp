// What a caller can do with names that are no links.

#include <fl/filesystem.hpp>

#include "operations/access_answers.hpp"
#include "support/attributes_for_now.hpp"
#include "support/in_workspace.hpp"

#include <limits>

namespace fl::filesystem::tests {
namespace {

constexpr answer_row<char16_t> name_cases[] = {
    {u"tool.exe", true, "a program"},
    {u"tool2.EXE", true, "in upper case"},
    {u"tool.bat", true, "a batch file"},
    {u"tool2.Bat", true, "in mixed case"},
    {u"tool.com", true, "a program of old"},
    {u"tool2.cOM", true, "in mixed case"},
    {u"tool.cmd", true, "a batch file"},
    {u"tool2.CMD", true, "in upper case"},
    {u".exe", true, "nothing ahead of the full stop"},
    {u"tool.txt.exe", true, "the last extension counts"},
    {u"tool.exe.txt", false, "the last extension counts"},
    {u"tool.txt", false, "a text"},
    {u"tool.lnk", false, "a shortcut isn't run itself"},
    {u"tool.msi", false, "another that the shell starts"},
    {u"tool.ex", false, "two units"},
    {u"tool.exes", false, "four units"},
    {u"toolexe", false, "no full stop"},
    {u"exe", false, "no full stop"},
    {u"tool", false, "no extension"},
    {u"a.b\\c", false, "three units with a backslash among them"},
    {u"dir.exe\\tool", false, "the directory's extension"},
};

TEST_IN_WORKSPACE(Access, OfFilesInEachMode)
{
    for (auto const &row : name_cases) {
        std::u16string const path = make_file(row.text, "1");
        EXPECT_EQ(access_signs(path), row.expected ? can_all : cannot_run) << row.why;
    }
}

TEST_IN_WORKSPACE(Access, OfReadOnlyFilesInEachMode)
{
    for (auto const &row : name_cases) {
        std::u16string const path = make_file(row.text, "1");
        attributes_for_now const read_only(path, FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(access_signs(path), row.expected ? cannot_write : cannot_write_or_run) << row.why;
    }
}

TEST_IN_WORKSPACE(Access, OfHiddenAndSystemFiles)
{
    std::u16string const path = make_file(u"tool.exe");
    for (DWORD const attributes : {0x2U, 0x4U, 0x20U, 0x26U, 0x2000U}) {
        attributes_for_now const set(path, attributes);
        EXPECT_EQ(access_signs(path), can_all) << attributes;
    }
}

TEST_IN_WORKSPACE(Access, OfDirectoriesInEachMode)
{
    for (char16_t const *name : {u"dir", u"dir.exe"}) {
        std::u16string const path = make_directory(name);
        EXPECT_EQ(access_signs(path), cannot_run) << "never executed";
        attributes_for_now const read_only(path, FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(access_signs(path), cannot_run) << "read-only says nothing about a directory";
    }
    EXPECT_TRUE(access(u"C:\\", access_exists | access_read)) << "a root";
    EXPECT_FALSE(access(u"C:\\", access_execute)) << "a root";
}

TEST_IN_WORKSPACE(Access, OfNamesThatAreNotThere)
{
    make_file(u"file");
    EXPECT_EQ(access_signs(at(u"no.exe")), is_missing) << "code 2";
    EXPECT_EQ(access_signs(at(u"no\\no")), is_missing) << "code 3";
    EXPECT_EQ(access_signs(at(u"file\\no")), is_missing) << "below a file";
    EXPECT_EQ(access_signs(at(u"a<b")), is_missing) << "code 123";
    EXPECT_EQ(access_signs(u"Q:\\no"), is_missing) << "no such drive";
    EXPECT_EQ(access_signs(at(u"no.b\u00E9x")), is_missing) << "before its extension";
    EXPECT_EQ(entries(), names{u"file"});
}

TEST_IN_WORKSPACE(Access, RefusesTheEmptyPathAheadOfTheMode)
{
    auto const refusal = empty_path();
    for (unsigned int const mode : {0U, 1U, 8U, 15U, 16U, 0xFFFFFFFFU}) {
        EXPECT_FAILURE(access(u"", mode), refusal) << mode;
        EXPECT_FAILURE(access(upath(), mode), refusal) << mode;
    }
    EXPECT_FAILURE(access(uR"(\\?\)", 1), refusal) << "nothing but a prefix";
}

TEST_IN_WORKSPACE(Access, RefusesOtherModes)
{
    make_file(u"tool.exe");
    auto const refusal = invalid_argument("Unsupported Access Mode");
    constexpr unsigned int modes[] = {
        0, 16, 17, 31, 32, 0x80, 0x100, 0x10001, 0x80000000, std::numeric_limits<unsigned>::max()};
    for (unsigned int const mode : modes) {
        for (char16_t const *name : {u"tool.exe", u"no", u"no\\no", u"a<b"}) {
            std::u16string const path = at(name);
            EXPECT_FAILURE(access(path, mode), refusal) << mode;
            EXPECT_FAILURE(access(upath(path), mode), refusal) << mode;
        }
        EXPECT_FAILURE(access(u"\\\\server", mode), refusal) << "ahead of what the pathname is";
    }
}

TEST_IN_WORKSPACE(Access, OfAnExtensionBeyondAscii)
{
    for (char16_t const *name : {u"f.b\u00E9x", u"f.\u00E9xe", u".ex\u00E9"}) {
        make_file(name);
        EXPECT_EQ(access_signs(at(name)), has_invalid_character);
    }
    make_directory(u"d.b\u00E9x");
    EXPECT_EQ(access_signs(at(u"d.b\u00E9x")), cannot_run) << "a directory isn't asked";
    for (char16_t const *name : {u"f.b\u00E9", u"f.ex\u00E9x", u"\u00E9\u00E9\u00E9.txt"}) {
        make_file(name);
        EXPECT_EQ(access_signs(at(name)), cannot_run) << "it has to be of three units";
    }
}

TEST_IN_WORKSPACE(Access, BringsTextsToNativeForm)
{
    make({u"a\\tool.exe", u"a\\text"});
    enter(u"a");
    for (char16_t const *text : {u"tool.exe", u"./tool.exe", u"..\\a\\tool.exe", u"../a//tool.exe"})
        for (unsigned int mode = 1; mode <= 15; ++mode)
            EXPECT_TRUE(access(text, mode)) << printable(text) << ", mode " << mode;
    EXPECT_TRUE(access(uR"(\\?\)" + at(u"a\\tool.exe"), access_execute)) << "with a prefix";
    EXPECT_FALSE(access(u"text", access_execute));
    EXPECT_FALSE(access(u"a\\tool.exe", access_exists));
    std::u16string cut = at(u"a\\text");
    cut.append(u"\0.exe", 5);
    EXPECT_FALSE(access(cut, access_execute)) << "a NUL ends the pathname, and with it the name";
}

TEST_IN_WORKSPACE(Access, OfPathnamesAboutTheLimits)
{
    std::u16string const folder = of_size((work.root() + u"\\").c_str(), 200);
    for (std::size_t const size : {247U, 248U, 259U, 260U, 261U, 400U}) {
        std::u16string const path = of_size((folder + u"\\").c_str(), size - 4) + u".exe";
        ASSERT_EQ(path.size(), size);
        work.make_file(path);
        EXPECT_EQ(access_signs(path), can_all) << size;
        EXPECT_EQ(access_signs(uR"(\\?\)" + path), can_all) << size;
        EXPECT_EQ(access_signs(of_size((folder + u"\\b").c_str(), size)), is_missing) << size;
    }
}

TEST_IN_WORKSPACE(Access, OfPathnamesThatCannotBe)
{
    for (char16_t const *path : {u"\\\\server", u"\\\\.\\COM1"})
        for (unsigned int const mode : {1U, 2U, 8U, 15U})
            EXPECT_FAILURE(access(path, mode), bad_path_type(path)) << mode;
}

TEST_IN_WORKSPACE(Access, OnAShare)
{
    NEEDS(work.has_share(), "this system offers the tests no network share");
    std::u16string const tool = work.share_root() + u"\\tool.exe";
    work.make_file(tool);
    EXPECT_EQ(access_signs(tool), can_all);
    EXPECT_EQ(access_signs(work.share_root()), cannot_run);
    EXPECT_EQ(access_signs(work.share_root() + u"\\no"), is_missing);
    attributes_for_now const read_only(tool, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(access_signs(tool), cannot_write);
}

TEST_IN_WORKSPACE(Access, TheNamesOfModes)
{
    EXPECT_EQ(access_exists, 1U);
    EXPECT_EQ(access_read, 2U);
    EXPECT_EQ(access_write, 4U);
    EXPECT_EQ(access_execute, 8U);
}

} // namespace
} // namespace fl::filesystem::tests
