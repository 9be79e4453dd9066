// Reading links, where there are none: on any system.

#include <fl/filesystem.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

char const *const no_reparse_point = "The file or directory is not a reparse point.";

TEST_IN_WORKSPACE(ReadSymlink, OfTheEmptyPathIsEmpty)
{
    EXPECT_EQ(read_symlink(u""), u"");
    upath const result = read_symlink(upath());
    EXPECT_TRUE(result.empty());
    EXPECT_TRUE(result.form_flag());
}

TEST_IN_WORKSPACE(ReadSymlink, OfWhatIsNoLink)
{
    make({u"file", {u"a.lnk", "not even a shortcut"}, u"dir\\"});
    for (char16_t const *const name : {u"file", u"a.lnk", u"dir"})
        EXPECT_FAILURE(read_symlink(at(name)), invalid_argument(no_reparse_point))
            << printable(name);
    std::u16string const path = at(u"file");
    EXPECT_FAILURE(read_symlink(upath(path)), invalid_argument(no_reparse_point));
}

TEST_IN_WORKSPACE(ReadSymlink, OfAMissingName)
{
    for (char16_t const *const name : {u"no", uR"(no\x)"}) {
        std::u16string const path = at(name);
        EXPECT_FAILURE(read_symlink(path), not_found(path));
        EXPECT_FAILURE(read_symlink(upath(path)), not_found(path));
    }
}

// The pathname that the caller gave, in native form, and not the absolute one.
TEST_IN_WORKSPACE(ReadSymlink, NamesWhatTheCallerGave)
{
    EXPECT_EQ(failure_of([] { read_symlink(u"./no//x/"); }), not_found(uR"(.\no\x)"));
    EXPECT_FAILURE(read_symlink(uR"(\\?\Q:\no)"), not_found(uR"(Q:\no)"));
}

TEST_IN_WORKSPACE(ReadSymlink, BeyondTheLimitOfABarePathname)
{
    std::u16string const name = chain_of_size(work.root(), 450);
    EXPECT_FAILURE(read_symlink(name), not_found(name));
    work.make_file(name);
    EXPECT_FAILURE(read_symlink(name), invalid_argument(no_reparse_point));
}

TEST_IN_WORKSPACE(ReadSymlink, OfWhatTakesNoPrefix)
{
    std::u16string const device = uR"(\\.\)" + std::u16string(250, u'x');
    EXPECT_FAILURE(read_symlink(device),
                   invalid_argument("Long UNC path without root not permitted"));
}

} // namespace
} // namespace fl::filesystem::tests
