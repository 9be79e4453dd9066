#include "flfs/text.hpp"

#include <fl/filesystem/utf8.hpp>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace std::string_literals;

struct utf8_case
{
    std::string utf8;
    std::u16string units;
    char const *why;
};

utf8_case const utf8_cases[] = {
    {"", u"", "no text"},
    {"C:\\a", u"C:\\a", "ASCII"},
    {"\x7F", u"\x7F", "the last of one byte"},
    {"\xC2\x80", u"\x80", "the first of two bytes"},
    {"\xC3\xA9", u"\u00E9", "an e with acute accent"},
    {"\xDF\xBF", u"\u07FF", "the last of two bytes"},
    {"\xE0\xA0\x80", u"\u0800", "the first of three bytes"},
    {"\xEF\xBF\xBF", u"\uFFFF", "the last of one unit"},
    {"\xF0\x90\x80\x80", {0xD800, 0xDC00}, "the first surrogate pair"},
    {"\xF0\x9F\x98\x80", {0xD83D, 0xDE00}, "a surrogate pair"},
    {"\xF4\x8F\xBF\xBF", {0xDBFF, 0xDFFF}, "the last code point"},
    {"\xED\xA0\x80", {0xD800}, "the first unpaired surrogate"},
    {"a\xED\xBF\xBF", {u'a', 0xDFFF}, "the last unpaired surrogate"},
    {"\xED\xB0\x80\xED\xA0\x80", {0xDC00, 0xD800}, "two surrogates in the wrong order"},
    {"\xED\xA0\x80\xF0\x90\x80\x80", {0xD800, 0xD800, 0xDC00}, "an unpaired one ahead of a pair"},
};

TEST(FlfsText, Utf8AndUnits)
{
    for (utf8_case const &row : utf8_cases) {
        EXPECT_EQ(flfs::units_from_utf8(row.utf8), row.units) << row.why;
        EXPECT_EQ(fl::filesystem::to_utf8(row.units), row.utf8) << row.why;
    }
}

TEST(FlfsText, EncodedSurrogatesOfAPairBecomeThePair)
{
    std::u16string const pair = {0xD83D, 0xDE00};
    EXPECT_EQ(flfs::units_from_utf8("\xED\xA0\xBD\xED\xB8\x80"), pair);
}

struct malformed_case
{
    std::string bytes;
    char const *why;
};

malformed_case const malformed_cases[] = {
    {"\x80", "a continuation without its lead"},
    {"a\xC3", "ends inside a character of two bytes"},
    {"\xE2\x82", "ends inside a character of three bytes"},
    {"\xF0\x9F\x98", "ends inside a character of four bytes"},
    {"\xC3(", "no continuation behind the lead"},
    {"\xC0\xAF", "two bytes for what takes one"},
    {"\xE0\x9F\xBF", "three bytes for what takes two"},
    {"\xF0\x8F\xBF\xBF", "four bytes for what takes three"},
    {"\xF4\x90\x80\x80", "beyond the last code point"},
    {"\xF8\x88\x80\x80\x80", "five bytes"},
    {"\xFF", "no lead at all"},
    {"caf\xE9", "Latin-1"},
};

TEST(FlfsText, MalformedUtf8)
{
    for (malformed_case const &row : malformed_cases)
        EXPECT_EQ(flfs::units_from_utf8(row.bytes), std::nullopt) << row.why;
}

struct display_case
{
    std::u16string text;
    std::string shown;
    char const *why;
};

display_case const display_cases[] = {
    {u"C:\\foo", "C:\\foo", "backslashes as they are"},
    {u"\u00E9", "\xC3\xA9", "letters of all scripts as they are"},
    {{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80", "a surrogate pair is a character"},
    {{u'a', 0xD800}, "a\\uD800", "a high surrogate at the end"},
    {{0xD800, u'a'}, "\\uD800a", "a high surrogate ahead of a letter"},
    {{0xDFFF}, "\\uDFFF", "a low surrogate"},
    {u"a\tb", "a\\u0009b", "a tab moves the cursor"},
    {u"\x1B[31m", "\\u001B[31m", "a terminal would obey"},
    {u"\x7F", "\\u007F", "delete"},
    {u"\x9B", "\\u009B", "a control beyond ASCII"},
    {u"\u00A0", "\xC2\xA0", "the first behind the controls"},
    {u"a\u202Egpj.exe", "a\\u202Egpj.exe", "turns the direction of writing"},
    {u"\uFEFF", "\\uFEFF", "a byte order mark shows nothing"},
};

TEST(FlfsText, Displayed)
{
    for (display_case const &row : display_cases)
        EXPECT_EQ(flfs::displayed(row.text), row.shown) << row.why;
}

display_case const value_cases[] = {
    {u"", "(empty)", "nothing"},
    {u"foo", "foo", "a plain value"},
    {u"(empty)", "\"(empty)\"", "a file of that name"},
    {u"foo ", "\"foo \"", "a blank at the end"},
    {u" foo", "\" foo\"", "a blank at the front"},
    {u"a b", "a b", "a blank inside can be seen"},
    {u"\"a\"", "\"\"a\"\"", "quotes of its own"},
};

TEST(FlfsText, DisplayedValue)
{
    for (display_case const &row : value_cases)
        EXPECT_EQ(flfs::displayed_value(row.text), row.shown) << row.why;
}

TEST(FlfsText, EscapedSurrogatesLeaveControlsAlone)
{
    std::u16string const text = {u'\t', 0xDC00, u'\u00E9'};
    EXPECT_EQ(flfs::escaped_surrogates(text), "\t\\uDC00\xC3\xA9");
}

} // namespace
