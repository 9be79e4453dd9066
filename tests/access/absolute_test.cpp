#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr row_of_texts<char16_t> based_cases[] = {
    {u"", u"", u"", "nothing on nothing"},
    {u"", uR"(C:\dir)", uR"(C:\dir)", "the base itself"},
    {u"foo", uR"(C:\dir)", uR"(C:\dir\foo)", "joined"},
    {u"foo", uR"(C:\dir\)", uR"(C:\dir\foo)", "joined"},
    {uR"(..\foo)", uR"(C:\dir)", uR"(C:\foo)", "two dots are dropped by text"},
    {uR"(C:\foo)", u"rel", uR"(C:\foo)", "the base is not needed, nor looked at"},
    {uR"(C:\a\..\b)", u"", uR"(C:\b)", "dots in an absolute pathname, too"},
    {uR"(C:\a\.\b\)", u"", uR"(C:\a\b)", "a single dot, and the trailing backslash"},
    {uR"(C:\x.)", u"", uR"(C:\x)", "a full stop that no name can end in"},
    {uR"(C:\x\...)", u"", uR"(C:\x)", "a name of nothing else"},
    {uR"(\\server\share\x)", u"rel", uR"(\\server\share\x)", "a server is absolute"},
    {uR"(\\.\COM1)", u"rel", uR"(\\.\COM1)", "so is a device, by its root name"},
    {u"x", uR"(\\server\share)", uR"(\\server\share\x)", "on a share"},
    {uR"(\\?\C:\x)", u"rel", uR"(C:\x)", "the long prefix goes with the native form"},
    {u"share", uR"(\\server)", uR"(\\server\share)", "a bare server is an absolute base"},
};

TEST_IN_WORKSPACE(Absolute, Table)
{
    for (auto const &row : based_cases) {
        std::string const shown =
            printable(row.first) + " on " + printable(row.second) + ": " + row.why;
        EXPECT_EQ(absolute(std::u16string(row.first), std::u16string(row.second)), row.expected)
            << shown;
        EXPECT_EQ(absolute(upath(row.first), upath(row.second)).native(), row.expected) << shown;
    }
}

TEST_IN_WORKSPACE(Absolute, RefusesARelativeBaseThatItNeeds)
{
    auto const refusal = invalid_argument("Invalid path type for base path");
    for (char16_t const *base : {u"rel", u"C:rel", uR"(\rooted)", u"C:"}) {
        EXPECT_FAILURE(absolute(std::u16string(u"foo"), std::u16string(base)), refusal)
            << printable(base);
        EXPECT_FAILURE(absolute(upath(u"foo"), upath(base)), refusal);
    }
    EXPECT_FAILURE(absolute(std::u16string(), std::u16string(u"rel")), refusal)
        << "also for the empty path";
}

TEST_IN_WORKSPACE(Absolute, ExpandsWithTheCurrentDirectory)
{
    make_directory(u"dir");
    enter(u"dir");
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(absolute(std::u16string(u"foo")), at(uR"(dir\foo)"));
    EXPECT_EQ(absolute(std::u16string(uR"(..\foo)")), at(u"foo"));
    EXPECT_EQ(absolute(drive + u"foo"), at(uR"(dir\foo)")) << "drive-relative";
    EXPECT_EQ(absolute(drive), at(u"dir"));
    EXPECT_EQ(absolute(std::u16string(uR"(\foo)")), drive + uR"(\foo)") << "rooted";
}

TEST_IN_WORKSPACE(Absolute, LeavesWhatCantBeJoinedToTheCurrentDirectory)
{
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(absolute(std::u16string(uR"(\foo)"), at(u"base")), drive + uR"(\foo)")
        << "rooted on the current drive, not on the base's";
    EXPECT_EQ(absolute(drive + u"foo", at(u"base")), at(u"foo"))
        << "drive-relative to the current directory, not to the base";
}

TEST_IN_WORKSPACE(Absolute, HasTheFlagTrue)
{
    EXPECT_TRUE(absolute(upath(uR"(C:\x)", false)).form_flag());
    EXPECT_TRUE(absolute(upath(), upath()).form_flag());
}

TEST_IN_WORKSPACE(Absolute, HasNoLimitOfItsOwn)
{
    for (std::size_t const size : {258U, 259U, 260U, 261U, 1023U, 1024U, 1025U, 32000U}) {
        std::u16string const text = uR"(C:\)" + std::u16string(size - 3, u'a');
        EXPECT_EQ(absolute(text), text) << size;
    }
}

} // namespace
} // namespace fl::filesystem::tests
