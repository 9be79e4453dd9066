#include <fl/filesystem/pathname.hpp>

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr text_row<char16_t> native_cases[] = {
    {u"", u"", "nothing stays nothing"},
    {u"   ", u"   ", "a text of blanks is kept whole"},
    {u"foo  ", u"foo", "trailing blanks go"},
    {uR"(foo\  )", uR"(foo\  )", "unless they are a name behind a separator"},
    {uR"(foo/  )", uR"(foo\  )", "of either kind"},
    {u"\\  ", u"\\  ", "also at the root"},
    {u"foo/", u"foo", "a trailing separator goes"},
    {u"a\\", u"a", "behind a single unit, too"},
    {u"foo//bar", uR"(foo\bar)", "doubled separators become one"},
    {u"foo\\\\\\bar\\\\", uR"(foo\bar)", "any number of them"},
    {u"foo. ", u"foo.", "full stops are kept"},
    {uR"(C:\x.)", uR"(C:\x.)", "for the system to drop"},
    {uR"(.\foo)", uR"(.\foo)", "dots are not resolved"},
    {u"..", u"..", "dots are not resolved"},
    {u"  foo", u"  foo", "leading blanks are part of a relative name"},
    {uR"(  \foo)", uR"(  \foo)", "and of a rooted one"},
    {uR"(  C:\foo\)", uR"(  C:\foo)", "and stay ahead of a drive"},
    {uR"(  \\server\share)", uR"(\\server\share)", "but not ahead of a server"},
    {uR"(  \\?\C:\foo)", uR"(C:\foo)", "nor ahead of a long prefix"},
    {uR"(  \\?\UNC\server\share)", uR"(\\server\share)", "nor ahead of a long server prefix"},
    {uR"(  \\.\COM1)", uR"(\\.\COM1)", "nor ahead of a device"},
    {u"\t\v\\\\server\\share", uR"(\\server\share)", "tabs are white space ahead of a prefix"},
    {u"foo\t", u"foo\t", "but only blanks are trimmed behind a name"},
    {u"foo", u"foo", "native already"},
    {u"C:/foo//bar/", uR"(C:\foo\bar)", "all of it at once"},
    {u"/", u"\\", "a root keeps its separator"},
    {u" /", u" \\", "behind a blank, too"},
    {u" C:/", u" C:\\", "and that of a drive"},
    {uR"(  C:\)", u"  C:", "but not behind two: the root is three units from the start"},
    {u"//", u"\\\\", "two are the start of a server"},
    {u"C:", u"C:", "a drive"},
    {u"C:/", uR"(C:\)", "a drive's root keeps its separator"},
    {u"C:\\\\\\", uR"(C:\)", "one of them"},
    {uR"(C:\foo\)", uR"(C:\foo)", "the usual form"},
    {u"C:a\\", u"C:a\\", "one unit behind a drive keeps its backslash"},
    {uR"(C:ab\)", u"C:ab", "two units lose it"},
    {uR"(C:\a\)", uR"(C:\a)", "the root is three units"},
    {uR"(1:\)", u"1:", "a digit is no drive"},
    {u"//server//share//foo/", uR"(\\server\share\foo)", "a server with forward slashes"},
    {uR"(\\server\share\)", uR"(\\server\share\)", "a share may keep its backslash"},
    {uR"(\\server\)", uR"(\\server\)", "and a server, too"},
    {uR"(\\server\share\foo\)", uR"(\\server\share\foo)", "a name behind them may not"},
    {u"\\\\server\\\\\\share", uR"(\\server\share)", "doubled behind a server"},
    {u"\\\\\\server", u"\\\\\\server", "a third separator begins the server's name"},
    {uR"(\\\server\share\)", uR"(\\\server\share)", "and ends the empty server's"},
    {uR"(\\?\C:\foo\)", uR"(C:\foo)", "a long prefix is dropped"},
    {uR"(\\?\C:\)", uR"(C:\)", "a root behind it keeps its backslash"},
    {uR"(\\?\C:)", u"C:", "a bare drive"},
    {uR"(\\?\foo\)", u"foo", "any name behind it"},
    {uR"(\\?\a\)", u"a", "of one unit, too"},
    {uR"(\\?\C:\foo)", uR"(C:\foo)", "the usual long form"},
    {uR"(\\?\UNC\server\share)", uR"(\\server\share)", "the usual long form of a share"},
    {uR"(\\?\UNC\?\C:\foo)", uR"(\\?\C:\foo)", "made once: what stood behind it stays"},
    {u"\\\\?\\\\foo\\", uR"(\foo)", "a rooted name behind it"},
    {u"\\\\?\\\\", u"\\", "a bare root behind it"},
    {uR"(\\?\)", u"", "a prefix alone is nothing"},
    {uR"(\\?\UNC\)", u"", "nor is a server prefix"},
    {uR"( \\?\)", u"", "nor behind white space"},
    {uR"(  \\?\UNC\)", u"\\\\", "white space counts to the length of eight, so two remain"},
    {uR"(\\?\UNC\server\share\foo\)", uR"(\\server\share\foo)", "a long server pathname"},
    {uR"(\\?\UNC\server\share\)", uR"(\\server\share\)", "whose share may keep its backslash"},
    {uR"(\\?\unc\server)", uR"(\\server)", "in any case"},
    {u"//?/unc/server/share", uR"(\\server\share)", "with either separator"},
    {u"\\\\?\\UNC\\\\server", u"\\\\\\server", "a doubled separator behind the prefix stays"},
    {u"//?/C:/foo", uR"(C:\foo)", "a long prefix in forward slashes"},
    {uR"(\\.\)", u"", "a device prefix alone is nothing"},
    {uR"(  \\.\)", uR"(\\.\)", "but white space counts to its length of four"},
    {uR"(\\.\\)", uR"(\\.\\)", "one unit behind the prefix stays"},
    {uR"(\\.\COM1)", uR"(\\.\COM1)", "a device"},
    {u"//./COM1", uR"(\\.\COM1)", "in forward slashes"},
    {uR"(\\.\a\)", uR"(\\.\a)", "two units behind the prefix lose the backslash"},
    {u"\\\\.\\a\\\\", u"\\\\.\\a\\", "but keep it where separators were doubled"},
    {uR"(\\.\ab\)", uR"(\\.\ab)", "a trailing backslash goes"},
    {u"\\\\.\\a\\\\b\\", u"\\\\.\\a\\b\\", "and stays where any were doubled"},
    {uR"(  \\.\ab\)", u"\\\\.\\ab\\", "and where white space stood ahead"},
    {uR"(\??\C:\foo)", uR"(\??\C:\foo)", "the object manager's prefix is a rooted name"},
    {u"foo \\ ", u"foo \\ ", "one blank inside the name, the other behind a separator"},
    {uR"(\\?\C:a\)", u"C:a\\", "a drive-relative name behind a long prefix"},
    {u"\t ", u"\t", "white space that isn't blank is a name"},
    {u"~\\x", u"~\\x", "a tilde is an ordinary character"},
};

TEST(MakeNativeForm, Table)
{
    expect_rows(native_cases, [](auto text) { return make_native_form(text, true); });
    expect_rows(native_cases, [](auto text) { return make_native_form(text, false); });
}

TEST(MakeNativeForm, TableThroughTheTraits)
{
    using wide_traits = path_traits<wchar_t, wchar_t>;
    using narrow_traits = path_traits<char16_t, char16_t>;
    for (auto const &row : native_cases) {
        EXPECT_EQ(wide_traits::make_native_form(wide(row.text), true), wide(row.expected))
            << row.why;
        EXPECT_EQ(wide_traits::make_native_form(wide(row.text), false), wide(row.expected));
        EXPECT_EQ(narrow_traits::make_native_form(row.text, true), row.expected) << row.why;
        EXPECT_EQ(narrow_traits::make_native_form(row.text, false), row.expected);
    }
}

// Long texts are searched many units at a time.
TEST(MakeNativeForm, FindsWhatMustChangeWhereverItStandsInATextOfAnySize)
{
    for (std::size_t size = 1; size <= 150; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            std::u16string const front(at, u'a');
            std::u16string const back(size - at, u'b');
            std::u16string const native = front + u"\\" + back;
            for (char16_t const *separators : {u"\\", u"/", u"\\\\", u"/\\", u"\\/", u"///"}) {
                if (at == 0 && separators[1] != u'\0')
                    continue; // a server
                std::u16string const text = front + separators + back;
                ASSERT_EQ(make_native_form(text), native) << printable(text);
                ASSERT_EQ((path_traits<wchar_t, wchar_t>::make_native_form(wide(text))),
                          wide(native))
                    << printable(text);
            }
        }
    }
    for (std::size_t size = 1; size <= 150; ++size)
        ASSERT_EQ(make_native_form(u"a" + std::u16string(size, u'\\') + u"b"), u"a\\b") << size;
}

TEST(MakeNativeForm, AgreesInBothCharacterTypesAndNeverGrows)
{
    std::u16string const alphabet = std::u16string(shape_alphabet) + u" U";
    for_all_texts(alphabet, 5, [](std::u16string const &text) {
        std::u16string const native = make_native_form(text, true);
        ASSERT_LE(native.size(), text.size()) << printable(text);
        ASSERT_EQ(native.find(u'/'), native.npos) << printable(text);
        ASSERT_EQ((path_traits<wchar_t, wchar_t>::make_native_form(wide(text), true)), wide(native))
            << printable(text);
    });
}

struct example_case
{
    char16_t const *text, *expected;
};

TEST(MakeGenericForm, Table)
{
    constexpr example_case cases[] = {
        {uR"(\\?\C:\foo)", u"//?/C:/foo"},           {uR"(a\b/c)", u"a/b/c"}, {u"", u""},
        {uR"(\\server\share\)", u"//server/share/"}, {u"foo. ", u"foo. "},
    };
    for (auto const &row : cases)
        EXPECT_EQ(make_generic_form(row.text), row.expected) << printable(row.text);
}

struct absolute_case
{
    char16_t const *text;
    bool absolute, when_expanded;
};

constexpr absolute_case absolute_cases[] = {
    {u"", false, false},
    {u"foo", false, false},
    {uR"(\foo)", false, true},
    {u"C:", false, true},
    {u"C:foo", false, true},
    {uR"(C:\foo)", true, true},
    {uR"(\\)", false, false},
    {uR"(\\server)", true, false},
    {uR"(\\server\share)", true, true},
    {uR"(\\?\C:\foo)", true, true},
    {uR"(\\?\C:foo)", true, false},
    {uR"(\\?\UNC\server\share)", true, true},
    {uR"(\\.\COM1)", false, false},
};

TEST(IsAbsolute, Table)
{
    for (auto const &row : absolute_cases) {
        EXPECT_EQ(is_absolute(row.text), row.absolute) << printable(row.text);
        EXPECT_EQ((path_traits<wchar_t, wchar_t>::is_absolute(wide(row.text))), row.absolute)
            << printable(row.text);
    }
}

TEST(IsAbsolutePathWhenExpanded, Table)
{
    for (auto const &row : absolute_cases) {
        EXPECT_EQ(is_absolute_path_when_expanded(row.text, true), row.when_expanded)
            << printable(row.text);
        EXPECT_EQ(is_absolute_path_when_expanded(row.text, false), row.when_expanded)
            << "the flag has no effect";
    }
}

} // namespace
} // namespace fl::filesystem::detail
