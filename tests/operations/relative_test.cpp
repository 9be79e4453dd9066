#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr row_of_texts<char16_t> relative_cases[] = {
    {uR"(a\b)", uR"(a\c)", uR"(..\b)", "beside it"},
    {uR"(a\b)", u"a", u"b", "below it"},
    {u"a", uR"(a\b)", u"..", "above it"},
    {uR"(a\b)", uR"(a\b)", u".", "the same"},
    {uR"(a\b\f)", uR"(a\c)", uR"(..\b\f)", "a file"},
    {uR"(a\c)", uR"(a\b\f)", uR"(..\..\c)", "a file counts as a level"},
    {uR"(a\b\no\x)", uR"(a\c)", uR"(..\b\no\x)", "what is missing, by its text"},
    {uR"(a\b)", uR"(no\x\y)", uR"(..\..\..\a\b)", "a missing base"},
    {uR"(no\x)", uR"(no\y)", uR"(..\x)", "nothing of either"},
    {uR"(no\..\a)", u"a", u".", "dots in what is missing"},
    {uR"(a\no\.\x)", u"a", uR"(no\x)", "a dot in what is missing"},
    {uR"(a\b\..\c)", u"a", u"c", "dots in what is there"},
    {u"a//b/", uR"(a\)", u"b", "separators"},
    {uR"(A\B)", u"a", u"b", "letters as they are on the disk"},
    {uR"(a\No\X)", u"A", uR"(No\X)", "and as they are written where nothing is"},
};

/// With the directories `a\b` and `a\c`, and a file in the one.
class Relative : public in_workspace
{
protected:
    Relative() { make({uR"(a\b\f)", uR"(a\c\)"}); }
};

TEST_F(Relative, Table)
{
    for (auto const &row : relative_cases) {
        std::u16string const p = at(row.first);
        std::u16string const base = at(row.second);
        EXPECT_EQ(relative(p, base), row.expected) << row.why;
        EXPECT_EQ(relative(upath(p), upath(base)).native(), row.expected) << row.why;
        EXPECT_TRUE(relative(upath(p, false), upath(base)).form_flag()) << row.why;
    }
    EXPECT_EQ(entries(), names{u"a"}) << "nothing is made";
}

// No current directory is put ahead of either: the system does that for what is there.
TEST_F(Relative, OfRelativePaths)
{
    EXPECT_EQ(relative(uR"(a\b)", uR"(a\c)"), uR"(..\b)") << "both are there";
    EXPECT_EQ(relative(u"no", uR"(no\x)"), u"..") << "nothing of either";
    EXPECT_EQ(relative(uR"(a\b)", at(u"a")), u"b") << "both are found";
    EXPECT_EQ(relative(u"no", at(u"a")), u"") << "a text and a place have no relation";
    EXPECT_EQ(relative(at(u"a"), u"no"), u"");
    EXPECT_EQ(relative(uR"(a\no)", at(u"a")), u"no");
    EXPECT_EQ(relative(u".", u"a"), u"..");
}

TEST_F(Relative, OfEmptyPaths)
{
    EXPECT_EQ(relative(u"", u""), u".") << "two texts alike";
    EXPECT_EQ(relative(u"", u"no"), u"..");
    EXPECT_EQ(relative(u"no", u""), u"no");
    EXPECT_EQ(relative(u"", u"a"), u"") << "the base is a place, nothing is none";
}

TEST_F(Relative, AcrossRootsIsEmptyAndNoError)
{
    upath const result = relative(upath(at(u"a")), upath(uR"(\\no-such-server\share\a)"));
    EXPECT_EQ(result.native(), u"");
    EXPECT_TRUE(result.form_flag());
    EXPECT_EQ(relative(uR"(\\no-such-server\share\a)", at(u"a")), u"");
    EXPECT_EQ(relative(uR"(\\no-such-server\share\a)", uR"(\\no-such-server\share\b)"), uR"(..\a)");
}

TEST_F(Relative, ABaseThatGoesUpIntoTheUnknown)
{
    EXPECT_EQ(relative(uR"(no\a)", uR"(no\..\..\..\no such)"), u"");
}

TEST_F(Relative, ExamplesOfTheHeader)
{
    constexpr row_of_texts<char16_t> rows[] = {
        {uR"(C:\a\b)", uR"(C:\a\c)", uR"(..\b)", "beside it"},
        {uR"(C:\a)", uR"(C:\a)", u".", "the same"},
        {uR"(D:\a)", uR"(C:\a)", u"", "another drive"},
    };
    expect_rows(rows, [](auto p, auto base) { return relative(p, base); });
}

} // namespace
} // namespace fl::filesystem::tests
