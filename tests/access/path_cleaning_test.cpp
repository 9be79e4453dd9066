#include "access/path_cleaning.hpp"

#include "access/working_directory.hpp"
#include "pathname/expanded_path.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using windows::path_type_enum;

constexpr auto relative = windows::PATH_TYPE_RELATIVE;
constexpr auto rooted = windows::PATH_TYPE_ROOTED;
constexpr auto long_drive = windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE;
constexpr auto long_drive_relative = windows::PATH_TYPE_LONG_DRIVE_RELATIVE;
constexpr auto long_unc = windows::PATH_TYPE_LONG_UNC;
constexpr auto invalid = windows::PATH_TYPE_INVALID;
constexpr auto device = windows::PATH_TYPE_DEVICE;

struct cleaning_case
{
    wchar_t const *path;
    wchar_t const *base;
    wchar_t const *expected; // null: rejected
    path_type_enum type;     // afterwards
    char const *why;
};

// All that doesn't depend on where the process stands.
constexpr cleaning_case cleaning_cases[] = {
    {LR"(\\?\C:\x)", L"", LR"(\\?\C:\x)", long_drive, "as it stands"},
    {LR"(\\?\C:\)", L"", LR"(\\?\C:\)", long_drive, "as it stands"},
    {LR"(\\?\c:\a\..\.\\b\)", L"", LR"(\\?\c:\a\..\.\\b\)", long_drive, "no element is looked at"},
    {LR"(//?/C:\x)", L"", LR"(//?/C:\x)", long_drive, "a prefix of other separators stays, too"},
    {LR"(\\?\UNC\s\h\x)", L"", LR"(\\?\UNC\s\h\x)", long_unc, "as it stands"},
    {LR"(\\?\unc\s\h)", L"", LR"(\\?\unc\s\h)", long_unc, "as it stands"},
    {LR"(C:\x)", L"", LR"(\\?\C:\x)", long_drive, "a drive gets the prefix"},
    {LR"(C:\)", L"", LR"(\\?\C:\)", long_drive, "its root, too"},
    {LR"(C:\a\..\.\b\\)", L"", LR"(\\?\C:\a\..\.\b\\)", long_drive, "the elements stay"},
    {LR"(\\server\share\x)", L"", LR"(\\?\UNC\server\share\x)", long_unc, "two units go"},
    {LR"(\\server\share)", L"", LR"(\\?\UNC\server\share)", long_unc, "and no separator comes"},
    {LR"(\\\share)", L"", LR"(\\?\UNC\\share)", long_unc, "a server without a name is one"},
    {LR"(//server\share\x)", L"", LR"(\\?\UNC\server\share\x)", long_unc, "whichever two"},

    {LR"(\\)", L"", nullptr, invalid, "no server"},
    {LR"(\\server)", L"", nullptr, invalid, "no share"},
    {LR"(\\server\)", L"", nullptr, invalid, "no share"},
    {LR"(\\server\..)", L"", nullptr, invalid, "that is no share"},
    {LR"(\\..\share)", L"", nullptr, invalid, "that is no server"},
    {LR"(\\?\)", L"", nullptr, invalid, "nothing behind the prefix"},
    {LR"(\\?\foo)", L"", nullptr, invalid, "no drive"},
    {LR"(\\?\UNC\)", L"", nullptr, invalid, "no server"},
    {LR"(\\?\UNC\server)", L"", nullptr, invalid, "no share"},
    {LR"(\\?\C:)", L"", nullptr, long_drive_relative, "behind the prefix nothing is expanded"},
    {LR"(\\?\C:foo)", L"", nullptr, long_drive_relative, "behind the prefix nothing is expanded"},
    {LR"(\\.\COM1)", L"", nullptr, device, "a device"},
    {LR"(\\.\)", L"", nullptr, device, "a device without a name"},
    {LR"(\\server)", LR"(C:\base)", nullptr, invalid, "the base is for relative ones"},

    {L"foo", LR"(C:\a)", LR"(\\?\C:\a\foo)", long_drive, "below the base"},
    {L"foo", LR"(C:\a\)", LR"(\\?\C:\a\foo)", long_drive, "with one separator"},
    {L"foo", LR"(C:\)", LR"(\\?\C:\foo)", long_drive, "with one separator"},
    {LR"(..\foo)", LR"(C:\a)", LR"(\\?\C:\a\..\foo)", long_drive, "the elements stay"},
    {LR"(a\\.\)", LR"(C:\a)", LR"(\\?\C:\a\a\\.\)", long_drive, "the elements stay"},
    {L"", LR"(C:\a)", LR"(\\?\C:\a\)", long_drive, "nothing, below the base"},
    {L"/foo", LR"(C:\a)", LR"(\\?\C:\a\/foo)", long_drive, "a slash is no root"},
    {L"1:\\", LR"(C:\a)", LR"(\\?\C:\a\1:\)", long_drive, "a digit is no drive"},
    {L"foo", LR"(\\?\C:\a)", LR"(\\?\C:\a\foo)", long_drive, "a long base stays"},
    {L"foo", LR"(\\?\C:\)", LR"(\\?\C:\foo)", long_drive, "a long base stays"},
    {L"foo", LR"(\\?\UNC\s\h)", LR"(\\?\UNC\s\h\foo)", long_unc, "a long base stays"},
    {L"foo", LR"(\\?\UNC\s\h\)", LR"(\\?\UNC\s\h\foo)", long_unc, "a long base stays"},
    {L"foo", LR"(\\s\h)", LR"(\\?\UNC\s\h\foo)", long_unc, "below a share"},
    {L"foo", LR"(\\s\h\a\)", LR"(\\?\UNC\s\h\a\foo)", long_unc, "below a share"},
    {L"foo", LR"(C:\a\..\.)", LR"(\\?\C:\a\..\.\foo)", long_drive, "the base's elements stay"},

    // the exception names the path and not the base
    {L"foo", L"base", nullptr, relative, "a base that is relative itself"},
    {L"foo", LR"(\base)", nullptr, rooted, "a base on the current drive"},
    {L"foo", LR"(\\s)", nullptr, invalid, "a base without a share"},
    {L"foo", LR"(\\?\C:a)", nullptr, long_drive_relative, "a base that the prefix cuts off"},
    {L"foo", LR"(\\?\UNC\s)", nullptr, invalid, "a base without a share"},
    {L"foo", LR"(\\.\COM1)", nullptr, device, "a device as base"},
    {L"", LR"(\base)", nullptr, rooted, "there is no pathname to name"},
};

TEST_IN_WORKSPACE(CleanPathname, Table)
{
    for (auto const &row : cleaning_cases) {
        auto type = static_cast<path_type_enum>(0xFFFF);
        std::wstring cleaned;
        auto const thrown = failure_of([&] { cleaned = clean_pathname(row.path, type, row.base); });
        std::string const shown =
            printable(units(row.path)) + " below " + printable(units(row.base)) + ": " + row.why;
        EXPECT_EQ(type, row.type) << shown;
        if (row.expected != nullptr)
            EXPECT_EQ(thrown, std::nullopt) << shown;
        else
            EXPECT_EQ(thrown, bad_path_type(units(row.path))) << shown;
        EXPECT_EQ(cleaned, row.expected == nullptr ? L"" : row.expected) << shown;
    }
}

TEST_IN_WORKSPACE(CleanPathname, ShowsARejectedPathnameInBraces)
{
    path_type_enum type{};
    EXPECT_EQ(failure_of([&] { clean_pathname(LR"(\\.\COM1)", type, {}); })->what,
              R"(fl:filesystem:InvalidArgument: The path type of the given path is not valid: )"
              R"({\\.\COM1})");
}

/// What a text that doesn't lean on the process becomes, by its type.
std::optional<std::wstring> by_type(std::wstring const &text, std::wstring const &base)
{
    switch (classify_path_type<wchar_t>(text)) {
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
    case windows::PATH_TYPE_LONG_UNC:
        return text;
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return LR"(\\?\)" + text;
    case windows::PATH_TYPE_UNC:
        return LR"(\\?\UNC\)" + text.substr(2);
    case windows::PATH_TYPE_DRIVE_RELATIVE:
        return LR"(\\?\)" + expand_drive_relative(text);
    case windows::PATH_TYPE_RELATIVE:
        return base + L'\\' + text;
    default:
        return std::nullopt;
    }
}

TEST_IN_WORKSPACE(CleanPathname, AllShortTexts)
{
    for (std::u16string_view const head : {u"", uR"(\\?\)", uR"(\\?\UNC)", uR"(\\s)"})
        for_all_texts(uR"(\/:.?Ca)", head.empty() ? 5 : 4, [&](std::u16string const &tail) {
            std::wstring const text = wide(std::u16string(head) + tail);
            if (classify_path_type<wchar_t>(text) == windows::PATH_TYPE_ROOTED)
                return;
            path_type_enum type{};
            std::wstring cleaned;
            auto const thrown =
                failure_of([&] { cleaned = clean_pathname(text, type, LR"(\\?\C:\b)"); });
            auto const expected = by_type(text, LR"(\\?\C:\b)");
            ASSERT_EQ(thrown.has_value(), !expected) << printable(units(text));
            if (!expected) {
                ASSERT_EQ(*thrown, bad_path_type(units(text)));
                return;
            }
            ASSERT_EQ(cleaned, *expected) << printable(units(text));
            ASSERT_EQ(type, expected->starts_with(LR"(\\?\UNC\)") ||
                                    classify_path_type<wchar_t>(*expected) == long_unc
                                ? long_unc
                                : long_drive)
                << printable(units(text));
        });
}

TEST_IN_WORKSPACE(CleanPathname, BelowTheCurrentDirectory)
{
    std::wstring const here = LR"(\\?\)" + wide(work.root());
    path_type_enum type{};
    EXPECT_EQ(clean_pathname(L"foo", type, {}), here + LR"(\foo)");
    EXPECT_EQ(type, long_drive);
    EXPECT_EQ(clean_pathname(LR"(..\foo\.)", type, {}), here + LR"(\..\foo\.)");
    EXPECT_EQ(clean_pathname(L"", type, {}), here + L'\\');
    work.change_directory(work.root().substr(0, 3));
    EXPECT_EQ(clean_pathname(L"foo", type, {}), here.substr(0, 7) + L"foo")
        << "no doubled separator behind a root";
}

TEST_IN_WORKSPACE(CleanPathname, BelowACurrentDirectoryOnAShare)
{
    NEEDS(work.has_share(), "this system has no share");
    work.change_directory(work.share_root());
    path_type_enum type{};
    EXPECT_EQ(clean_pathname(L"foo", type, {}),
              LR"(\\?\UNC)" + wide(work.share_root().substr(1)) + LR"(\foo)");
    EXPECT_EQ(type, long_unc);
}

TEST_IN_WORKSPACE(CleanPathname, OfADriveWithoutARootAsksForItsDirectory)
{
    std::wstring const drive = wide(work.root().substr(0, 2));
    std::wstring const here = LR"(\\?\)" + wide(work.root());
    path_type_enum type{};
    EXPECT_EQ(clean_pathname(drive + L"foo", type, {}), here + LR"(\foo)");
    EXPECT_EQ(type, long_drive);
    EXPECT_EQ(clean_pathname(drive + LR"(..\.\foo\)", type, {}), here + LR"(\..\.\foo\)");
    EXPECT_EQ(clean_pathname(L"foo", type, drive), here + LR"(\foo)") << "as a base";
    EXPECT_EQ(type, long_drive);
    EXPECT_EQ(clean_pathname(L"foo", type, drive + L"b\\"), here + LR"(\b\foo)") << "as a base";
    EXPECT_EQ(clean_pathname(L"foo", type, drive + L"b"), here + LR"(\b\foo)") << "as a base";
    work.change_directory(work.root().substr(0, 3));
    EXPECT_EQ(clean_pathname(drive + L"foo", type, {}), LR"(\\?\)" + drive + LR"(\foo)");
    EXPECT_EQ(clean_pathname(drive, type, {}), LR"(\\?\)" + drive + L'\\');
    EXPECT_EQ(clean_pathname(L"foo", type, drive), LR"(\\?\)" + drive + LR"(\foo)")
        << "and that ends in a separator now";
}

TEST_IN_WORKSPACE(CleanPathname, OfARootedPathname)
{
    std::wstring const drive = LR"(\\?\)" + wide(work.root().substr(0, 2));
    path_type_enum type{};
    EXPECT_EQ(clean_pathname(LR"(\foo)", type, {}), drive + LR"(\foo)");
    EXPECT_EQ(type, long_drive);
    EXPECT_EQ(clean_pathname(LR"(\)", type, LR"(D:\base)"), drive + L'\\') << "no base counts";
    EXPECT_EQ(clean_pathname(LR"(\a\..\foo)", type, {}), drive + LR"(\foo)")
        << "the system does it all at once";
}

TEST_IN_WORKSPACE(CleanPathname, OfARootedPathnameOnAShare)
{
    NEEDS(work.has_share(), "this system has no share");
    work.change_directory(work.share_root());
    path_type_enum type{};
    EXPECT_EQ(clean_pathname(LR"(\foo)", type, {}), LR"(\\?\UNC\fl-server\share\foo)");
    EXPECT_EQ(type, long_unc);
}

TEST_IN_WORKSPACE(CurrentPathWide, IsWhereTheProcessStands)
{
    EXPECT_EQ(current_path_wide(), wide(work.root()));
}

// has_parent_component, step by step: the search for two full stops
bool searched_parent_component(std::wstring const &text, std::size_t length)
{
    std::wstring const copy = text.substr(0, length);
    for (std::size_t i = copy.find(L".."); i != std::wstring::npos; i = copy.find(L"..", i + 1)) {
        if (i == 0) {
            if (length == 2 || copy[2] == L'\\')
                return true;
        } else if (i + 2 == length) {
            return copy[i - 1] == L'\\';
        } else if (copy[i - 1] == L'\\' && copy[i + 2] == L'\\') {
            return true;
        }
    }
    return false;
}

TEST(HasParentComponent, Table)
{
    constexpr answer_row<wchar_t> cases[] = {
        {LR"(a\..\b)", true, "between separators"},
        {L"..", true, "all there is"},
        {LR"(..\a)", true, "at the beginning"},
        {LR"(a\..)", true, "at the end"},
        {LR"(\..\)", true, "between separators"},
        {L"a..b", false, "within a name"},
        {L"..a", false, "a name that begins so"},
        {L"a..", false, "a name that ends so"},
        {L"...", false, "three are a name"},
        {LR"(...\..)", true, "behind a name of full stops"},
        {LR"(a\...\b)", false, "a name of full stops"},
        {LR"(a\.\b)", false, "one is the directory itself"},
        {L"a/../b", false, "a slash is no separator here"},
        {L"../a", false, "a slash is no separator here"},
        {L"", false, "nothing"},
        {L".", false, "one"},
    };
    expect_rows(cases, [](auto text) { return has_parent_component(text); });
}

TEST(HasParentComponent, AllShortTexts)
{
    for_all_texts(uR"(\/:.?Ca)", 6, [](std::u16string const &text) {
        std::wstring const whole = wide(text);
        ASSERT_EQ(has_parent_component(whole), searched_parent_component(whole, whole.size()))
            << printable(text);
    });
    for_all_texts(uR"(\.a)", 10, [](std::u16string const &text) {
        std::wstring const whole = wide(text);
        ASSERT_EQ(has_parent_component(whole), searched_parent_component(whole, whole.size()))
            << printable(text);
    });
}

// is_path_clean, step by step; the whole text is searched in step 4
bool stepped_path_clean(std::wstring const &text, std::size_t n)
{
    auto const is = [&](std::size_t at, wchar_t unit) { return text[at] == unit; };
    if (n == 0)
        return true;
    if (is(0, L'.')) {
        if (n == 1)
            return false;
        if (n == 2 && (is(1, L'.') || is(1, L'\\')))
            return false;
        if (n >= 3 && (is(1, L'\\') || (is(1, L'.') && is(2, L'\\'))))
            return false;
    }
    if (is(n - 1, L'.')) {
        if (n < 3)
            return true;
        if (is(n - 2, L'\\'))
            return false;
        if (n < 4)
            return true;
        if (is(n - 2, L'.') && is(n - 3, L'\\'))
            return false;
    } else if (n < 4) {
        return true;
    }
    for (wchar_t const *piece : {LR"(\.\)", LR"(\..\)", LR"(\\)"})
        if (text.find(piece) != std::wstring::npos)
            return false;
    return true;
}

struct clean_case
{
    wchar_t const *text;
    std::size_t length;
    bool expected;
    char const *why;
};

constexpr clean_case clean_cases[] = {
    {LR"(a\b)", 3, true, "two names"},
    {LR"(a\b\c.d)", 7, true, "three names"},
    {L"", 0, true, "nothing"},
    {L".", 1, false, "the directory itself"},
    {L"..", 2, false, "the one above"},
    {LR"(.\)", 2, false, "the directory itself"},
    {LR"(.\a)", 3, false, "at the beginning"},
    {LR"(..\)", 3, false, "at the beginning"},
    {LR"(..\a)", 4, false, "at the beginning"},
    {LR"(a\.)", 3, false, "at the end"},
    {LR"(a\..)", 4, false, "at the end"},
    {LR"(a\.\b)", 5, false, "in the middle"},
    {LR"(a\..\b)", 6, false, "in the middle"},
    {LR"(a\\b)", 4, false, "a name that is empty"},
    {LR"(a\\)", 3, true, "three units are too few to be looked into"},
    {LR"(ab\\)", 4, false, "four are not"},
    {LR"(\\ab)", 4, false, "two separators ahead"},
    {LR"(\\a)", 3, true, "three units are too few to be looked into"},
    {LR"(\.)", 2, true, "two units are too few to be looked at"},
    {LR"(\..)", 3, true, "three units are too few for this end"},
    {LR"(a\b\)", 4, true, "a separator at the end"},
    {L"...", 3, true, "a name"},
    {L".a", 2, true, "a name"},
    {L"..a", 3, true, "a name"},
    {L"a.", 2, true, "a name"},
    {L"a..", 3, true, "a name"},
    {L"ab..", 4, true, "a name"},
    {L"a/../b", 6, true, "a slash is no separator here"},
    {L"a//b", 4, true, "a slash is no separator here"},
    {LR"(abcd\..\x)", 4, false, "what stands behind the length is looked into"},
    {LR"(abcd\..)", 4, true, "but its end is not"},
    {LR"(abc\..\x)", 3, true, "unless there are only three units"},
    {LR"(ab\..\x)", 5, false, "the length ends in the element"},
    {LR"(ab\..x)", 5, false, "which the length makes one"},
};

TEST(IsPathClean, Table)
{
    for (auto const &row : clean_cases)
        EXPECT_EQ(is_path_clean(row.text, row.length), row.expected) << row.why;
}

TEST(IsPathClean, AllShortTexts)
{
    for_all_texts(uR"(\/:.?Ca)", 5, [](std::u16string const &text) {
        std::wstring const whole = wide(text);
        for (std::size_t length = 0; length <= whole.size(); ++length)
            ASSERT_EQ(is_path_clean(whole, length), stepped_path_clean(whole, length))
                << printable(text) << ", " << length;
    });
    for_all_texts(uR"(\.a)", 8, [](std::u16string const &text) {
        std::wstring const whole = wide(text);
        for (std::size_t length = 0; length <= whole.size(); ++length)
            ASSERT_EQ(is_path_clean(whole, length), stepped_path_clean(whole, length))
                << printable(text) << ", " << length;
    });
}

TEST(IsPathClean, NeverLooksBehindTheText)
{
    for (wchar_t const *text : {L"", L".", L"..", L"a", LR"(ab\..)", LR"(a\b)"}) {
        std::wstring const whole = text;
        EXPECT_EQ(is_path_clean(whole, 400), is_path_clean(whole, whole.size()))
            << printable(units(whole));
    }
}

// remove_dot_components, step by step
std::wstring stepped_removal(std::wstring const &text, std::size_t start)
{
    if (text.size() == start)
        return text;
    std::wstring output = text.substr(0, start);
    std::size_t from = start;
    for (std::size_t end; (end = text.find(L'\\', from)) != std::wstring::npos; from = end + 1)
        if (end - from != 1 || text[from] != L'.')
            output.append(text, from, end + 1 - from);
    std::wstring const last = text.substr(from);
    if (last == L"." && output.size() == start)
        return output;
    if (last != L".")
        output += last;
    if (!output.empty() && output.back() == L'\\')
        output.resize(output.size() - 1);
    return output;
}

constexpr row_of_two<wchar_t const *, path_type_enum, wchar_t const *> dot_cases[] = {
    {LR"(\\?\C:\)", long_drive, LR"(\\?\C:\)", "a root stays"},
    {LR"(\\?\C:\a)", long_drive, LR"(\\?\C:\a)", "nothing to do"},
    {LR"(\\?\C:\a\.\b\)", long_drive, LR"(\\?\C:\a\b)", "one within, and the separator at the end"},
    {LR"(\\?\C:\.\a)", long_drive, LR"(\\?\C:\a)", "the first element"},
    {LR"(\\?\C:\a\.)", long_drive, LR"(\\?\C:\a)", "the last element"},
    {LR"(\\?\C:\a\.\.\.)", long_drive, LR"(\\?\C:\a)", "several"},
    {LR"(\\?\C:\.)", long_drive, LR"(\\?\C:\)", "of the root, which keeps its separator"},
    {LR"(\\?\C:\.\.)", long_drive, LR"(\\?\C:\)", "of the root, which keeps its separator"},
    {LR"(\\?\C:\.\)", long_drive, LR"(\\?\C:)", "here the rule for the end meets the root"},
    {LR"(\\?\C:\.\.\)", long_drive, LR"(\\?\C:)", "here the rule for the end meets the root"},
    {LR"(\\?\C:\a\\b)", long_drive, LR"(\\?\C:\a\\b)", "a doubled separator stays"},
    {LR"(\\?\C:\a\\)", long_drive, LR"(\\?\C:\a\)", "but one goes at the end"},
    {LR"(\\?\C:\\)", long_drive, LR"(\\?\C:\)", "but one goes at the end"},
    {LR"(\\?\C:\a\..\b)", long_drive, LR"(\\?\C:\a\..\b)", "two full stops are not its business"},
    {LR"(\\?\C:\.a\b.\c.d)", long_drive, LR"(\\?\C:\.a\b.\c.d)", "names with full stops"},
    {LR"(\\?\C:\a/./b)", long_drive, LR"(\\?\C:\a/./b)", "a slash is no separator here"},
    {LR"(\\?\UNC\s\h)", long_unc, LR"(\\?\UNC\s\h)", "a share stays"},
    {LR"(\\?\UNC\s\h\)", long_unc, LR"(\\?\UNC\s\h\)", "its root, too"},
    {LR"(\\?\UNC\s\h\.)", long_unc, LR"(\\?\UNC\s\h\)", "of the root"},
    {LR"(\\?\UNC\s\h\.\)", long_unc, LR"(\\?\UNC\s\h)", "here the rule for the end meets the root"},
    {LR"(\\?\UNC\s\h\a\.\b\)", long_unc, LR"(\\?\UNC\s\h\a\b)", "one within"},
    {LR"(\\?\UNC\s\.h\.)", long_unc, LR"(\\?\UNC\s\.h\)", "the share is part of the root"},
};

TEST(RemoveDotComponents, Table)
{
    expect_rows(dot_cases, [](std::wstring const &path, path_type_enum type) {
        return remove_dot_components(path, type);
    });
}

TEST(RemoveDotComponents, AllShortTexts)
{
    for_all_texts(uR"(\/.a)", 7, [](std::u16string const &tail) {
        std::wstring const drive = LR"(\\?\C:\)" + wide(tail);
        ASSERT_EQ(remove_dot_components(drive, long_drive), stepped_removal(drive, 7))
            << printable(tail);
        std::wstring const share = LR"(\\?\UNC\s\h\)" + wide(tail);
        ASSERT_EQ(remove_dot_components(share, long_unc), stepped_removal(share, 12))
            << printable(tail);
    });
}

TEST(RemoveDotComponents, OfAServerWithoutAShare)
{
    auto const refusal = invalid_argument("UNC root path length can not be zero");
    for (wchar_t const *text :
         {LR"(\\?\UNC\s)", LR"(\\?\UNC\s\)", LR"(\\?\UNC\..\h)", LR"(\\?\UNC\s\.\a)"})
        EXPECT_FAILURE(remove_dot_components(text, long_unc), refusal) << printable(units(text));
    EXPECT_FAILURE(remove_dot_components(LR"(\\?\C:\foo)", rooted), refusal)
        << "any type but the one for drives means a server";
}

TEST_IN_WORKSPACE(ExpandDriveRelative, KeepsWhatIsBehindTheDrive)
{
    std::wstring const drive = wide(work.root().substr(0, 2));
    // Wine ends the directory of a drive alone in a backslash
    std::wstring const end = runs_under_wine() ? L"\\" : L"";
    EXPECT_EQ(expand_drive_relative(drive), wide(work.root()) + end);
    EXPECT_EQ(expand_drive_relative(drive + L"foo"), wide(work.root()) + LR"(\foo)");
    EXPECT_EQ(expand_drive_relative(drive + LR"(..\a/./\b\)"),
              wide(work.root()) + LR"(\..\a/./\b\)");
    work.change_directory(work.root().substr(0, 3));
    EXPECT_EQ(expand_drive_relative(drive), drive + L'\\');
    EXPECT_EQ(expand_drive_relative(drive + L"foo"), drive + LR"(\foo)");
}

} // namespace
} // namespace fl::filesystem::detail
