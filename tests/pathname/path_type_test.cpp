#include "pathname/path_type.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using namespace windows;
using foundation::ustring::CtypeInvalidCharacter;

struct root_case
{
    char16_t const *text;
    path_type_enum classified;
    path_type_enum analysed;
    std::size_t analysed_root, root_path, element_root;
};

constexpr root_case root_cases[] = {
    {u"", PATH_TYPE_RELATIVE, PATH_TYPE_RELATIVE, 0, 0, 0},
    {u"foo", PATH_TYPE_RELATIVE, PATH_TYPE_RELATIVE, 0, 0, 0},
    {u"\\", PATH_TYPE_ROOTED, PATH_TYPE_ROOTED, 1, 1, 1},
    {u"/", PATH_TYPE_RELATIVE, PATH_TYPE_RELATIVE, 0, 0, 0},
    {uR"(\foo)", PATH_TYPE_ROOTED, PATH_TYPE_ROOTED, 1, 1, 1},
    {u"C:", PATH_TYPE_DRIVE_RELATIVE, PATH_TYPE_DRIVE_RELATIVE, 2, 2, 2},
    {u"C:foo", PATH_TYPE_DRIVE_RELATIVE, PATH_TYPE_DRIVE_RELATIVE, 2, 2, 2},
    {uR"(C:\)", PATH_TYPE_DRIVE_ABSOLUTE, PATH_TYPE_DRIVE_ABSOLUTE, 3, 3, 3},
    {u"C:/", PATH_TYPE_DRIVE_RELATIVE, PATH_TYPE_DRIVE_RELATIVE, 2, 2, 2},
    {uR"(1:\)", PATH_TYPE_RELATIVE, PATH_TYPE_RELATIVE, 0, 0, 0},
    {u"\\\\", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 2, 2},
    {uR"(\\server)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 8, 8},
    {uR"(\\server\)", PATH_TYPE_INVALID, PATH_TYPE_UNC_NO_ROOT, 9, 9, 9},
    {uR"(\\server\share)", PATH_TYPE_UNC, PATH_TYPE_UNC_NO_ROOT, 14, 9, 14},
    {uR"(\\server\share\)", PATH_TYPE_UNC, PATH_TYPE_UNC, 15, 9, 15},
    {uR"(\\server\share\foo)", PATH_TYPE_UNC, PATH_TYPE_UNC, 15, 9, 15},
    {u"//server/share/foo", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 18, 18},
    {uR"(\\\share)", PATH_TYPE_UNC, PATH_TYPE_INVALID, 0, 3, 8},
    {uR"(\\..\share)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 5, 10},
    {uR"(\\server\.)", PATH_TYPE_INVALID, PATH_TYPE_UNC_NO_ROOT, 10, 9, 10},
    {uR"(\\server\..\x)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 9, 12},
    {uR"(\\?\)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 4, 4},
    {uR"(\\?\foo)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 7, 7},
    {uR"(\\?\C:)", PATH_TYPE_LONG_DRIVE_RELATIVE, PATH_TYPE_LONG_DRIVE_RELATIVE, 6, 6, 6},
    {uR"(\\?\C:\)", PATH_TYPE_LONG_DRIVE_ABSOLUTE, PATH_TYPE_LONG_DRIVE_ABSOLUTE, 7, 7, 7},
    {uR"(\\?\C:foo)", PATH_TYPE_LONG_DRIVE_RELATIVE, PATH_TYPE_LONG_DRIVE_RELATIVE, 6, 9, 6},
    {uR"(\\?\UNC\)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 8, 8},
    {uR"(\\?\UNC\server)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 14, 14},
    {uR"(\\?\UNC\server\share)", PATH_TYPE_LONG_UNC, PATH_TYPE_LONG_UNC_NO_ROOT, 20, 15, 20},
    {uR"(\\?\UNC\server\share\)", PATH_TYPE_LONG_UNC, PATH_TYPE_LONG_UNC, 21, 15, 21},
    {uR"(\\?\unc\server\share\foo)", PATH_TYPE_LONG_UNC, PATH_TYPE_LONG_UNC, 21, 15, 21},
    {uR"(\\.\)", PATH_TYPE_DEVICE, PATH_TYPE_INVALID, 0, 1, 1},
    {uR"(\\.\COM1)", PATH_TYPE_DEVICE, PATH_TYPE_DEVICE, 4, 1, 1},
    {uR"(\??\C:\foo)", PATH_TYPE_ROOTED, PATH_TYPE_ROOTED, 1, 1, 1},
    // forward slashes bound no element, though a prefix may be written with them
    {uR"(\\server/share)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 14, 14},
    {u"C:/foo", PATH_TYPE_DRIVE_RELATIVE, PATH_TYPE_DRIVE_RELATIVE, 2, 2, 2},
    {uR"(\\?\C:/foo)", PATH_TYPE_LONG_DRIVE_RELATIVE, PATH_TYPE_LONG_DRIVE_RELATIVE, 6, 10, 6},
    {uR"(//?/C:\foo)", PATH_TYPE_LONG_DRIVE_ABSOLUTE, PATH_TYPE_RELATIVE, 0, 7, 7},
    {u"//./COM1", PATH_TYPE_DEVICE, PATH_TYPE_RELATIVE, 0, 0, 0},
    // a question mark or dot without a separator behind it begins a server's name
    {uR"(\\?x)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 4, 4},
    {uR"(\\.x)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 4, 4},
    {uR"(\\?x\share)", PATH_TYPE_UNC, PATH_TYPE_RELATIVE, 0, 5, 10},
    {uR"(/\server)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 8, 8},
    // dots are no server and no share
    {uR"(\\.\share\foo)", PATH_TYPE_DEVICE, PATH_TYPE_DEVICE, 4, 1, 1},
    {uR"(\\server\..)", PATH_TYPE_INVALID, PATH_TYPE_UNC_NO_ROOT, 11, 9, 11},
    {uR"(\\server\.\x)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 9, 11},
    {uR"(\\server\...\x)", PATH_TYPE_UNC, PATH_TYPE_UNC, 13, 9, 13},
    {uR"(\\server\\x)", PATH_TYPE_UNC, PATH_TYPE_UNC, 10, 9, 10},
    // one unit after the prefix is never the end of the server
    {uR"(\\?\UNC\\share)", PATH_TYPE_LONG_UNC, PATH_TYPE_INVALID, 0, 9, 14},
    {uR"(\\ab)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 4, 4},
    {uR"(\\a\b)", PATH_TYPE_UNC, PATH_TYPE_UNC_NO_ROOT, 5, 4, 5},
    {u"\u00E9:\\", PATH_TYPE_RELATIVE, PATH_TYPE_RELATIVE, 0, 0, 0},
    // the usual example of each type
    {uR"(foo\bar)", PATH_TYPE_RELATIVE, PATH_TYPE_RELATIVE, 0, 0, 0},
    {uR"(C:\foo)", PATH_TYPE_DRIVE_ABSOLUTE, PATH_TYPE_DRIVE_ABSOLUTE, 3, 3, 3},
    {uR"(\\?\C:\foo)", PATH_TYPE_LONG_DRIVE_ABSOLUTE, PATH_TYPE_LONG_DRIVE_ABSOLUTE, 7, 7, 7},
    {uR"(\\?\UNC\server\share\foo)", PATH_TYPE_LONG_UNC, PATH_TYPE_LONG_UNC, 21, 15, 21},
    // prefixes that one classifier takes and the other doesn't
    {uR"(\\.\C:\foo)", PATH_TYPE_DEVICE, PATH_TYPE_DEVICE, 4, 1, 1},
    {uR"(\\?/C:\x)", PATH_TYPE_LONG_DRIVE_ABSOLUTE, PATH_TYPE_RELATIVE, 0, 7, 7},
    {uR"(\\./COM1)", PATH_TYPE_DEVICE, PATH_TYPE_RELATIVE, 0, 1, 1},
    // the shortest server and share behind a long prefix, and a share of dots
    {uR"(\\?\UNC\a\b)", PATH_TYPE_LONG_UNC, PATH_TYPE_LONG_UNC_NO_ROOT, 11, 10, 11},
    {uR"(\\?\UNC\server\..\x)", PATH_TYPE_INVALID, PATH_TYPE_INVALID, 0, 15, 18},
    // one separator ends one root, two end the other, wherever they stand
    {uR"(\\?\foo\bar\x)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 8, 12},
    {uR"(\\?\\foo)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 5, 8},
    {uR"(\\?\\a\b)", PATH_TYPE_INVALID, PATH_TYPE_RELATIVE, 0, 5, 7},
    {uR"(\\?\UNC\\share\x)", PATH_TYPE_LONG_UNC, PATH_TYPE_LONG_UNC_NO_ROOT, 16, 9, 15},
    {uR"(\\\share\x)", PATH_TYPE_UNC, PATH_TYPE_UNC_NO_ROOT, 10, 3, 9},
};

template <typename Char>
void expect_roots(root_case const &row, std::basic_string_view<Char> text)
{
    std::string const shown = printable(row.text);
    EXPECT_EQ(classify_path_type(text), row.classified) << shown;
    EXPECT_EQ(analyse_path_root(text).length, row.analysed_root) << shown;
    EXPECT_EQ(analyse_path_root(text).type, row.analysed) << shown;
    EXPECT_EQ(root_path_length(text), row.root_path) << shown;
    EXPECT_EQ(element_root_length(text), row.element_root) << shown;
}

TEST(PathType, Table)
{
    for (auto const &row : root_cases) {
        expect_roots<char16_t>(row, row.text);
        expect_roots<wchar_t>(row, wide(row.text));
    }
}

TEST(PathType, Numbers)
{
    EXPECT_EQ(PATH_TYPE_INVALID, 0U);
    EXPECT_EQ(PATH_TYPE_RELATIVE, 1U);
    EXPECT_EQ(PATH_TYPE_ROOTED, 4098U);
    EXPECT_EQ(PATH_TYPE_DRIVE_ABSOLUTE, 4099U);
    EXPECT_EQ(PATH_TYPE_DRIVE_RELATIVE, 4100U);
    EXPECT_EQ(PATH_TYPE_UNC, 12293U);
    EXPECT_EQ(PATH_TYPE_UNC_NO_ROOT, 12294U);
    EXPECT_EQ(PATH_TYPE_LONG_DRIVE_ABSOLUTE, 20487U);
    EXPECT_EQ(PATH_TYPE_LONG_DRIVE_RELATIVE, 20488U);
    EXPECT_EQ(PATH_TYPE_LONG_UNC, 28681U);
    EXPECT_EQ(PATH_TYPE_LONG_UNC_NO_ROOT, 28682U);
    EXPECT_EQ(PATH_TYPE_DEVICE, 32779U);
    static_assert(sizeof(path_type_enum) == 4);
}

TEST(PathType, Flags)
{
    struct
    {
        path_type_enum type;
        bool root, server, long_prefix, device;
    } constexpr cases[] = {
        {PATH_TYPE_INVALID, false, false, false, false},
        {PATH_TYPE_RELATIVE, false, false, false, false},
        {PATH_TYPE_ROOTED, true, false, false, false},
        {PATH_TYPE_DRIVE_ABSOLUTE, true, false, false, false},
        {PATH_TYPE_DRIVE_RELATIVE, true, false, false, false},
        {PATH_TYPE_UNC, true, true, false, false},
        {PATH_TYPE_UNC_NO_ROOT, true, true, false, false},
        {PATH_TYPE_LONG_DRIVE_ABSOLUTE, true, false, true, false},
        {PATH_TYPE_LONG_DRIVE_RELATIVE, true, false, true, false},
        {PATH_TYPE_LONG_UNC, true, true, true, false},
        {PATH_TYPE_LONG_UNC_NO_ROOT, true, true, true, false},
        {PATH_TYPE_DEVICE, false, false, false, true},
    };
    unsigned int number = 0;
    for (auto const &row : cases) {
        EXPECT_EQ(row.type & 0xFFFU, number) << "a running number";
        EXPECT_EQ((row.type & 0x1000U) != 0, row.root) << number;
        EXPECT_EQ((row.type & 0x2000U) != 0, row.server) << number;
        EXPECT_EQ((row.type & 0x4000U) != 0, row.long_prefix) << number;
        EXPECT_EQ((row.type & 0x8000U) != 0, row.device) << number;
        ++number;
    }
}

TEST(PathType, LengthCountsAndNotTheTextBehindIt)
{
    std::u16string_view const text = uR"(\\?\UNC\server\share\foo)";
    EXPECT_EQ(classify_path_type(text.substr(0, 14)), PATH_TYPE_INVALID) << "no share yet";
    EXPECT_EQ(classify_path_type(text.substr(0, 15)), PATH_TYPE_INVALID) << "nothing behind it";
    EXPECT_EQ(classify_path_type(text.substr(0, 16)), PATH_TYPE_LONG_UNC) << "share `s`";
    EXPECT_EQ(classify_path_type(text.substr(0, 7)), PATH_TYPE_INVALID);
    EXPECT_EQ(classify_path_type(text.substr(0, 3)), PATH_TYPE_INVALID) << "server `?`";
    EXPECT_EQ(classify_path_type(text.substr(0, 1)), PATH_TYPE_ROOTED);
}

TEST(AnalysePathRoot, RaisesOnALetterOutsideAsciiWhereUncCouldStand)
{
    EXPECT_THROW(analyse_path_root<wchar_t>(L"\\\\?\\\u00E9bcdefgh"), CtypeInvalidCharacter);
    EXPECT_THROW(analyse_path_root<char16_t>(u"\\\\?\\U\u00E9cdefgh"), CtypeInvalidCharacter);
    analysed_root root = analyse_path_root<wchar_t>(L"\\\\?\\\u00E9bcdef");
    EXPECT_EQ(root.length, 0U) << "ten units are too short to be compared";
    EXPECT_EQ(root.type, PATH_TYPE_RELATIVE);
    root = analyse_path_root<wchar_t>(L"\\\\?\\a\u00E9cdefgh");
    EXPECT_EQ(root.length, 0U) << "a difference ahead of it ends the comparison";
    EXPECT_EQ(root.type, PATH_TYPE_RELATIVE);
}

TEST(PathType, ClassifyNeverReturnsATypeWithoutRootOfAShare)
{
    for_all_texts(shape_alphabet, 7, [](std::u16string_view text) {
        path_type_enum const type = classify_path_type(text);
        ASSERT_NE(type, PATH_TYPE_UNC_NO_ROOT) << printable(text);
        ASSERT_NE(type, PATH_TYPE_LONG_UNC_NO_ROOT) << printable(text);
    });
}

TEST(PathType, RootsOfAllShortTextsStayInsideAndAgreeInBothCharacterTypes)
{
    for_all_texts(shape_alphabet, 6, [](std::u16string_view text) {
        std::wstring const owned = wide(text);
        std::wstring_view const wide_text = owned;
        analysed_root const analysed = analyse_path_root(text);
        analysed_root const wide_analysed = analyse_path_root(wide_text);
        ASSERT_LE(analysed.length, text.size()) << printable(text);
        ASSERT_LE(root_path_length(text), text.size()) << printable(text);
        ASSERT_LE(element_root_length(text), text.size()) << printable(text);
        ASSERT_EQ(wide_analysed.length, analysed.length) << printable(text);
        ASSERT_EQ(wide_analysed.type, analysed.type) << printable(text);
        ASSERT_EQ(classify_path_type(wide_text), classify_path_type(text)) << printable(text);
        ASSERT_EQ(root_path_length(wide_text), root_path_length(text)) << printable(text);
        ASSERT_EQ(element_root_length(wide_text), element_root_length(text)) << printable(text);
    });
}

} // namespace
} // namespace fl::filesystem::detail
