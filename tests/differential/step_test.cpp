#include "differential/step.hpp"

#include "differential/generator.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace differential {

namespace {

struct quoted_case
{
    char16_t const *text;
    char const *expected;
    char const *why;
};

constexpr quoted_case quoted_cases[] = {
    {u"", R"("")", "no text"},
    {u"a\\b c", R"("a\b c")", "plain units stay"},
    {u"\xE000\\a", R"("%(folder)\a")", "the folder"},
    {u"\xE001\\\xE002", R"-("%(rooted)\%(name)")-", "its other marks"},
    {u"\u00E9\t", R"("%00E9%0009")", "what is no plain ASCII"},
    {u"%\"", R"("%0025%0022")", "what would end a text, or begin another unit"},
    {u"\xD800", R"("%D800")", "half a pair"},
    {u"aaaaaaaa", R"("aaaaaaaa")", "eight of one unit"},
    {u"aaaaaaaaab", R"("%(a*9)b")", "nine of them"},
    {u".........", R"(".........")", "but only of letters and digits"},
};

TEST(DifferentialStep, QuotesTexts)
{
    for (quoted_case const &row : quoted_cases) {
        EXPECT_EQ(quoted(row.text), row.expected) << row.why;
        step const one{function::get_full_path, {row.text}, {}};
        EXPECT_EQ(from_line(to_line(one)), one) << row.why;
    }
}

TEST(DifferentialStep, IsReadBackAsItWasWritten)
{
    generator made(7, all_functions());
    for (step const &one : made.next(5000))
        ASSERT_EQ(from_line(to_line(one)), one) << to_line(one);
}

TEST(DifferentialStep, RefusesWhatIsNone)
{
    for (char const *line :
         {"", "CloseFile \"a\"", "CreateDirectoryW", "CreateDirectoryW \"a",
          "CreateDirectoryW \"a\" 0x1", "CreateDirectoryW \"%(nothing)\"",
          "MoveFileExW \"a\" \"b\"", "CloseHandle 1", "GetCurrentDirectoryW \"a\""})
        EXPECT_THROW(from_line(line), std::invalid_argument) << line;
}

TEST(DifferentialGenerator, MakesTheSameOfTheSameSeed)
{
    std::vector<function> const some = {function::create_directory, function::get_full_path};
    generator first(1, some), again(1, some), other(2, some);
    sequence const made = first.next(200);
    EXPECT_EQ(made, again.next(200));
    EXPECT_NE(made, other.next(200));
    EXPECT_NE(made, first.next(200)) << "the next one is another";
}

// The same numbers on every host: this engine's are fixed by the language.
TEST(DifferentialGenerator, RollsTheSameEverywhere)
{
    dice rolled(5489);
    EXPECT_EQ(rolled.roll(1000), 14514284786278117030U % 1000);
    EXPECT_EQ(rolled.roll(1000), 4620546740167642908U % 1000);
}

TEST(DifferentialGenerator, MakesNoOtherFunctions)
{
    generator made(3, {function::remove_directory});
    for (step const &one : made.next(100))
        EXPECT_EQ(one.what, function::remove_directory);
}

// Wine takes one slash ahead for a pathname of the host.
TEST(DifferentialGenerator, NeverBeginsWithOneSlash)
{
    generator made(11, all_functions());
    for (step const &one : made.next(50000))
        for (std::u16string const &text : one.texts)
            EXPECT_FALSE(text.starts_with(u'/') && !text.starts_with(u"//")) << to_line(one);
}

} // namespace

} // namespace differential
