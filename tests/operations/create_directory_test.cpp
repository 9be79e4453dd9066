#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <functional>
#include <thread>

namespace fl::filesystem::tests {
namespace {

TEST_IN_WORKSPACE(CreateDirectory, CreatesTheLastElement)
{
    create_directory(at(u"a"));
    EXPECT_TRUE(work.is_directory(at(u"a")));
    create_directory(upath(at(u"a")) / u"b");
    EXPECT_TRUE(work.is_directory(at(uR"(a\b)")));
    EXPECT_EQ(entries(), names{u"a"});
}

TEST_IN_WORKSPACE(CreateDirectory, ReachesTheDiskByAnyNotation)
{
    create_directory(u"relative");
    create_directory(std::u16string(u"relative/sub//"));
    create_directory(uR"(\\?\)" + at(u"prefixed"));
    create_directory(work.root().substr(0, 2) + u"drive-relative");
    create_directory(work.root().substr(2) + uR"(\rooted)");
    EXPECT_EQ(entries(), (names{u"drive-relative", u"prefixed", u"relative", u"rooted"}));
    EXPECT_EQ(entries(u"relative"), names{u"sub"});
}

TEST_IN_WORKSPACE(CreateDirectory, RefusesTheEmptyPath)
{
    auto const refusal = empty_path();
    EXPECT_FAILURE(create_directory(upath()), refusal);
    EXPECT_FAILURE(create_directory(u""), refusal);
    EXPECT_FAILURE(create_directory(uR"(\\?\)"), refusal) << "nothing but a prefix";
    EXPECT_FAILURE(create_directories(upath()), refusal);
    EXPECT_FAILURE(create_directories(u""), refusal);
    EXPECT_FAILURE(create_directories(uR"(\\?\UNC\)"), refusal);
}

TEST_IN_WORKSPACE(CreateDirectory, FindsADirectoryInItsPlace)
{
    create_directory(at(u"a"));
    EXPECT_FAILURE(create_directory(at(u"a")), file_exists(at(u"a")));
    EXPECT_FAILURE(create_directory(at(u"A")), file_exists(at(u"A")))
        << "named as the caller wrote it";
    EXPECT_FAILURE(create_directories(at(u"a")), file_exists(at(u"a"))) << "no quiet success";
}

TEST_IN_WORKSPACE(CreateDirectory, FindsAFileInItsPlace)
{
    make_file(u"f", "content");
    EXPECT_FAILURE(create_directory(at(u"f")), file_exists(at(u"f")));
    EXPECT_FAILURE(create_directories(at(u"f")), file_exists(at(u"f")));
    EXPECT_TRUE(work.is_file(at(u"f")));
}

TEST_IN_WORKSPACE(CreateDirectory, WantsItsParent)
{
    EXPECT_FAILURE(create_directory(at(uR"(a\b)")), not_found(at(uR"(a\b)")));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(CreateDirectory, NamesTheCallersTextInNativeForm)
{
    EXPECT_FAILURE(create_directory(u"no/such"), not_found(uR"(no\such)"))
        << "not the absolute text that went to the system";
    std::u16string const overlong = uR"(no\)" + std::u16string(255, u'x');
    EXPECT_FAILURE(create_directory(overlong), not_found(overlong)) << "nor its long prefix";
}

TEST_IN_WORKSPACE(CreateDirectory, ReportsANameThatTheSystemRefuses)
{
    auto const refusal = bad_name();
    EXPECT_FAILURE(create_directory(at(u"a|b")), refusal);
    EXPECT_FAILURE(create_directories(at(u"a|b")), refusal);
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(CreateDirectory, DeniedNamesTheCallersPathname)
{
    NEEDS(work.can_deny_rights(), "this workspace writes no access control lists");
    make_directory(u"closed");
    work.deny_creation(at(u"closed"));
    EXPECT_FAILURE(create_directory(at(uR"(closed\a)")), denied(at(uR"(closed\a)")));
    EXPECT_FAILURE(create_directories(at(uR"(closed\a\b)")), denied(at(uR"(closed\a\b)")))
        << "the level that was denied, not the missing one below it";
    EXPECT_EQ(entries(u"closed"), names{});
}

TEST_IN_WORKSPACE(CreateDirectories, CreatesEveryMissingLevel)
{
    make_directory(u"a");
    create_directories(at(uR"(a\b\c)"));
    EXPECT_TRUE(work.is_directory(at(uR"(a\b\c)")));
    create_directories(upath(at(u"x/y/z")));
    EXPECT_TRUE(work.is_directory(at(uR"(x\y\z)")));
    EXPECT_EQ(entries(), (names{u"a", u"x"}));
}

TEST_IN_WORKSPACE(CreateDirectories, FindsTheWholeChain)
{
    make_directory(uR"(a\b)");
    EXPECT_FAILURE(create_directories(at(uR"(a\b)")), file_exists(at(uR"(a\b)")));
}

TEST_IN_WORKSPACE(CreateDirectories, FindsAFileInTheWay)
{
    make_file(uR"(a\f)");
    std::u16string const wanted = at(uR"(a\f\b\c)");
    EXPECT_FAILURE(create_directories(wanted), file_exists(wanted))
        << "names what the caller wants, not the file";
    EXPECT_EQ(entries(u"a"), names{u"f"});
}

TEST_IN_WORKSPACE(CreateDirectories, OfARootFindsItThere)
{
    std::u16string const drive = work.root().substr(0, 3);
    EXPECT_FAILURE(create_directories(drive), file_exists(drive));
}

TEST_IN_WORKSPACE(CreateDirectories, OnADriveThatIsNotThere)
{
    EXPECT_FAILURE(create_directories(uR"(Q:\a\b)"), not_found(uR"(Q:\a\b)"));
}

TEST_IN_WORKSPACE(CreateDirectories, OnAShare)
{
    NEEDS(work.has_share(), "this system offers the tests no network share");
    std::u16string const wanted = work.share_root() + uR"(\a\b)";
    create_directories(wanted);
    EXPECT_TRUE(work.is_directory(wanted));
    EXPECT_FAILURE(create_directories(wanted), file_exists(wanted));
}

TEST_IN_WORKSPACE(CreateDirectories, ByTwoThreadsSucceedsInOneOfThem)
{
    std::u16string const wanted = at(uR"(a\b\c\d)");
    maybe_failure results[2];
    auto const create = [&](maybe_failure &result) {
        result = failure_of([&] { create_directories(wanted); });
    };
    std::thread other(create, std::ref(results[0]));
    create(results[1]);
    other.join();
    EXPECT_NE(results[0].has_value(), results[1].has_value());
    EXPECT_EQ(results[0] ? results[0] : results[1], file_exists(wanted))
        << "the other one lost the race";
    EXPECT_TRUE(work.is_directory(wanted));
}

TEST_IN_WORKSPACE(CreateDirectories, BeyondEveryLengthLimit)
{
    char16_t chain = u'A';
    for (std::size_t const size : {246U, 247U, 248U, 259U, 260U, 261U, 1000U, 3000U}) {
        std::u16string const wanted = chain_of_size(at({&chain, 1}), size);
        ++chain;
        ASSERT_EQ(wanted.size(), size);
        create_directories(wanted);
        EXPECT_TRUE(work.is_directory(wanted)) << size;
        EXPECT_FAILURE(create_directories(wanted), file_exists(wanted)) << size;
        EXPECT_FAILURE(create_directory(wanted), file_exists(wanted)) << size;
        create_directory(wanted + u"\\x");
        EXPECT_TRUE(work.is_directory(wanted + u"\\x")) << size;
    }
}

// Calls with a literal pick the text overload; this compiles or it doesn't.
TEST_IN_WORKSPACE(Overloads, TakeLiteralsTextsAndPaths)
{
    create_directory(u"literal");
    create_directory(std::u16string(u"text"));
    create_directory(upath(u"path"));
    create_directories(u"literal/sub");
    create_directories(upath(u"path/sub"));
    std::u16string const from_literal = absolute(u"literal");
    EXPECT_EQ(from_literal, at(u"literal"));
    EXPECT_EQ(absolute(u"x", uR"(C:\base)"), uR"(C:\base\x)");
    upath const from_path = absolute(upath(u"x"), std::u16string(uR"(C:\base)"));
    EXPECT_EQ(from_path.native(), uR"(C:\base\x)");
    EXPECT_EQ(entries(), (names{u"literal", u"path", u"text"}));
}

} // namespace
} // namespace fl::filesystem::tests
