#include <fl/filesystem/pathname.hpp>

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using wide_traits = path_traits<wchar_t, wchar_t>;

struct join_case
{
    char16_t const *base, *addition, *joined;
};

constexpr join_case join_cases[] = {
    {u"", uR"(C:\foo)", uR"(C:\foo)"},
    {u"", u"foo", u"foo"},
    {u"", u"", u""},
    {u"foo", u"bar", uR"(foo\bar)"},
    {u"foo\\", u"bar", uR"(foo\bar)"},
    {u"foo", u"bar\\", uR"(foo\bar)"},
    {u"foo/", u"bar", uR"(foo/\bar)"}, // a slash in the base is a character like any other
    {u"foo", u"a/b", uR"(foo\a\b)"},
    {u"foo", u"", u"foo\\"},
    {u"foo", uR"(\\?\)", u"foo\\"},
    {u"foo", u"  ", uR"(foo\  )"},
    {u"C:", u"foo", uR"(C:\foo)"},
    {u"C:", uR"(\foo)", uR"(C:\foo)"},
    {uR"(C:\)", u"foo", uR"(C:\foo)"},
    {uR"(C:\foo)", u"bar", uR"(C:\foo\bar)"},
    {u"\\", u"foo", uR"(\foo)"},
    {uR"(\\server)", u"share", uR"(\\server\share)"},
    {uR"(\\server)", uR"(\share)", uR"(\\server\share)"},
    {uR"(\\a)", uR"(\x)", uR"(\\a\x)"}, // a server of one unit
};

TEST(ConcatenatePathname, Table)
{
    for (auto const &row : join_cases) {
        std::string const shown = printable(row.base) + " + " + printable(row.addition);
        for (bool const flag : {true, false}) {
            std::u16string base = row.base;
            EXPECT_EQ(&concatenate_pathname(base, row.addition, flag), &base) << shown;
            EXPECT_EQ(base, row.joined) << shown;
            std::wstring wide_base = wide(row.base);
            EXPECT_EQ(&wide_traits::concatenate_pathname(wide_base, wide(row.addition), flag),
                      &wide_base);
            EXPECT_EQ(wide_base, wide(row.joined)) << shown;
        }
    }
}

struct refused_join_case
{
    char16_t const *base, *addition;
    char const *message;
};

constexpr char const *absolute_message = "Absolute path not permitted";
constexpr char const *rooted_message = "Path name can not start with \\";

constexpr refused_join_case refused_join_cases[] = {
    {uR"(\\server\share)", uR"(\foo)", rooted_message},
    {u"foo", uR"(\bar)", rooted_message},
    {u"a", uR"(\b)", rooted_message},
    {u"ab", uR"(\c)", rooted_message},
    {uR"(C:\foo)", uR"(\bar)", rooted_message},
    {u"foo", uR"(C:\bar)", absolute_message},
    {u"foo", u"C:bar", absolute_message},
    {u"foo", uR"(\\server)", absolute_message},
    {u"foo", uR"(\\?\C:\bar)", absolute_message},
    {u"foo", uR"(\\.\COM1)", rooted_message}, // a device's root is one unit long
    {u"foo", u"/bar", rooted_message},
    {uR"(\\)", uR"(\x)", rooted_message},
    {uR"(\\\)", uR"(\x)", rooted_message},
    {uR"(C:\)", uR"(\foo)", rooted_message}, // a drive with its root is bare no more
    {uR"(\foo)", uR"(\bar)", rooted_message},
    {uR"(/\server)", uR"(\x)", rooted_message}, // only backslashes begin a bare server here
};

TEST(ConcatenatePathname, RefusesAndLeavesTheBaseAsItWas)
{
    for (auto const &row : refused_join_cases) {
        std::string const shown = printable(row.base) + " + " + printable(row.addition);
        std::u16string base = row.base;
        EXPECT_FAILURE(concatenate_pathname(base, row.addition, true),
                       invalid_argument(row.message))
            << shown;
        EXPECT_EQ(base, row.base) << shown;
        std::wstring wide_base = wide(row.base);
        EXPECT_FAILURE(wide_traits::concatenate_pathname(wide_base, wide(row.addition), true),
                       invalid_argument(row.message))
            << shown;
        EXPECT_EQ(wide_base, wide(row.base)) << shown;
    }
}

TEST(ConcatenatePathname, TakesItsBaseAsAddition)
{
    std::u16string base = u"foo";
    concatenate_pathname(base, base, true);
    EXPECT_EQ(base, uR"(foo\foo)");
}

struct cut_case
{
    char16_t const *text, *expected;
};

constexpr cut_case cut_cases[] = {
    {uR"(C:\foo\bar)", uR"(C:\foo)"},
    {uR"(C:\foo)", uR"(C:\)"},
    {uR"(C:\)", u"C:"},
    {u"C:", u""},
    {u"C:foo", u""},
    {u"foo", u""},
    {uR"(foo\bar)", u"foo"},
    {u"\\", u""},
    {uR"(\foo)", u"\\"},
    {uR"(\\server)", u""},
    {uR"(\\server\)", uR"(\\server)"},
    {uR"(\\server\share)", uR"(\\server\)"},
    {uR"(\\server\share\foo)", uR"(\\server\share)"},
    {uR"(C:\\foo)", uR"(C:\)"}, // not in native form: what stands behind the root goes
    {u"", u""},
};

TEST(RemoveFilename, Table)
{
    for (auto const &row : cut_cases) {
        std::u16string text = row.text;
        EXPECT_EQ(&remove_filename(text), &text);
        EXPECT_EQ(text, row.expected) << printable(row.text);
        std::wstring wide_text = wide(row.text);
        EXPECT_EQ(&wide_traits::remove_filename(wide_text), &wide_text);
        EXPECT_EQ(wide_text, wide(row.expected)) << printable(row.text);
    }
}

struct extension_case
{
    char16_t const *pathname, *extension;
    char16_t const *expected; // null: raises "Invalid extension"
};

constexpr extension_case extension_cases[] = {
    {u"foo.txt", u"doc", u"foo.doc"},
    {u"foo.txt", u".doc", u"foo.doc"},
    {u"foo", u"doc", u"foo.doc"},
    {u"foo", u".doc", u"foo.doc"},
    {u"foo.", u"doc", u"foo..doc"},
    {u"foo.", u".doc", u"foo..doc"},
    {u".bashrc", u"txt", u".txt"},
    {uR"(dir.d\file)", u"txt", uR"(dir.d\file.txt)"},
    {u"foo.txt", u"", u"foo.txt"},
    {u"foo.txt", u".a.b", u"foo.a.b"},
    {u"foo.txt", u"a.b", u"foo.a.b"},
    {u"foo.txt", u".", nullptr},
    {u"foo.txt", u"..x", nullptr},
    {u"foo.txt", u"..", nullptr},
    {u"foo.txt", u"a\\b", nullptr},
    {u"foo.txt", u"a/b", nullptr},
    {u"foo", u"/", nullptr},
    {u"", u"txt", u""},
    {u"C:", u"txt", u"C:"},
    {u"foo:", u"txt", u"foo:"},
    {uR"(\foo)", u"txt", uR"(\foo.txt)"},
    {uR"(C:\)", u"txt", uR"(C:\)"},
    {u"C:foo", u"txt", u"C:foo.txt"},
    {u"foo\\", u"txt", u"foo\\"},
    {u".", u"txt", u"."},
    {u"..", u"txt", u".."},
    {uR"(dir\..)", u"txt", uR"(dir\..)"},
    {uR"(dir\.)", u"txt", uR"(dir\.)"},
    {uR"(\\server\share)", u"txt", uR"(\\server\share)"},
    {uR"(\\server)", u"txt", uR"(\\server)"},
    {u"//server/share", u"txt", u"//server/share"}, // nothing ends the server: all is its name
    {uR"(\\server\share\foo)", u"txt", uR"(\\server\share\foo.txt)"},
    {uR"(\\\share\foo)", u"txt", uR"(\\\share\foo.txt)"}, // behind a server without a name
    // what stays as it is doesn't look at the extension
    {u"", u"..", u""},
    {u"C:", u"a\\b", u"C:"},
    {uR"(\\server\share)", u".", uR"(\\server\share)"},
    {u"foo\\", u"..", u"foo\\"},
    {u"..", u".", u".."},
    // behind a drive without a backslash, dots are a name like any other
    {u"C:.", u"txt", u"C:..txt"},
    {u"C:..", u"txt", u"C:...txt"},
    {u"...", u"txt", u"....txt"},
    {u"a..b", u"c", u"a..c"},
};

TEST(ReplaceExtension, Table)
{
    for (auto const &row : extension_cases) {
        std::string const shown = printable(row.pathname) + " + " + printable(row.extension);
        std::u16string pathname = row.pathname;
        if (row.expected == nullptr) {
            EXPECT_FAILURE(replace_extension(pathname, row.extension),
                           invalid_argument("Invalid extension"))
                << shown;
            EXPECT_EQ(pathname, row.pathname) << shown;
            continue;
        }
        EXPECT_EQ(&replace_extension(pathname, row.extension), &pathname);
        EXPECT_EQ(pathname, row.expected) << shown;
    }
}

TEST(ReplaceExtension, TakesItsPathnameAsExtension)
{
    std::u16string pathname = u"a.b";
    replace_extension(pathname, pathname);
    EXPECT_EQ(pathname, u"a.a.b");
}

} // namespace
} // namespace fl::filesystem::detail
