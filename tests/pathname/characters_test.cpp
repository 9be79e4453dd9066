#include "pathname/characters.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using foundation::ustring::CtypeInvalidCharacter;

TEST(Characters, LettersAreTheFiftyTwoOfAscii)
{
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        bool const expected = (unit >= 0x41 && unit <= 0x5A) || (unit >= 0x61 && unit <= 0x7A);
        EXPECT_EQ(is_letter(static_cast<char16_t>(unit)), expected) << unit;
        EXPECT_EQ(is_letter(static_cast<wchar_t>(unit)), expected) << unit;
    }
}

TEST(Characters, WhiteSpace)
{
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        bool const expected = (unit >= 0x09 && unit <= 0x0D) || unit == 0x20;
        EXPECT_EQ(is_white_space(static_cast<char16_t>(unit)), expected) << unit;
        EXPECT_EQ(is_white_space(static_cast<wchar_t>(unit)), expected) << unit;
    }
}

TEST(Characters, LowerCaseOrSame)
{
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        unsigned int const expected = unit >= 0x41 && unit <= 0x5A ? unit + 0x20 : unit;
        EXPECT_EQ(lower_case_or_same(static_cast<char16_t>(unit)), expected);
    }
}

struct comparison_case
{
    char16_t const *left, *right;
    int sign;
    char const *why;
};

constexpr comparison_case comparison_cases[] = {
    {u"abc", u"ABC", 0, "case makes no difference"},
    {u"abc", u"abd", -1, "the first difference decides"},
    {u"abD", u"aBc", 1, "the first difference decides"},
    {u"abc", u"ab", 1, "the shorter text comes first"},
    {u"ab", u"abc", -1, "the shorter text comes first"},
    {u"", u"", 0, "both end together"},
    {u"", u"a", -1, "the empty text comes first"},
    {u"a\u00E9", u"b\u00E9", -1, "what follows the first difference is not looked at"},
    {u"a", u"a\u00E9", -1, "nor is what the shorter text has no counterpart for"},
    {u"_", u"A", -1, "as lower case: an underscore stands ahead of a"},
};

int sign(int value)
{
    return (value > 0) - (value < 0);
}

TEST(CompareIgnoringCase, Table)
{
    for (auto const &row : comparison_cases) {
        std::u16string_view const left = row.left;
        std::u16string_view const right = row.right;
        EXPECT_EQ(sign(compare_ignoring_case(left, right)), row.sign) << row.why;
        std::wstring const wide_left = wide(left);
        std::wstring const wide_right = wide(right);
        EXPECT_EQ(sign(compare_ignoring_case<wchar_t>(wide_left, wide_right)), row.sign) << row.why;
    }
    EXPECT_EQ(compare_ignoring_case<char16_t>(u"abc", u"abd"), -1) << "the difference itself";
    EXPECT_EQ(compare_ignoring_case<char16_t>(u"aZ", u"ac"), 'z' - 'c');
}

TEST(CompareIgnoringCase, NullTextsAreEmpty)
{
    EXPECT_EQ(compare_ignoring_case(std::u16string_view(), std::u16string_view(u"")), 0);
    EXPECT_LT(compare_ignoring_case(std::u16string_view(), std::u16string_view(u"a")), 0);
}

TEST(CompareIgnoringCase, RaisesOnAUnitAbove127UpToTheFirstDifference)
{
    std::u16string_view const plain = u"ab";
    std::u16string_view const accented = u"a\u00E9";
    EXPECT_THROW(compare_ignoring_case(plain, accented), CtypeInvalidCharacter);
    EXPECT_THROW(compare_ignoring_case(accented, plain), CtypeInvalidCharacter);
    EXPECT_THROW(compare_ignoring_case(accented, accented), CtypeInvalidCharacter)
        << "equal units are tested, too";
    EXPECT_THROW(compare_ignoring_case<char16_t>(u"\u0080", u"\u0080"), CtypeInvalidCharacter)
        << "128 is the first";
    EXPECT_EQ(compare_ignoring_case<char16_t>(u"\u007F", u"\u007F"), 0) << "127 is none";
    EXPECT_THROW(compare_ignoring_case<wchar_t>(L"\u00E9", L"a"), CtypeInvalidCharacter);
}

TEST(ToLowerCase, Texts)
{
    EXPECT_EQ(to_lower_case<char16_t>(u"AbC\\Z[1"), u"abc\\z[1");
    EXPECT_EQ(to_lower_case<wchar_t>(L"AbC"), L"abc");
    EXPECT_EQ(to_lower_case<char16_t>(u""), u"");
    EXPECT_EQ(to_lower_case(std::u16string_view()), u"");
}

TEST(ToLowerCase, CopiesAtMost1024Units)
{
    for (std::size_t const size : {1023U, 1024U, 1025U, 5000U}) {
        std::u16string const text(size, u'A');
        EXPECT_EQ(to_lower_case<char16_t>(text),
                  std::u16string(std::min<std::size_t>(size, 1024), u'a'));
    }
}

TEST(ToLowerCase, RaisesOnAUnitAbove127AmongThem)
{
    std::u16string text(1025, u'a');
    text[1024] = u'\u00E9';
    EXPECT_EQ(to_lower_case<char16_t>(text), std::u16string(1024, u'a')) << "not among them";
    text[1023] = u'\u00E9';
    EXPECT_THROW(to_lower_case<char16_t>(text), CtypeInvalidCharacter);
}

} // namespace
} // namespace fl::filesystem::detail
