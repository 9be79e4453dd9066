#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_IN_WORKSPACE(Canonical, OfTheEmptyPathIsTheEmptyPath)
{
    EXPECT_EQ(canonical(u""), u"");
    EXPECT_EQ(canonical(u"", u"relative"), u"") << "the base isn't looked at";
    EXPECT_EQ(canonical(u"", uR"(C:\no such directory)"), u"");
    upath const result = canonical(upath(u"", false), upath(u"relative"));
    EXPECT_EQ(result.native(), u"");
    EXPECT_TRUE(result.form_flag());
}

TEST_IN_WORKSPACE(Canonical, MakesOneAbsolutePathname)
{
    make({uR"(d\f)", uR"(d\e\)"});
    enter(u"d");
    row_of<std::u16string, char16_t const *> const cases[] = {
        {at(uR"(d\f)"), uR"(d\f)", "as it is"},
        {at(uR"(d\e)"), uR"(d\e)", "a directory"},
        {at(uR"(d\e\)"), uR"(d\e)", "without what it ends in"},
        {at(u"d//e"), uR"(d\e)", "single backslashes"},
        {at(uR"(d\.\e\..\f)"), uR"(d\f)", "no dots"},
        {at(uR"(no\..\d)"), u"d", "what goes up again needn't be there"},
        {at(uR"(D\F)"), uR"(D\F)", "letters stay as the caller wrote them"},
        {uR"(\\?\)" + at(uR"(d\f)"), uR"(d\f)", "without the prefix"},
        {u"f", uR"(d\f)", "below the current directory"},
        {u".", u"d", "the current directory"},
        {uR"(..\d)", u"d", "beside it"},
        {work.root().substr(0, 2) + u"f", uR"(d\f)", "in the drive's current directory"},
        {at(uR"(d\f)").substr(2), uR"(d\f)", "below the root of the current drive"},
    };
    for (auto const &row : cases) {
        EXPECT_EQ(canonical(row.given), at(row.expected)) << row.why;
        EXPECT_EQ(canonical(upath(row.given)).native(), at(row.expected)) << row.why;
        EXPECT_TRUE(canonical(upath(row.given, false)).form_flag()) << row.why;
    }
}

TEST_IN_WORKSPACE(Canonical, ARootKeepsItsBackslash)
{
    std::u16string const root = work.root().substr(0, 3);
    EXPECT_EQ(canonical(root), root);
    EXPECT_EQ(canonical(root + u".."), root);
}

TEST_IN_WORKSPACE(Canonical, ARelativePathGoesBelowTheBase)
{
    make({uR"(base\d\f)", u"f"});
    std::u16string const base = at(u"base");
    EXPECT_EQ(canonical(uR"(d\f)", base), at(uR"(base\d\f)"));
    EXPECT_EQ(canonical(uR"(..\f)", base), at(u"f"));
    EXPECT_EQ(canonical(upath(u"d"), upath(base)).native(), at(uR"(base\d)"));
    EXPECT_EQ(canonical(u"f", u""), at(u"f")) << "without one, below the current directory";
    EXPECT_FAILURE(canonical(u"f", base), not_found(u"")) << "and nowhere else";
}

TEST_IN_WORKSPACE(Canonical, NeedsNoBaseForAnAbsolutePath)
{
    make_file(u"f");
    EXPECT_EQ(canonical(at(u"f"), u"relative"), at(u"f"));
    EXPECT_EQ(canonical(at(u"f"), at(u"no")), at(u"f"));
}

TEST_IN_WORKSPACE(Canonical, ANeededBaseHasToBeAbsolute)
{
    make_file(uR"(d\f)");
    auto const refused = invalid_argument("Invalid path type for base path");
    EXPECT_FAILURE(canonical(u"f", u"d"), refused);
    EXPECT_FAILURE(canonical(u"f", u"C:d"), refused);
    EXPECT_FAILURE(canonical(u"f", uR"(\d)"), refused);
    EXPECT_FAILURE(canonical(upath(u"f"), upath(u"d")), refused);
}

// A text that has its own root but isn't absolute can't be joined to a base.
TEST_IN_WORKSPACE(Canonical, ABaseThatCantBeJoinedDoesntCount)
{
    make_file(uR"(d\f)");
    enter(u"d");
    std::u16string const rooted = at(uR"(d\f)").substr(2);
    std::u16string const on_drive = work.root().substr(0, 2) + u"f";
    EXPECT_EQ(canonical(rooted, work.root()), at(uR"(d\f)"));
    EXPECT_EQ(canonical(on_drive, work.root()), at(uR"(d\f)"));
}

TEST_IN_WORKSPACE(Canonical, WhatIsntThereIsNotFoundWithoutAPathname)
{
    make_file(u"f");
    struct
    {
        std::u16string text;
        char const *why;
    } const cases[] = {
        {at(u"no"), "a name"},
        {at(uR"(no\x)"), "a name in a missing directory"},
        {at(uR"(no\x\y)"), "and deeper"},
        {at(uR"(no\)"), "a directory"},
        {at(uR"(f\x)"), "a name below a file"},
        {u"no", "a relative one"},
        {uR"(\\?\)" + at(u"no"), "with a prefix"},
    };
    for (auto const &row : cases) {
        EXPECT_FAILURE(canonical(row.text), not_found(u"")) << row.why;
        EXPECT_FAILURE(canonical(upath(row.text)), not_found(u"")) << row.why;
    }
    EXPECT_EQ(entries(), names{u"f"});
}

TEST_IN_WORKSPACE(Canonical, HasNoPrefixHoweverLong)
{
    for (std::size_t const size : {247U, 248U, 258U, 259U, 260U, 263U, 264U, 300U, 1000U}) {
        std::u16string const path = chain_of_size(work.root(), size);
        ASSERT_EQ(path.size(), size);
        work.make_file(path);
        EXPECT_EQ(canonical(path), path) << size;
        EXPECT_EQ(canonical(uR"(\\?\)" + path), path) << size;
        EXPECT_FAILURE(canonical(path + u'x'), not_found(u"")) << size;
    }
}

TEST_IN_WORKSPACE(Canonical, OnAShare)
{
    NEEDS(work.has_share(), "there is no share");
    std::u16string const root = work.share_root();
    work.make_file(root + uR"(\d\f)");
    EXPECT_EQ(canonical(root + uR"(\d\f)"), root + uR"(\d\f)");
    EXPECT_EQ(canonical(root + uR"(\d\..\d\)"), root + uR"(\d)");
    EXPECT_EQ(canonical(uR"(\\?\UNC)" + root.substr(1) + uR"(\d\f)"), root + uR"(\d\f)");
    EXPECT_FAILURE(canonical(root + uR"(\no)"), not_found(u""));
}

// What is no pathname of a file, by its shape.
TEST_IN_WORKSPACE(Canonical, RefusesServersAndDevices)
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
} // namespace fl::filesystem::tests
