#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

TEST(CopyDirectory, MakesAnEmptyDirectory)
{
    workspace work;
    work.make_file(work.path(uR"(a\f)"));
    work.make_directory(work.path(uR"(a\d)"));
    copy_directory(work.path(u"a"), work.path(u"text"));
    copy_directory(upath(work.path(u"a")), upath(work.path(u"path")));
    EXPECT_TRUE(work.is_directory(work.path(u"text")));
    EXPECT_EQ(work.entries(work.path(u"text")), names{});
    EXPECT_EQ(work.entries(work.path(u"path")), names{});
}

TEST(CopyDirectory, LeavesADirectoryThatIsThere)
{
    workspace work;
    work.make_directory(work.path(u"a"));
    work.make_file(work.path(uR"(b\f)"));
    copy_directory(work.path(u"a"), work.path(u"b"));
    copy_directory(work.path(u"b"), work.path(u"b"));
    EXPECT_EQ(work.entries(work.path(u"b")), names{u"f"});
}

TEST(CopyDirectory, RefusesTheEmptyPath)
{
    auto const refusal = empty_path();
    EXPECT_FAILURE(copy_directory(u"", u""), refusal);
    EXPECT_FAILURE(copy_directory(u"", uR"(C:\no)"), refusal);
    EXPECT_FAILURE(copy_directory(uR"(C:\no)", u""), refusal)
        << "before it is seen that `from` is missing";
    EXPECT_FAILURE(copy_directory(upath(u"no"), upath()), refusal);
    EXPECT_FAILURE(copy_directory(upath(), upath(u"no")), refusal);
    EXPECT_FAILURE(copy_directory(uR"(\\?\)", u"no"), refusal) << "nothing but a prefix";
}

TEST(CopyDirectory, OfAFileNamesIt)
{
    workspace work;
    work.make_file(work.path(u"f"));
    EXPECT_FAILURE(copy_directory(work.path(u"f"), work.path(u"to")),
                   not_directory(work.path(u"f")));
    EXPECT_FALSE(work.exists(work.path(u"to")));
}

TEST(CopyDirectory, NamesTheOneThatIsMissing)
{
    workspace work;
    work.make_directory(work.path(u"a"));
    work.change_directory(work.root());
    EXPECT_FAILURE(copy_directory(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy_directory(u"no/no", u"no/to"), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy_directory(u"a", u"no/to"), not_found(uR"(no\to)"));
    EXPECT_EQ(work.entries(work.root()), names{u"a"});
}

TEST(CopyDirectory, FindsAFileInItsPlace)
{
    workspace work;
    work.make_directory(work.path(u"a"));
    work.make_file(work.path(u"f"));
    EXPECT_FAILURE(copy_directory(work.path(u"a"), work.path(u"f")), file_exists(work.path(u"f")));
    EXPECT_TRUE(work.is_file(work.path(u"f")));
}

} // namespace
} // namespace fl::filesystem
