#include "pathname/native_form.hpp"

#include "pathname/native_path.hpp"

#include <gtest/gtest.h>

namespace fl::filesystem::detail {
namespace {

struct collapse_case
{
    char16_t const *text;
    std::size_t end, start, keep;
    char16_t const *expected;
    char const *why;
};

constexpr collapse_case collapse_cases[] = {
    {u"a//b\\/c", 7, 0, 0, uR"(a\b\c)", "runs of either kind become one backslash"},
    {u"//a", 3, 0, 0, uR"(\a)", "a run at the front, too"},
    {u"a//", 3, 0, 0, u"a\\", "and at the end"},
    {u"//a//b", 6, 0, 2, uR"(//a\b)", "kept units stay as they are"},
    {u"///a", 4, 0, 2, u"//\\a", "a separator behind them is written all the same"},
    {u"xx//a//b", 8, 2, 2, uR"(//a\b)", "from the start index"},
    {u"a//b//c", 4, 0, 0, uR"(a\b)", "up to the end index"},
    {u"abc", 3, 3, 0, u"", "nothing"},
    {u"//", 2, 0, 2, u"//", "only kept units"},
};

TEST(CollapseSeparatorsFrom, Table)
{
    for (auto const &row : collapse_cases) {
        std::u16string_view const text(row.text, row.end);
        EXPECT_EQ(collapse_separators_from(text, row.start, row.keep), row.expected) << row.why;
        std::wstring const owned(text.begin(), text.end());
        std::u16string_view const expected = row.expected;
        EXPECT_EQ(collapse_separators_from<wchar_t>(owned, row.start, row.keep),
                  std::wstring(expected.begin(), expected.end()))
            << row.why;
    }
}

// Most names have it as they stand, and a hostile disk tells others.
TEST(AssignNativeForm, IsThatOfAPath)
{
    for (char16_t const *text : {uR"(C:\a\b)", uR"(C:\a\b\)", u"C:/a//b", u"", u"a  "}) {
        upath path(u"was");
        assign_native_form(path, text);
        EXPECT_EQ(path, upath(std::u16string(text)));
    }
}

} // namespace
} // namespace fl::filesystem::detail
