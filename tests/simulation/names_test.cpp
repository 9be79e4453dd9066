#include "names.hpp"

#include "support/tables.hpp"

#include <gtest/gtest.h>

namespace fl::simulation {

namespace {

test_support::row_of<std::u16string, bool> const name_cases[] = {
    {u"a", true, "plain"},
    {u"a.b c", true, "with a blank"},
    {u"a. ", true, "an end that a long prefix keeps"},
    {u"...", true, "more than two full stops"},
    {u"nul", true, "a disk knows no devices"},
    {u"\xD800", true, "half a pair"},
    {std::u16string(255, u'a'), true, "the longest"},
    {std::u16string(256, u'a'), false, "one longer"},
    {u"", false, "none"},
    {u".", false, "the directory itself"},
    {u"..", false, "the one above"},
    {u"a:b", false, "a stream"},
    {u"a/b", false, "a separator"},
    {u"a\\b", false, "a separator"},
    {u"a\x1F", false, "a control character"},
    {std::u16string(1, u'\0'), false, "NUL"},
    {u"a\x7F", true, "not below a blank"},
};

TEST(Names, ThatADiskTakes)
{
    test_support::expect_rows(name_cases, is_valid_name);
    for (char16_t const unit : std::u16string_view(u"<>:\"/\\|?*"))
        EXPECT_FALSE(is_valid_name(std::u16string(1, unit)));
}

// Done twice it changes nothing more, and the size stays.
TEST(Names, HaveOneUpperCase)
{
    for (unsigned int number = 0; number <= 0xFFFF; ++number) {
        char16_t const unit = static_cast<char16_t>(number);
        ASSERT_EQ(upcase(upcase(unit)), upcase(unit)) << number;
        ASSERT_EQ(upcase(std::u16string(1, unit)), std::u16string(1, upcase(unit))) << number;
    }
    EXPECT_EQ(upcase(u"aZ1_\u00E4\u0436"), u"AZ1_\u00C4\u0416");
}

TEST(Names, DrivesAreLettersWithColons)
{
    EXPECT_TRUE(is_drive_at(u"C:", 0));
    EXPECT_TRUE(is_drive_at(u"\\\\?\\z:\\", 4));
    EXPECT_FALSE(is_drive_at(u"C", 0));
    EXPECT_FALSE(is_drive_at(u"1:", 0));
    EXPECT_FALSE(is_drive_at(u"\u00C4:", 0));
    EXPECT_FALSE(is_drive_at(u"C:", 1));
}

} // namespace

} // namespace fl::simulation
