#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

/// A pathname of exactly `size` units below the workspace, a file, with its directories.
std::u16string make_file_of_size(workspace &work, std::size_t size)
{
    std::u16string path = work.root();
    while (size - path.size() > 101)
        path += u'\\' + std::u16string(49, u'd');
    path += u'\\' + std::u16string(size - path.size() - 1, u'f');
    work.make_file(path);
    return path;
}

TEST(Canonical, OfTheEmptyPathIsTheEmptyPath)
{
    EXPECT_EQ(canonical(u""), u"");
    EXPECT_EQ(canonical(u"", u"relative"), u"") << "the base isn't looked at";
    EXPECT_EQ(canonical(u"", uR"(C:\no such directory)"), u"");
    upath const result = canonical(upath(u"", false), upath(u"relative"));
    EXPECT_EQ(result.native(), u"");
    EXPECT_TRUE(result.form_flag());
}

TEST(Canonical, MakesOneAbsolutePathname)
{
    workspace work;
    work.make_file(work.path(uR"(d\f)"));
    work.make_directory(work.path(uR"(d\e)"));
    work.change_directory(work.path(u"d"));
    struct
    {
        std::u16string text;
        char16_t const *expected;
        char const *why;
    } const cases[] = {
        {work.path(uR"(d\f)"), uR"(d\f)", "as it is"},
        {work.path(uR"(d\e)"), uR"(d\e)", "a directory"},
        {work.path(uR"(d\e\)"), uR"(d\e)", "without what it ends in"},
        {work.path(u"d//e"), uR"(d\e)", "single backslashes"},
        {work.path(uR"(d\.\e\..\f)"), uR"(d\f)", "no dots"},
        {work.path(uR"(no\..\d)"), u"d", "what goes up again needn't be there"},
        {work.path(uR"(D\F)"), uR"(D\F)", "letters stay as the caller wrote them"},
        {uR"(\\?\)" + work.path(uR"(d\f)"), uR"(d\f)", "without the prefix"},
        {u"f", uR"(d\f)", "below the current directory"},
        {u".", u"d", "the current directory"},
        {uR"(..\d)", u"d", "beside it"},
        {work.root().substr(0, 2) + u"f", uR"(d\f)", "in the drive's current directory"},
        {work.path(uR"(d\f)").substr(2), uR"(d\f)", "below the root of the current drive"},
    };
    for (auto const &row : cases) {
        EXPECT_EQ(canonical(row.text), work.path(row.expected)) << row.why;
        EXPECT_EQ(canonical(upath(row.text)).native(), work.path(row.expected)) << row.why;
        EXPECT_TRUE(canonical(upath(row.text, false)).form_flag()) << row.why;
    }
}

TEST(Canonical, ARootKeepsItsBackslash)
{
    workspace const work;
    std::u16string const root = work.root().substr(0, 3);
    EXPECT_EQ(canonical(root), root);
    EXPECT_EQ(canonical(root + u".."), root);
}

TEST(Canonical, ARelativePathGoesBelowTheBase)
{
    workspace work;
    work.make_file(work.path(uR"(base\d\f)"));
    work.make_file(work.path(u"f"));
    work.change_directory(work.root());
    std::u16string const base = work.path(u"base");
    EXPECT_EQ(canonical(uR"(d\f)", base), work.path(uR"(base\d\f)"));
    EXPECT_EQ(canonical(uR"(..\f)", base), work.path(u"f"));
    EXPECT_EQ(canonical(upath(u"d"), upath(base)).native(), work.path(uR"(base\d)"));
    EXPECT_EQ(canonical(u"f", u""), work.path(u"f")) << "without one, below the current directory";
    EXPECT_FAILURE(canonical(u"f", base), not_found(u"")) << "and nowhere else";
}

TEST(Canonical, NeedsNoBaseForAnAbsolutePath)
{
    workspace work;
    work.make_file(work.path(u"f"));
    EXPECT_EQ(canonical(work.path(u"f"), u"relative"), work.path(u"f"));
    EXPECT_EQ(canonical(work.path(u"f"), work.path(u"no")), work.path(u"f"));
}

TEST(Canonical, ANeededBaseHasToBeAbsolute)
{
    workspace work;
    work.make_file(work.path(uR"(d\f)"));
    work.change_directory(work.root());
    auto const refused = invalid_argument("Invalid path type for base path");
    EXPECT_FAILURE(canonical(u"f", u"d"), refused);
    EXPECT_FAILURE(canonical(u"f", u"C:d"), refused);
    EXPECT_FAILURE(canonical(u"f", uR"(\d)"), refused);
    EXPECT_FAILURE(canonical(upath(u"f"), upath(u"d")), refused);
}

// A text that has its own root but isn't absolute can't be joined to a base.
TEST(Canonical, ABaseThatCantBeJoinedDoesntCount)
{
    workspace work;
    work.make_file(work.path(uR"(d\f)"));
    work.change_directory(work.path(u"d"));
    std::u16string const rooted = work.path(uR"(d\f)").substr(2);
    std::u16string const on_drive = work.root().substr(0, 2) + u"f";
    EXPECT_EQ(canonical(rooted, work.root()), work.path(uR"(d\f)"));
    EXPECT_EQ(canonical(on_drive, work.root()), work.path(uR"(d\f)"));
}

TEST(Canonical, WhatIsntThereIsNotFoundWithoutAPathname)
{
    workspace work;
    work.make_file(work.path(u"f"));
    work.change_directory(work.root());
    struct
    {
        std::u16string text;
        char const *why;
    } const cases[] = {
        {work.path(u"no"), "a name"},
        {work.path(uR"(no\x)"), "a name in a missing directory"},
        {work.path(uR"(no\x\y)"), "and deeper"},
        {work.path(uR"(no\)"), "a directory"},
        {work.path(uR"(f\x)"), "a name below a file"},
        {u"no", "a relative one"},
        {uR"(\\?\)" + work.path(u"no"), "with a prefix"},
    };
    for (auto const &row : cases) {
        EXPECT_FAILURE(canonical(row.text), not_found(u"")) << row.why;
        EXPECT_FAILURE(canonical(upath(row.text)), not_found(u"")) << row.why;
    }
    EXPECT_EQ(work.entries(work.root()), names{u"f"});
}

TEST(Canonical, HasNoPrefixHoweverLong)
{
    workspace work;
    for (std::size_t const size : {247U, 248U, 258U, 259U, 260U, 263U, 264U, 300U, 1000U}) {
        std::u16string const path = make_file_of_size(work, size);
        ASSERT_EQ(path.size(), size);
        EXPECT_EQ(canonical(path), path) << size;
        EXPECT_EQ(canonical(uR"(\\?\)" + path), path) << size;
        EXPECT_FAILURE(canonical(path + u'x'), not_found(u"")) << size;
    }
}

TEST(Canonical, OnAShare)
{
    workspace work;
    NEEDS(work.has_share(), "there is no share");
    std::u16string const root = work.share_root();
    work.make_file(root + uR"(\d\f)");
    EXPECT_EQ(canonical(root + uR"(\d\f)"), root + uR"(\d\f)");
    EXPECT_EQ(canonical(root + uR"(\d\..\d\)"), root + uR"(\d)");
    EXPECT_EQ(canonical(uR"(\\?\UNC)" + root.substr(1) + uR"(\d\f)"), root + uR"(\d\f)");
    EXPECT_FAILURE(canonical(root + uR"(\no)"), not_found(u""));
}

// What is no pathname of a file, by its shape.
TEST(Canonical, RefusesServersAndDevices)
{
    constexpr text_row<char16_t> cases[] = {
        {uR"(\\server)", uR"(\\server)", "a server alone"},
        {uR"(\\.\COM1)", uR"(\\.\COM1)", "a device"},
        {u"COM1", uR"(\\.\COM1)", "what the system takes for one"},
    };
    for (auto const &row : cases)
        EXPECT_FAILURE(canonical(row.text), bad_path_type(row.expected)) << row.why;
}

} // namespace
} // namespace fl::filesystem
