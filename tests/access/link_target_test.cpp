#include "access/link_target.hpp"

#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using windows::path_type_enum;

constexpr auto drive = windows::PATH_TYPE_DRIVE_ABSOLUTE;
constexpr auto unc = windows::PATH_TYPE_UNC;
constexpr auto long_drive = windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE;
constexpr auto long_unc = windows::PATH_TYPE_LONG_UNC;
constexpr auto rooted = windows::PATH_TYPE_ROOTED;
constexpr auto relative = windows::PATH_TYPE_RELATIVE;
constexpr auto invalid = windows::PATH_TYPE_INVALID;

struct target_case
{
    wchar_t const *text;
    wchar_t const *expected;
    path_type_enum type;
    char const *why;
};

// All that doesn't ask for a drive's current directory.
constexpr target_case target_cases[] = {
    {LR"(C:\)", LR"(C:\)", drive, "a root"},
    {LR"(C:\\\)", LR"(C:\)", drive, "a root behind a run"},
    {LR"(C:\a\b)", LR"(C:\a\b)", drive, "as it is"},
    {LR"(C:/a)", LR"(C:\a)", drive, "a slash becomes a separator before anybody looks"},
    {LR"(C:\a//b\/c)", LR"(C:\a\b\c)", drive, "runs of either separator"},
    {LR"(C:\a\\)", LR"(C:\a\)", drive, "one stays at the end"},
    {LR"(C:\.\..)", LR"(C:\.\..)", drive, "dots are not its business"},
    {LR"(\\s\h)", LR"(\\s\h)", unc, "server and share"},
    {LR"(\\s\h\\a//)", LR"(\\s\h\a\)", unc, "runs of either separator"},
    {LR"(//s/h)", LR"(//s\h)", unc, "the two ahead stay as they are"},
    {LR"(\\s//h)", LR"(\\s\h)", unc, "runs of either separator"},
    {LR"(\\\h)", LR"(\\\h)", unc, "a server without a name"},
    {LR"(\\\\\h)", LR"(\\\h)", unc, "a server without a name"},
    {LR"(\\..\h)", LR"(\\..\h)", unc, "dots are not its business"},
    {LR"(\\?x\h)", LR"(\\?x\h)", unc, "a server with a mark in its name"},
    {LR"(\\)", L"", invalid, "nothing else"},
    {LR"(\/)", L"", invalid, "nothing else"},
    {LR"(\\s)", L"", invalid, "no share"},
    {LR"(\\s\)", L"", invalid, "no share"},
    {LR"(\\s//)", L"", invalid, "no share"},
    {LR"(\\\)", L"", invalid, "no share"},
    {LR"(\\?)", L"", invalid, "no share"},
    {LR"(\\.)", L"", invalid, "no share"},
    {LR"(\\?\UNC\s\h)", LR"(\\?\UNC\s\h)", long_unc, "server and share"},
    {LR"(\\?\UNC\s//h\\a\)", LR"(\\?\UNC\s\h\a\)", long_unc, "runs of either separator"},
    {LR"(//?/unc/s/h)", LR"(//?/unc/s\h)", long_unc, "the prefix stays as it is"},
    {LR"(\\?\UNC\..\h)", LR"(\\?\UNC\..\h)", long_unc, "dots are not its business"},
    {LR"(\\?\UNC\)", L"", invalid, "nothing else"},
    {LR"(\\?\UNC\s)", L"", invalid, "no share"},
    {LR"(\\?\UNC\s/)", L"", invalid, "no share"},
    {LR"(\\?\UNC\\)", L"", invalid, "no share"},
    {LR"(\\?\C:\)", LR"(\\?\C:\)", long_drive, "a root"},
    {LR"(\\?\C:\a)", LR"(\\?\C:\a)", long_drive, "as it is"},
    {LR"(\\?\C:/a//b)", LR"(\\?\C:\a\b)", long_drive, "runs of either separator"},
    {LR"(//?/C:\\)", LR"(//?/C:\)", long_drive, "the prefix stays as it is"},
    {LR"(\\?\)", L"", invalid, "nothing else"},
    {LR"(\\?\a//b)", LR"(\\?\a\b)", invalid, "no drive, and the text stays"},
    {LR"(\\?\UNC)", LR"(\\?\UNC)", invalid, "no drive, and the text stays"},
    {LR"(\\?\\C:\)", LR"(\\?\\C:\)", invalid, "no drive, and the text stays"},
    {LR"(\\?\1:\a)", LR"(\\?\1:\a)", invalid, "no drive, and the text stays"},
    {LR"(\)", LR"(\)", rooted, "the root"},
    {LR"(\a//b\)", LR"(\a\b\)", rooted, "runs of either separator"},
    {LR"(\\.\COM1)", LR"(\.\COM1)", rooted, "a device is a name behind a run"},
    {LR"(\??\C:\a)", LR"(\??\C:\a)", rooted, "the object manager's names are names"},
    {L"a", L"a", relative, "a name"},
    {L"a//b\\\\", LR"(a\b\)", relative, "runs of either separator"},
    {L"..", L"..", relative, "dots are not its business"},
    {L"/a", LR"(\a)", relative, "by its first unit as it was"},
    {L"1:\\a", LR"(1:\a)", relative, "a digit is no drive"},
    {L"", L"", relative, "nothing"},
};

template <typename Rows>
void expect_normalised(Rows const &rows)
{
    for (auto const &row : rows) {
        std::wstring target = row.text;
        EXPECT_EQ(normalise_link_target(target), row.type) << given_by(row) << ": " << row.why;
        EXPECT_EQ(target, row.expected) << given_by(row) << ": " << row.why;
    }
}

TEST_IN_WORKSPACE(NormaliseLinkTarget, Table)
{
    expect_normalised(target_cases);
}

TEST_IN_WORKSPACE(NormaliseLinkTarget, AsksForTheDrivesDirectory)
{
    std::wstring const letter = wide(work.root().substr(0, 2));
    std::wstring const here = wide(work.root());
    // Wine ends the directory of a drive alone in a backslash
    std::wstring const end = runs_under_wine() ? L"\\" : L"";
    struct
    {
        std::wstring text, expected;
        path_type_enum type;
        char const *why;
    } const cases[] = {
        {letter, here + end, drive, "the directory itself"},
        {letter + L"a", here + LR"(\a)", drive, "below it"},
        {letter + L"a//b\\", here + LR"(\a\b\)", drive, "runs of either separator"},
        {letter + L"..", here + LR"(\..)", drive, "dots are not its business"},
        {LR"(\\?\)" + letter, here + end, long_drive, "the prefix has gone, the type tells of it"},
        {LR"(\\?\)" + letter + L"a/b", here + LR"(\a\b)", long_drive, "the prefix has gone"},
        {LR"(//?/)" + letter + L"a", here + LR"(\a)", long_drive, "the prefix has gone"},
    };
    expect_normalised(cases);
}

TEST_IN_WORKSPACE(NormaliseLinkTarget, AllShortTexts)
{
    for (std::u16string_view const head : {u"", uR"(\\?\)", uR"(\\?\UNC\)", uR"(\\s)"})
        for_all_texts(uR"(\/:.?Ca)", 5, [&](std::u16string const &tail) {
            std::wstring const text = wide(std::u16string(head) + tail);
            if (text.find(L':') != std::wstring::npos && head != uR"(\\s)" &&
                head != uR"(\\?\UNC\)")
                return; // drives ask the process, see above
            std::wstring target = text;
            path_type_enum const type = normalise_link_target(target);
            ASSERT_LE(target.size(), text.size()) << printable(units(text));
            ASSERT_EQ(target.find(L'/', 8), std::wstring::npos) << printable(units(text));
            ASSERT_EQ(target.find(LR"(\\)", 8),
                      type == long_unc ? target.find(LR"(\\)", 8) : std::wstring::npos)
                << printable(units(text));
            std::wstring again = target;
            path_type_enum const type_again = normalise_link_target(again);
            if (type == unc || type == long_unc || type == rooted) {
                ASSERT_EQ(type_again, type) << printable(units(text));
                ASSERT_EQ(again, target) << "once is enough: " << printable(units(text));
            }
        });
}

constexpr text_row<wchar_t> trailing_cases[] = {
    {LR"(C:\a\)", LR"(C:\a)", "behind a name"},
    {LR"(C:\a\\)", LR"(C:\a\)", "one only"},
    {LR"(C:\a)", LR"(C:\a)", "there is none"},
    {LR"(C:\)", LR"(C:\)", "a root"},
    {L"C:", L"C:", "there is none"},
    {LR"(\)", LR"(\)", "a root"},
    {LR"(\a\)", LR"(\a)", "behind a name"},
    {LR"(\\s\h\)", LR"(\\s\h\)", "a root"},
    {LR"(\\s\h\a\)", LR"(\\s\h\a)", "behind a name"},
    {LR"(\\s\)", LR"(\\s\)", "as far as there is a root"},
    {LR"(\\?\C:\)", LR"(\\?\C:\)", "a root"},
    {LR"(\\?\C:\a\)", LR"(\\?\C:\a)", "behind a name"},
    {LR"(\\?\C:\\)", LR"(\\?\C:\)", "one only"},
    {LR"(\\?\UNC\s\h\)", LR"(\\?\UNC\s\h\)", "a root"},
    {LR"(\\?\UNC\s\h\a\)", LR"(\\?\UNC\s\h\a)", "behind a name"},
    {LR"(a\)", L"a", "behind a name"},
    {L"a/", L"a/", "a slash is no separator here"},
    {L"", L"", "nothing"},
};

TEST(WithoutTrailingSeparator, Table)
{
    expect_rows(trailing_cases, [](auto text) { return without_trailing_separator(text); });
}

} // namespace
} // namespace fl::filesystem::detail
