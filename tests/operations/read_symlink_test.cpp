// Reading links, where there are none: on any system.

#include <fl/filesystem.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

char const *const no_reparse_point = "The file or directory is not a reparse point.";

TEST(ReadSymlink, OfTheEmptyPathIsEmpty)
{
    EXPECT_EQ(read_symlink(u""), u"");
    upath const result = read_symlink(upath());
    EXPECT_TRUE(result.empty());
    EXPECT_TRUE(result.form_flag());
}

TEST(ReadSymlink, OfWhatIsNoLink)
{
    workspace work;
    work.make_file(work.path(u"file"));
    work.make_file(work.path(u"a.lnk"), "not even a shortcut");
    work.make_directory(work.path(u"dir"));
    for (char16_t const *const name : {u"file", u"a.lnk", u"dir"})
        EXPECT_FAILURE(read_symlink(work.path(name)), invalid_argument(no_reparse_point))
            << printable(name);
    std::u16string const path = work.path(u"file");
    EXPECT_FAILURE(read_symlink(upath(path)), invalid_argument(no_reparse_point));
}

TEST(ReadSymlink, OfAMissingName)
{
    workspace work;
    for (char16_t const *const name : {u"no", uR"(no\x)"}) {
        std::u16string const path = work.path(name);
        EXPECT_FAILURE(read_symlink(path), not_found(path));
        EXPECT_FAILURE(read_symlink(upath(path)), not_found(path));
    }
}

// The pathname that the caller gave, in native form, and not the absolute one.
TEST(ReadSymlink, NamesWhatTheCallerGave)
{
    workspace work;
    work.change_directory(work.root());
    EXPECT_EQ(failure_of([] { read_symlink(u"./no//x/"); }), not_found(uR"(.\no\x)"));
    EXPECT_FAILURE(read_symlink(uR"(\\?\Q:\no)"), not_found(uR"(Q:\no)"));
}

TEST(ReadSymlink, BeyondTheLimitOfABarePathname)
{
    workspace work;
    std::u16string const name =
        work.path(std::u16string(200, u'd') + u'\\' + std::u16string(200, u'n'));
    EXPECT_FAILURE(read_symlink(name), not_found(name));
    work.make_file(name);
    EXPECT_FAILURE(read_symlink(name), invalid_argument(no_reparse_point));
}

TEST(ReadSymlink, OfWhatTakesNoPrefix)
{
    std::u16string const device = uR"(\\.\)" + std::u16string(250, u'x');
    EXPECT_FAILURE(read_symlink(device),
                   invalid_argument("Long UNC path without root not permitted"));
}

} // namespace
} // namespace fl::filesystem
