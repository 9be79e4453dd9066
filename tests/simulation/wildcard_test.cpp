#include "wildcard.hpp"

#include "support/tables.hpp"
#include "support/text.hpp"

#include <gtest/gtest.h>

namespace fl::simulation {

namespace {

constexpr test_support::row_of_texts<char16_t, bool> pattern_cases[] = {
    {u"*", u"a", true, "any"},
    {u"*", u".", true, "any, dots too"},
    {u"*.*", u"a", true, "any, as it ever was"},
    {u"*.*", u"a.b", true, "any"},
    {u"file", u"FILE", true, "no case"},
    {u"\u0436", u"\u0416", true, "no case beyond ASCII"},
    {u"file", u"files", false, "the whole name"},
    {u"a*", u"a", true, "nothing"},
    {u"a*", u"ba", false, "from the beginning"},
    {u"*a", u"ba", true, "up to the end"},
    {u"*a", u"ab", false, "up to the end"},
    {u"a*b*c", u"aXbYbZc", true, "several"},
    {u"a*b*c", u"acb", false, "in their order"},
    {u"**", u"a.b", true, "twice"},
    {u"*.txt", u"a.txt", true, "an extension"},
    {u"*.txt", u"a.b.txt", true, "the last extension"},
    {u"*.txt", u"a.txt.b", false, "within"},
    {u"*.txt", u".txt", true, "nothing ahead"},
    {u"*.txt", u"txt", false, "a full stop is needed"},
    {u"*.tx", u"a.txt", false, "no part of one"},
    {u"*.", u"a", true, "without an extension"},
    {u"*.", u"a.b", false, "with one"},
    {u"*.", u".", true, "the directory itself"},
    {u"*.", u"..", true, "the one above"},
    {u"?", u"a", true, "one unit"},
    {u"?", u"ab", false, "one unit only"},
    {u"?", u".", false, "no full stop"},
    {u"a?", u"a", true, "at the end perhaps nothing"},
    {u"???", u"a", true, "all of them"},
    {u"?a", u"a", false, "not at the beginning"},
    {u"a?.b", u"a.b", true, "nothing ahead of a full stop"},
    {u"a?.b", u"ax.b", true, "one ahead of a full stop"},
    {u"a?.b", u"axy.b", false, "two"},
    {u"a?b", u"a.b", false, "no full stop"},
    {u"a.?", u"a", true, "neither full stop nor unit"},
    {u"a.*", u"a", true, "the full stop goes with the rest"},
    {u"a.*", u"ab", false, "but nothing else"},
    {u"a*.*b", u"aXb", false, "a full stop within"},
    {u"a*.*b", u"aX.Yb", true, "a full stop within"},
};

TEST(Wildcard, Table)
{
    test_support::expect_rows(pattern_cases,
                              [](auto pattern, auto name) { return matches(pattern, name); });
}

TEST(Wildcard, IsToldByItsUnits)
{
    for (char16_t const *text : {u"*", u"a?b", u"<", u">", u"\""})
        EXPECT_TRUE(has_wildcard(text));
    for (char16_t const *text : {u"", u"a.b", u"[a-z]", u"%"})
        EXPECT_FALSE(has_wildcard(text));
}

// Texts without wildcards mean themselves; a star in place of any part of one, too.
TEST(Wildcard, HoldsForAllShortTexts)
{
    test_support::for_all_texts(u"ab.", 5, [](std::u16string const &text) {
        EXPECT_TRUE(text.empty() || matches(text, text)) << testing::PrintToString(text);
        EXPECT_FALSE(matches(text, text + u'c')) << testing::PrintToString(text);
        EXPECT_TRUE(matches(u"*", text));
        if (text.find(u'.') != std::u16string::npos)
            return; // full stops beside a star have a meaning of their own
        for (std::size_t at = 0; at <= text.size(); ++at) {
            EXPECT_TRUE(matches(text.substr(0, at) + u'*', text));
            EXPECT_TRUE(matches(u'*' + text.substr(at), text));
        }
    });
}

TEST(Wildcard, TakesNoLongerForManyStars)
{
    std::u16string pattern;
    for (int star = 0; star < 120; ++star)
        pattern += u"*a";
    EXPECT_TRUE(matches(pattern, std::u16string(255, u'a')));
    EXPECT_FALSE(matches(pattern + u'b', std::u16string(255, u'a')));
}

} // namespace

} // namespace fl::simulation
