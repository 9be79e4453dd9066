#include "pathname/shapes.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

struct shape_case
{
    char16_t const *text;
    bool drive, device, long_prefix, long_unc, unc;
};

constexpr shape_case shape_cases[] = {
    //  text            drive  device long   longunc unc
    {u"", false, false, false, false, false},
    {u"C:", true, false, false, false, false},
    {u"z:", true, false, false, false, false},
    {u"C", false, false, false, false, false},
    {u"1:", false, false, false, false, false},
    {u"\u00C9:", false, false, false, false, false},
    {u"[:", false, false, false, false, false},
    {u"@:", false, false, false, false, false},
    {uR"(\\.\)", false, true, false, false, false},
    {u"//./", false, true, false, false, false},
    {uR"(\/.\x)", false, true, false, false, false},
    {uR"(\\.)", false, false, false, false, true},
    {uR"(\\?\)", false, false, true, false, false},
    {u"//?/", false, false, true, false, false},
    {uR"(\\?)", false, false, false, false, true},
    {uR"(\\?x)", false, false, false, false, true},
    {uR"(\\.x)", false, false, false, false, true},
    {uR"(\\?\UNC\)", false, false, true, true, false},
    {uR"(\\?\unc\)", false, false, true, true, false},
    {u"//?/uNc/x", false, false, true, true, false},
    {uR"(\\?\UNC)", false, false, true, false, false},
    {uR"(\\?\UNCx)", false, false, true, false, false},
    {uR"(\\?\UNX\)", false, false, true, false, false},
    {uR"(\\?\XNC\)", false, false, true, false, false},
    {uR"(\\?\UXC\)", false, false, true, false, false},
    {u"\\\\?\\\u0055\u00D1C\\", false, false, true, false, false},
    {uR"(\\)", false, false, false, false, true},
    {uR"(\\s)", false, false, false, false, true},
    {u"/\\server", false, false, false, false, true},
    {uR"(\\..\share)", false, false, false, false, true},
    {uR"(\server)", false, false, false, false, false},
    {uR"(\??\)", false, false, false, false, false},
};

void expect_shapes(std::u16string_view text, std::size_t at, shape_case const &row)
{
    std::string const seen = printable(text);
    EXPECT_EQ(is_drive_at(text, at), row.drive) << seen;
    EXPECT_EQ(is_device_prefix_at(text, at), row.device) << seen;
    EXPECT_EQ(is_long_prefix_at(text, at), row.long_prefix) << seen;
    EXPECT_EQ(is_long_unc_prefix_at(text, at), row.long_unc) << seen;
    EXPECT_EQ(is_unc_prefix_at(text, at), row.unc) << seen;
}

TEST(Shapes, Table)
{
    for (auto const &row : shape_cases)
        expect_shapes(row.text, 0, row);
}

TEST(Shapes, AreLookedForAtAnIndex)
{
    for (auto const &row : shape_cases)
        expect_shapes(std::u16string(u"  ") + row.text, 2, row);
}

TEST(Shapes, OfAllShortTextsAgreeInBothCharacterTypesAndExcludeEachOther)
{
    for_all_texts(shape_alphabet, 5, [](std::u16string_view text) {
        std::wstring const owned = wide(text);
        std::wstring_view const wide_text = owned;
        bool const drive = is_drive_at(text, 0);
        bool const device = is_device_prefix_at(text, 0);
        bool const prefix = is_long_prefix_at(text, 0);
        bool const unc = is_unc_prefix_at(text, 0);
        ASSERT_LE(drive + device + prefix + unc, 1) << printable(text);
        ASSERT_EQ(is_drive_at(wide_text, 0), drive) << printable(text);
        ASSERT_EQ(is_device_prefix_at(wide_text, 0), device) << printable(text);
        ASSERT_EQ(is_long_prefix_at(wide_text, 0), prefix) << printable(text);
        ASSERT_EQ(is_unc_prefix_at(wide_text, 0), unc) << printable(text);
    });
}

TEST(Shapes, DotElements)
{
    std::u16string_view const text = u"a.b..c...";
    EXPECT_TRUE(is_dot_element(text, 1, 1));
    EXPECT_TRUE(is_dot_element(text, 3, 2));
    EXPECT_FALSE(is_dot_element(text, 0, 1));
    EXPECT_FALSE(is_dot_element(text, 0, 2));
    EXPECT_FALSE(is_dot_element(text, 2, 2));
    EXPECT_FALSE(is_dot_element(text, 6, 3)) << "three dots are a name";
    EXPECT_FALSE(is_dot_element(text, 1, 0)) << "nothing is no dot";
    EXPECT_FALSE(is_dot_element(text, 8, 2)) << "the second unit is behind the end";
    EXPECT_FALSE(is_dot_element(text, 9, 1));
}

TEST(Shapes, NamesThatLoseTheirEnd)
{
    for (wchar_t const *name : {L"a.", L"a ", L"a. ", L"...", L" ", L"."})
        EXPECT_TRUE(loses_its_end<wchar_t>(name)) << printable(units(name));
    for (wchar_t const *name : {L"a", L".a", L" a", L""})
        EXPECT_FALSE(loses_its_end<wchar_t>(name)) << printable(units(name));
}

} // namespace
} // namespace fl::filesystem::detail
