#include "standard/filesystem.hpp"

#include "standard/error_codes.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr answer_row<wchar_t> absolute_cases[] = {
    {L"", false, "nothing"},
    {L"foo", false, "relative"},
    {L"\\foo", false, "rooted"},
    {L"/foo", false, "rooted"},
    {L"C:", false, "a drive without a separator"},
    {L"C:foo", false, "a drive without a separator"},
    {L"C:\\", true, "a drive with one"},
    {L"C:/foo", true, "of either kind"},
    {L"1:\\", false, "no drive"},
    {L"\\\\", false, "no server"},
    {L"\\\\server", true, "a server"},
    {L"//server", true, "a server"},
    {L"\\\\server\\share", true, "a share"},
    {L"\\\\\\server", false, "three separators are no server"},
    {L"\\\\?\\", true, "a long prefix"},
    {L"\\\\?\\C:foo", true, "a long prefix, whatever follows"},
    {L"\\\\.\\COM1", true, "a device"},
    {L"\\??\\C:\\foo", true, "the object manager's prefix"},
    {L"\\??", false, "not the whole prefix"},
    {L"\\\\?\\\\x", true, "the server `?`"},
    {L"\\??\\\\x", false, "no prefix with a further separator"},
};

TEST(StandardIsAbsolute, Table)
{
    expect_rows(absolute_cases, [](auto text) { return standard::is_absolute<wchar_t>(text); });
    expect_rows(absolute_cases,
                [](auto text) { return standard::is_absolute<char16_t>(units(text)); });
}

TEST(StandardAbsolute, ClearsTheCodeAndExpands)
{
    std::error_code ec = stale;
    EXPECT_EQ(standard::absolute(L"C:/a//b", ec), L"C:\\a\\b");
    EXPECT_EQ(ec, std::error_code());
    ec = stale;
    EXPECT_EQ(standard::absolute(L"", ec), L"");
    EXPECT_EQ(ec, std::error_code());
}

TEST_IN_WORKSPACE(StandardCreateDirectory, AnswersAndCodes)
{
    make_file(u"file");
    std::error_code ec = stale;
    EXPECT_TRUE(standard::create_directory(wide(at(u"a")), ec));
    EXPECT_EQ(ec, std::error_code());
    ec = stale;
    EXPECT_FALSE(standard::create_directory(wide(at(u"a")), ec)) << "it is there already";
    EXPECT_EQ(ec, std::error_code()) << "which is no error";
    EXPECT_FALSE(standard::create_directory(wide(at(u"file")), ec));
    EXPECT_EQ(ec, system_code(183)) << "a file is in its place";
    EXPECT_FALSE(standard::create_directory(wide(at(uR"(no\b)")), ec));
    EXPECT_EQ(ec, system_code(3)) << "its parent is missing";
    EXPECT_FALSE(standard::create_directory(L"", ec));
    EXPECT_EQ(ec, system_code(3));
}

TEST(StandardCreateDirectories, OfTheEmptyTextIsNotFound)
{
    std::error_code ec;
    EXPECT_FALSE(standard::create_directories(L"", ec));
    EXPECT_EQ(ec, system_code(3));
}

TEST(StandardCreateDirectories, OfARootCreatesNothingAndIsNoError)
{
    std::error_code ec = stale;
    EXPECT_FALSE(standard::create_directories(L"C:\\", ec));
    EXPECT_EQ(ec, std::error_code());
}

TEST(StandardCreateDirectories, AnswersForTheLastLevelOnly)
{
    workspace work;
    std::error_code ec = stale;
    EXPECT_TRUE(standard::create_directories(wide(work.path(uR"(a\b)")), ec));
    EXPECT_EQ(ec, std::error_code());
    EXPECT_FALSE(standard::create_directories(wide(work.path(uR"(a\b)")), ec));
    EXPECT_EQ(ec, std::error_code());
    EXPECT_TRUE(standard::create_directories(wide(work.path(u"a/b/c/")), ec))
        << "a separator at the end is no level";
    EXPECT_TRUE(standard::create_directories(wide(uR"(\\?\)" + work.path(uR"(x\y)")), ec))
        << "behind a long prefix the drive counts to the root";
    EXPECT_EQ(ec, std::error_code());
    EXPECT_TRUE(work.is_directory(work.path(uR"(x\y)")));
}

TEST(StandardCreateDirectories, NotesTheMoreTellingCode)
{
    workspace work;
    work.make_file(work.path(u"file"));
    std::error_code ec;
    EXPECT_FALSE(standard::create_directories(wide(work.path(uR"(file\a\b)")), ec));
    EXPECT_EQ(ec, system_code(183)) << "the file, not the level missing below it";
}

} // namespace
} // namespace fl::filesystem::detail
