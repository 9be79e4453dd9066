#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_IN_WORKSPACE(CopyDirectory, MakesAnEmptyDirectory)
{
    make({uR"(a\f)", uR"(a\d\)"});
    copy_directory(at(u"a"), at(u"text"));
    copy_directory(upath(at(u"a")), upath(at(u"path")));
    EXPECT_TRUE(work.is_directory(at(u"text")));
    EXPECT_EQ(entries(u"text"), names{});
    EXPECT_EQ(entries(u"path"), names{});
}

TEST_IN_WORKSPACE(CopyDirectory, LeavesADirectoryThatIsThere)
{
    make({u"a\\", uR"(b\f)"});
    copy_directory(at(u"a"), at(u"b"));
    copy_directory(at(u"b"), at(u"b"));
    EXPECT_EQ(entries(u"b"), names{u"f"});
}

TEST_IN_WORKSPACE(CopyDirectory, RefusesTheEmptyPath)
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

TEST_IN_WORKSPACE(CopyDirectory, OfAFileNamesIt)
{
    make_file(u"f");
    EXPECT_FAILURE(copy_directory(at(u"f"), at(u"to")), not_directory(at(u"f")));
    EXPECT_FALSE(work.exists(at(u"to")));
}

TEST_IN_WORKSPACE(CopyDirectory, NamesTheOneThatIsMissing)
{
    make_directory(u"a");
    EXPECT_FAILURE(copy_directory(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy_directory(u"no/no", u"no/to"), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy_directory(u"a", u"no/to"), not_found(uR"(no\to)"));
    EXPECT_EQ(entries(), names{u"a"});
}

TEST_IN_WORKSPACE(CopyDirectory, FindsAFileInItsPlace)
{
    make({u"a\\", u"f"});
    EXPECT_FAILURE(copy_directory(at(u"a"), at(u"f")), file_exists(at(u"f")));
    EXPECT_TRUE(work.is_file(at(u"f")));
}

} // namespace
} // namespace fl::filesystem::tests
