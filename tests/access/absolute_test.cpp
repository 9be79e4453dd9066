#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

struct based_case
{
    char16_t const *path, *base, *expected;
    char const *why;
};

constexpr based_case based_cases[] = {
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

TEST(Absolute, Table)
{
    for (auto const &row : based_cases) {
        std::string const shown =
            printable(row.path) + " on " + printable(row.base) + ": " + row.why;
        EXPECT_EQ(absolute(std::u16string(row.path), std::u16string(row.base)), row.expected)
            << shown;
        EXPECT_EQ(absolute(upath(row.path), upath(row.base)).native(), row.expected) << shown;
    }
}

TEST(Absolute, RefusesARelativeBaseThatItNeeds)
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

TEST(Absolute, ExpandsWithTheCurrentDirectory)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.change_directory(work.path(u"dir"));
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(absolute(std::u16string(u"foo")), work.path(uR"(dir\foo)"));
    EXPECT_EQ(absolute(std::u16string(uR"(..\foo)")), work.path(u"foo"));
    EXPECT_EQ(absolute(drive + u"foo"), work.path(uR"(dir\foo)")) << "drive-relative";
    EXPECT_EQ(absolute(drive), work.path(u"dir"));
    EXPECT_EQ(absolute(std::u16string(uR"(\foo)")), drive + uR"(\foo)") << "rooted";
}

TEST(Absolute, LeavesWhatCantBeJoinedToTheCurrentDirectory)
{
    workspace work;
    work.change_directory(work.root());
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(absolute(std::u16string(uR"(\foo)"), work.path(u"base")), drive + uR"(\foo)")
        << "rooted on the current drive, not on the base's";
    EXPECT_EQ(absolute(drive + u"foo", work.path(u"base")), work.path(u"foo"))
        << "drive-relative to the current directory, not to the base";
}

TEST(Absolute, HasTheFlagTrue)
{
    EXPECT_TRUE(absolute(upath(uR"(C:\x)", false)).form_flag());
    EXPECT_TRUE(absolute(upath(), upath()).form_flag());
}

TEST(Absolute, HasNoLimitOfItsOwn)
{
    for (std::size_t const size : {258U, 259U, 260U, 261U, 1023U, 1024U, 1025U, 32000U}) {
        std::u16string const text = uR"(C:\)" + std::u16string(size - 3, u'a');
        EXPECT_EQ(absolute(text), text) << size;
    }
}

} // namespace
} // namespace fl::filesystem
