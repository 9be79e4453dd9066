#include "pathname/growing_pathname.hpp"
#include "pathname/long_prefix.hpp"

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

struct prefix_case
{
    char16_t const *text;
    char16_t const *expected; // null: of a type that can't have a long prefix
};

constexpr prefix_case prefix_cases[] = {
    {uR"(C:\foo)", uR"(\\?\C:\foo)"},
    {uR"(C:\)", uR"(\\?\C:\)"},
    {uR"(\\server\share)", uR"(\\?\UNC\server\share)"},
    {uR"(\\server\share\foo)", uR"(\\?\UNC\server\share\foo)"},
    {uR"(\\?\C:\foo)", uR"(\\?\C:\foo)"},
    {uR"(\\?\UNC\server\share)", uR"(\\?\UNC\server\share)"},
    {u"", nullptr},
    {u"foo", nullptr},
    {uR"(\foo)", nullptr},
    {u"C:", nullptr},
    {u"C:foo", nullptr},
    {uR"(\\server)", nullptr},
    {uR"(\\?\C:foo)", nullptr},
    {uR"(\\?\UNC\server)", nullptr},
    {uR"(\\.\COM1)", nullptr},
};

template <typename Result, typename Char>
void expect_prefixed(std::basic_string_view<Char> text, std::basic_string_view<Char> expected)
{
    EXPECT_EQ(add_long_prefix<Result>(text),
              std::basic_string<Result>(expected.begin(), expected.end()));
}

TEST(AddLongPrefix, Table)
{
    for (auto const &row : prefix_cases) {
        if (row.expected == nullptr)
            continue;
        std::wstring const text = wide(row.text);
        std::wstring const expected = wide(row.expected);
        expect_prefixed<wchar_t, char16_t>(row.text, row.expected);
        expect_prefixed<wchar_t, wchar_t>(text, expected);
        expect_prefixed<char16_t, wchar_t>(text, expected);
    }
}

TEST(AddLongPrefix, RefusesEveryOtherTypeWithOneMessage)
{
    auto const refusal = invalid_argument("Long UNC path without root not permitted");
    for (auto const &row : prefix_cases) {
        if (row.expected != nullptr)
            continue;
        std::wstring const text = wide(row.text);
        std::string const shown = printable(row.text);
        EXPECT_EQ(failure_of([&] { add_long_prefix<wchar_t, char16_t>(row.text); }), refusal)
            << shown;
        EXPECT_EQ(failure_of([&] { add_long_prefix<wchar_t, wchar_t>(text); }), refusal) << shown;
        EXPECT_EQ(failure_of([&] { add_long_prefix<char16_t, wchar_t>(text); }), refusal) << shown;
    }
}

std::wstring stripped(std::wstring text, std::size_t length, std::size_t limit)
{
    std::wstring &result = strip_long_path_prefix(text, length, limit);
    EXPECT_EQ(&result, &text) << "in place";
    return text;
}

std::wstring stripped(std::wstring const &text, std::size_t limit = 259)
{
    return stripped(text, text.size(), limit);
}

TEST(StripLongPathPrefix, DriveAtTheLimit)
{
    for (std::size_t const size : {7U, 262U, 263U})
        EXPECT_EQ(stripped(of_size(LR"(\\?\C:\)", size)), of_size(LR"(C:\)", size - 4)) << size;
    EXPECT_EQ(stripped(of_size(LR"(\\?\C:\)", 264)), of_size(LR"(\\?\C:\)", 264));
}

TEST(StripLongPathPrefix, ServerAtTheLimit)
{
    for (std::size_t const size : {12U, 264U, 265U})
        EXPECT_EQ(stripped(of_size(LR"(\\?\UNC\s\)", size)), of_size(LR"(\\s\)", size - 6)) << size;
    EXPECT_EQ(stripped(of_size(LR"(\\?\UNC\s\)", 266)), of_size(LR"(\\?\UNC\s\)", 266));
}

TEST(StripLongPathPrefix, Shapes)
{
    EXPECT_EQ(stripped(LR"(//?/unc/server/share)"), LR"(\\server/share)") << "either separator";
    EXPECT_EQ(stripped(LR"(\/?\C:\x)"), LR"(C:\x)");
    EXPECT_EQ(stripped(LR"(\\?\)"), L"");
    EXPECT_EQ(stripped(LR"(\\?\UNC\)"), LR"(\\)");
    EXPECT_EQ(stripped(LR"(\\?\UNC)"), L"UNC") << "no server prefix without its last separator";
    EXPECT_EQ(stripped(LR"(\\?\anything)"), L"anything");
    for (wchar_t const *text : {L"", L"C:\\x", L"\\\\server\\share", L"\\\\.\\COM1", L"\\\\?"})
        EXPECT_EQ(stripped(text), text);
}

TEST(StripLongPathPrefix, GoesByTheLengthThatItIsGiven)
{
    EXPECT_EQ(stripped(LR"(\\?\C:\abc)", 8, 259), LR"(C:\a)") << "the rest goes";
    EXPECT_EQ(stripped(LR"(\\?\UNC\server)", 10, 259), LR"(\\se)");
    EXPECT_EQ(stripped(LR"(\\?\UNC\server)", 7, 259), L"UNC")
        << "seven units are no server prefix, whatever follows them";
    EXPECT_EQ(stripped(LR"(\\?\C:\a)", 20, 259), LR"(C:\a)") << "never beyond the text";
    EXPECT_EQ(stripped(LR"(\\?\UNC\s\h)", 20, 5), LR"(\\s\h)") << "whose own size counts then";
    EXPECT_EQ(stripped(LR"(\\?\C:\abc)", 3, 259), LR"(\\?\C:\abc)") << "nor three a prefix";
    EXPECT_EQ(stripped(of_size(LR"(\\?\C:\)", 300), 263, 259), of_size(LR"(C:\)", 259));
}

TEST(StripLongPathPrefix, TakesAnyLimit)
{
    std::wstring const longest = of_size(LR"(\\?\C:\)", 32767);
    EXPECT_EQ(stripped(longest, static_cast<std::size_t>(-1)), longest.substr(4));
    EXPECT_EQ(stripped(LR"(\\?\C:\)", 2), LR"(\\?\C:\)");
    EXPECT_EQ(stripped(LR"(\\?\C:\)", 3), LR"(C:\)");
    EXPECT_EQ(stripped(LR"(\\?\UNC\)", 1), LR"(\\?\UNC\)") << "two backslashes would remain";
}

row_of<std::wstring, std::wstring> const growing_rows[] = {
    {LR"(C:\a)", LR"(\\?\C:\a\b.)", "a drive"},
    {LR"(\\server\share\a)", LR"(\\?\UNC\server\share\a\b.)", "a server gives up two backslashes"},
    {LR"(\\?\C:\a)", LR"(\\?\C:\a\b.)", "it has its prefix, and keeps it"},
    {LR"(\\?\UNC\server\share)", LR"(\\?\UNC\server\share\b.)", "so does a server"},
    {LR"(\\.\pipe)", LR"(\\.\pipe\b.)", "a device takes none"},
};

TEST(GrowingPathname, IsWhatItWasWhenTheNameIsTakenOff)
{
    for (auto const &row : growing_rows) {
        std::wstring path = row.given;
        addition const added = add_name(path, [](std::wstring &grown) {
            grown = make_literal_form<wchar_t, wchar_t>(grown) + L"\\b.";
        });
        EXPECT_EQ(path, row.expected) << row.why;
        take_off(path, added);
        EXPECT_EQ(path, row.given) << row.why;
    }
}

} // namespace
} // namespace fl::filesystem::detail
