#include "pathname/root_length.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

struct unc_case
{
    char16_t const *text;
    std::size_t start, expected;
    char const *why;
};

constexpr unc_case unc_cases[] = {
    {uR"(\\server)", 2, 0, "no backslash behind the server"},
    {uR"(\\server\)", 2, 0, "nothing behind the server"},
    {uR"(\\server\share)", 2, 14, "the share runs to the end"},
    {uR"(\\server\share\)", 2, 15, "with its backslash"},
    {uR"(\\server\share\foo)", 2, 15, "what follows is not root"},
    {uR"(\\.\share)", 2, 0, "a dot is no server"},
    {uR"(\\..\share)", 2, 0, "two dots are none either"},
    {uR"(\\...\share)", 2, 11, "three dots are a name"},
    {uR"(\\\share)", 2, 8, "an empty server is accepted"},
    {uR"(\\server\.\x)", 2, 0, "a dot is no share"},
    {uR"(\\server\..)", 2, 0, "nor are two, at the end of the text"},
    {uR"(\\server\\x)", 2, 10, "an empty share with a backslash is accepted"},
    {uR"(\\?\UNC\server\share\x)", 8, 21, "behind a long prefix"},
    {u"\\\\server/share", 2, 0, "a forward slash bounds nothing"},
    {u"", 0, 0, "nothing there"},
};

TEST(UncRootLength, Table)
{
    for (auto const &row : unc_cases) {
        std::u16string_view const text = row.text;
        EXPECT_EQ(unc_root_length(text, row.start), row.expected) << printable(text) << row.why;
        EXPECT_EQ(unc_root_length<wchar_t>(wide(text), row.start), row.expected) << row.why;
    }
}

TEST(CheckedUncRootLength, IsTheSameButNeverZero)
{
    for (auto const &row : unc_cases) {
        std::wstring const text = wide(row.text);
        if (row.expected != 0) {
            EXPECT_EQ(checked_unc_root_length<wchar_t>(text, row.start), row.expected) << row.why;
            continue;
        }
        EXPECT_FAILURE(checked_unc_root_length<wchar_t>(text, row.start),
                       invalid_argument("UNC root path length can not be zero"))
            << row.why;
    }
}

TEST(SkipTwoSeparators, ReturnsTheIndexBehindTheSecondOrTheSize)
{
    std::u16string_view const text = uR"(\\server\share\foo)";
    EXPECT_EQ(skip_two_separators(text, 2), 15U);
    EXPECT_EQ(skip_two_separators(text, 0), 2U);
    EXPECT_EQ(skip_two_separators(text, 1), 9U);
    EXPECT_EQ(skip_two_separators(text, 9), 18U) << "only one left";
    EXPECT_EQ(skip_two_separators(text, 15), 18U) << "none left";
    EXPECT_EQ(skip_two_separators(text, 18), 18U) << "from the end";
    EXPECT_EQ(skip_two_separators<char16_t>(uR"(a\b\)", 0), 4U) << "the second is the last unit";
    EXPECT_EQ(skip_two_separators<char16_t>(u"a/b/c", 0), 5U) << "forward slashes don't count";
    EXPECT_EQ(skip_two_separators<wchar_t>(L"", 0), 0U);
}

} // namespace
} // namespace fl::filesystem::detail
