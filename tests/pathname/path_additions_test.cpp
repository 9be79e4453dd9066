// What the path object has beside its fixed interface.

#include <fl/filesystem/path.hpp>

#include "support/names.hpp"

#include <type_traits>

namespace fl::filesystem::tests {
namespace {

using namespace fl::filesystem::literals;

TEST(UpathAdditions, IsMadeOfTextsOfOtherTypes)
{
    EXPECT_EQ(upath(std::u16string_view(u"C:/a/")).native(), u"C:\\a");
    EXPECT_EQ(upath(std::wstring(L"C:/a/")).native(), u"C:\\a");
    EXPECT_EQ(upath(std::wstring_view(L"C:/a/")).native(), u"C:\\a");
    EXPECT_EQ(upath(L"C:/a/").native(), u"C:\\a");
    wchar_t word[] = L"C:/a/";
    wchar_t *const argument = word;
    wchar_t const *const pointer = word;
    EXPECT_EQ(upath(word).native(), u"C:\\a");
    EXPECT_EQ(upath(argument).native(), u"C:\\a");
    EXPECT_EQ(upath(pointer).native(), u"C:\\a");
    EXPECT_EQ(upath(std::wstring(L"\xD800")).native(), u"\xD800") << "unit for unit";
    EXPECT_FALSE(upath(std::wstring(L"a"), false).form_flag());
    EXPECT_FALSE(upath(std::u16string_view(u"a"), false).form_flag());
    upath const implicit = std::wstring(L"a");
    EXPECT_EQ(implicit.native(), u"a");
    static_assert(std::is_convertible_v<std::u16string_view, upath>);
    static_assert(!std::is_convertible_v<wchar_t const *, upath>, "as for u\"...\"");
}

TEST(UpathAdditions, AssignmentOfATextOfAnotherTypeKeepsTheFlag)
{
    upath path(u"old", false);
    path = std::u16string_view(u"new//name/");
    EXPECT_EQ(path.native(), uR"(new\name)");
    EXPECT_FALSE(path.form_flag());
    path = std::wstring(L"wide/");
    EXPECT_EQ(path.native(), u"wide");
    EXPECT_FALSE(path.form_flag());
}

TEST(UpathAdditions, MistakesDoNotCompile)
{
    static_assert(!std::is_constructible_v<upath, char16_t const *, char16_t const *>,
                  "the second text would be the flag");
    static_assert(!std::is_constructible_v<upath, char16_t const(&)[5], char16_t const(&)[2]>);
    static_assert(!std::is_constructible_v<upath, std::u16string, char const *>);
    static_assert(!std::is_constructible_v<upath, std::u16string_view, wchar_t const *>);
    static_assert(!std::is_constructible_v<upath, std::u16string, std::nullptr_t>);
    static_assert(!std::is_constructible_v<upath, std::nullptr_t>, "would throw std::logic_error");
    static_assert(!std::is_constructible_v<upath, std::nullptr_t, bool>);
    static_assert(!std::is_constructible_v<upath, char const *>, "in which encoding?");
    static_assert(!std::is_constructible_v<upath, std::string>);
    static_assert(!std::is_constructible_v<upath, int>);
    static_assert(!std::is_constructible_v<upath, char16_t>);
    static_assert(std::is_constructible_v<upath, std::u16string, int>, "a flag as a number");
    static_assert(std::is_constructible_v<upath, std::u16string, bool>);
}

TEST(UpathAdditions, Literal)
{
    EXPECT_EQ((u"C:/a/"_path).native(), u"C:\\a");
    EXPECT_EQ((u""_path).native(), u"");
    EXPECT_EQ((u"a\0b"_path).native().size(), 3U) << "a NUL is a unit";
    EXPECT_TRUE((u"a"_path).form_flag());
}

TEST(UpathAdditions, TextOfAPathThatIsGivenAwayMovesOut)
{
    upath path(std::u16string(100, u'a'));
    char16_t const *const units = path.c_str();
    EXPECT_EQ(path.u16string(), path.native());
    EXPECT_NE(path.u16string().c_str(), units) << "a copy of one that stays";
    std::u16string const moved = std::move(path).u16string();
    EXPECT_EQ(moved.c_str(), units);
    EXPECT_EQ(moved, std::u16string(100, u'a'));
}

TEST(UpathAdditions, PointerToTheText)
{
    upath const path(u"C:/a");
    EXPECT_EQ(std::u16string(path.c_str()), u"C:\\a");
    EXPECT_EQ(path.c_str(), path.native().c_str());
    static_assert(std::is_same_v<decltype(path.c_str()), char16_t const *>);
}

TEST(UpathAdditions, ParentIsTheParentPath)
{
    EXPECT_EQ(upath(uR"(C:\dir\x)").parent(), upath(uR"(C:\dir)"));
    EXPECT_EQ(upath(uR"(C:\x)").parent(), upath(uR"(C:\)"));
    EXPECT_EQ(upath(uR"(C:\)").parent().native(), u"C:");
    EXPECT_EQ(upath(u"x").parent().native(), u"");
    EXPECT_FALSE(upath(u"a/b", false).parent().form_flag());
    for_all_texts(shape_alphabet, 5, [](std::u16string const &text) {
        upath const path(text);
        ASSERT_EQ(path.parent().native(), path.parent_path()) << printable(text);
    });
}

TEST(UpathAdditions, AsksWhetherThereIsSomething)
{
    upath const path(uR"(C:\dir\a.txt)");
    EXPECT_TRUE(path.has_root_name());
    EXPECT_TRUE(path.has_root_directory());
    EXPECT_TRUE(path.has_root_path());
    EXPECT_TRUE(path.has_relative_path());
    EXPECT_TRUE(path.has_parent_path());
    EXPECT_TRUE(path.has_filename());
    EXPECT_TRUE(path.has_stem());
    EXPECT_TRUE(path.has_extension());
    upath const name(u"a");
    EXPECT_FALSE(name.has_root_name());
    EXPECT_FALSE(name.has_root_directory());
    EXPECT_FALSE(name.has_root_path());
    EXPECT_FALSE(name.has_parent_path());
    EXPECT_FALSE(name.has_extension());
    EXPECT_FALSE(upath(uR"(C:\)").has_relative_path());
    EXPECT_FALSE(upath().has_filename());
    EXPECT_FALSE(upath().has_stem());
    // where the standard says otherwise
    EXPECT_TRUE(upath(uR"(C:\)").has_filename());
    EXPECT_FALSE(upath(u"C:").has_parent_path());
    EXPECT_TRUE(upath(u".bashrc").has_extension());
}

TEST(UpathAdditions, RemovesTheExtension)
{
    constexpr text_row<char16_t> cases[] = {
        {uR"(C:\a.tar.gz)", uR"(C:\a.tar)", "the last one"},
        {u"a.a", u"a", "also the one that is tried"},
        {u"a.b", u"a", "and the other"},
        {uR"(C:\dir.d\a)", uR"(C:\dir.d\a)", "not that of a directory above"},
        {u"C:a.txt", u"C:a", "relative to a drive"},
        {u"", u"", "nothing"},
        {u"a", u"a", "none"},
        {u"a.", u"a.", "a full stop has no extension behind it"},
        {uR"(C:\.bashrc)", uR"(C:\.bashrc)", "would mean the root"},
        {uR"(C:\d\.bashrc)", uR"(C:\d\.bashrc)", "would mean the directory"},
        {u"C:.bashrc", u"C:.bashrc", "would mean the current directory of the drive"},
        {uR"(C:\..txt)", uR"(C:\..txt)", "would mean the root, too"},
        {uR"(C:\d\...txt)", uR"(C:\d\...txt)", "would mean what is above"},
        {uR"(C:\d\ .txt)", uR"(C:\d\ .txt)", "the system would drop the blank"},
        {u".", u".", "no name"},
        {u"..", u"..", "no name"},
        {uR"(\\server\share.x)", uR"(\\server\share.x)", "a share is no file"},
        {uR"(\\server.x)", uR"(\\server.x)", "nor is a server"},
        {uR"(\\server\share\a.x)", uR"(\\server\share\a)", "a file on it is"},
        {uR"(C:\)", uR"(C:\)", "a root"},
    };
    for (auto const &row : cases) {
        upath path(row.text, false);
        EXPECT_EQ(&path.remove_extension(), &path);
        EXPECT_EQ(path.native(), row.expected) << row.why;
        EXPECT_FALSE(path.form_flag());
    }
    EXPECT_EQ(upath(uR"(C:\a.tar.gz)").remove_extension().remove_extension(), uR"(C:\a)");
}

TEST(UpathAdditions, RemovingTheExtensionNeverLeavesTheDirectory)
{
    for_all_texts(u"\\:. a", 6, [](std::u16string const &text) {
        upath const before(text);
        upath after = before;
        after.remove_extension();
        ASSERT_EQ(after.parent_path(), before.parent_path()) << printable(text);
        if (after != before) {
            ASSERT_EQ(after.filename(), before.stem()) << printable(text);
        }
    });
}

TEST(UpathAdditions, ReplacesTheFilename)
{
    struct
    {
        char16_t const *text, *name, *expected;
        char const *why;
    } constexpr cases[] = {
        {uR"(C:\dir\a)", u"b", uR"(C:\dir\b)", "the usual"},
        {uR"(C:\dir\a)", u"", uR"(C:\dir)", "by nothing"},
        {uR"(C:\dir\a)", u"x/y/", uR"(C:\dir\x\y)", "by a native form"},
        {uR"(C:\)", u"b", uR"(C:\b)", "of a root"},
        {u"C:a", u"b", u"b", "as a drive goes with the name behind it"},
        {u"a", u"b", u"b", "of a name alone"},
        {u"", u"b", u"b", "of nothing"},
    };
    for (auto const &row : cases) {
        upath path(row.text, false);
        EXPECT_EQ(&path.replace_filename(row.name), &path);
        EXPECT_EQ(path.native(), row.expected) << row.why;
        EXPECT_FALSE(path.form_flag());
    }
    upath path(uR"(C:\dir\a)");
    EXPECT_FAILURE(path.replace_filename(uR"(D:\b)"),
                   invalid_argument("Absolute path not permitted"));
    EXPECT_EQ(path.native(), uR"(C:\dir\a)");
}

TEST(UpathAdditions, WritesATextBehind)
{
    upath path(uR"(C:\a.txt)", false);
    path += u".bak";
    EXPECT_EQ(path.native(), uR"(C:\a.txt.bak)");
    EXPECT_FALSE(path.form_flag());
    path = u"C:/a";
    path += u"/b/";
    EXPECT_EQ(path.native(), uR"(C:\a\b)") << "the native form of both together";
    path += upath(u"c");
    EXPECT_EQ(path.native(), uR"(C:\a\bc)");
    path += path;
    EXPECT_EQ(path.native(), uR"(C:\a\bcC:\a\bc)");
    path.clear();
    path += std::u16string();
    EXPECT_TRUE(path.empty());
}

TEST(UpathAdditions, ComparesInAllSixWays)
{
    upath const a(u"a");
    upath const b(u"b");
    EXPECT_TRUE(a <= b && a <= a && !(b <= a));
    EXPECT_TRUE(b > a && !(a > a) && !(a > b));
    EXPECT_TRUE(b >= a && a >= a && !(a >= b));
    EXPECT_LT(a.compare(b), 0);
    EXPECT_GT(b.compare(a), 0);
    EXPECT_EQ(a.compare(upath(u"a", false)), 0);
    EXPECT_LT(upath(u"A").compare(a), 0) << "by units, case included";
}

TEST(UpathAdditions, ComparesWithTextsByTheirNativeForm)
{
    upath const path(uR"(C:\a)");
    char16_t const *const pointer = u"C:/a/";
    EXPECT_TRUE(path == u"C:/a/");
    EXPECT_TRUE(u"C:/a/" == path);
    EXPECT_TRUE(path == pointer);
    EXPECT_TRUE(path == std::u16string(u"C:/a/"));
    EXPECT_TRUE(std::u16string(u"C:/a/") == path);
    EXPECT_TRUE(path == std::u16string_view(u"C:/a/"));
    EXPECT_TRUE(std::u16string_view(u"C:/a/") == path);
    EXPECT_TRUE(path == std::wstring(L"C:/a/"));
    EXPECT_FALSE(path != u"C:/a/");
    EXPECT_TRUE(path != u"C:/A");
    EXPECT_TRUE(path < u"C:/b" && path <= u"C:/a" && path > u"C:/A" && path >= u"C:/a");
    EXPECT_TRUE(u"C:/A" < path && u"C:/a" <= path && u"C:/b" > path && u"C:/a" >= path);
    EXPECT_FALSE(path < u"C:/a" || path > u"C:/a" || u"C:/a" < path || u"C:/a" > path);
}

template <typename Left, typename Right>
concept comparable = requires(Left const &left, Right const &right)
{
    left == right;
};

TEST(UpathAdditions, ComparesWithNothingElse)
{
    static_assert(comparable<upath, char16_t const *>);
    static_assert(!comparable<upath, std::nullptr_t>);
    static_assert(!comparable<upath, char const *>);
    static_assert(!comparable<upath, std::string>);
    static_assert(!comparable<upath, int>);
    static_assert(!comparable<upath, upath::iterator>);
}

TEST(UpathAdditions, FlagsNeedNotBeGiven)
{
    std::u16string base = u"C:\\a";
    EXPECT_EQ(detail::make_native_form(u"C:/a/"), u"C:\\a");
    EXPECT_EQ(detail::concatenate_pathname(base, u"b"), u"C:\\a\\b");
    EXPECT_EQ(detail::make_expanded_path(u"a"), u"a");
    EXPECT_TRUE(detail::is_absolute_path_when_expanded(u"C:\\a"));
    std::wstring wide = L"C:\\a";
    using wide_traits = detail::path_traits<wchar_t, wchar_t>;
    EXPECT_EQ(wide_traits::concatenate_pathname(wide, L"b"), L"C:\\a\\b");
    EXPECT_EQ(wide_traits::make_native_form(L"C:/a/"), L"C:\\a");
    EXPECT_EQ((detail::path_traits<char16_t, char16_t>::make_native_form(u"C:/a/")), u"C:\\a");
}

} // namespace
} // namespace fl::filesystem::tests
