#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

#include <functional>
#include <thread>

namespace fl::filesystem {
namespace {

using namespace test_support;
using test_support::failure;

TEST(CreateDirectory, CreatesTheLastElement)
{
    workspace work;
    create_directory(work.path(u"a"));
    EXPECT_TRUE(work.is_directory(work.path(u"a")));
    create_directory(upath(work.path(u"a")) / u"b");
    EXPECT_TRUE(work.is_directory(work.path(uR"(a\b)")));
    EXPECT_EQ(work.entries(work.root()), names{u"a"});
}

TEST(CreateDirectory, ReachesTheDiskByAnyNotation)
{
    workspace work;
    work.change_directory(work.root());
    create_directory(u"relative");
    create_directory(std::u16string(u"relative/sub//"));
    create_directory(uR"(\\?\)" + work.path(u"prefixed"));
    create_directory(work.root().substr(0, 2) + u"drive-relative");
    create_directory(work.root().substr(2) + uR"(\rooted)");
    EXPECT_EQ(work.entries(work.root()),
              (names{u"drive-relative", u"prefixed", u"relative", u"rooted"}));
    EXPECT_EQ(work.entries(work.path(u"relative")), names{u"sub"});
}

TEST(CreateDirectory, RefusesTheEmptyPath)
{
    auto const refusal = empty_path();
    EXPECT_FAILURE(create_directory(upath()), refusal);
    EXPECT_FAILURE(create_directory(u""), refusal);
    EXPECT_FAILURE(create_directory(uR"(\\?\)"), refusal) << "nothing but a prefix";
    EXPECT_FAILURE(create_directories(upath()), refusal);
    EXPECT_FAILURE(create_directories(u""), refusal);
    EXPECT_FAILURE(create_directories(uR"(\\?\UNC\)"), refusal);
}

TEST(CreateDirectory, FindsADirectoryInItsPlace)
{
    workspace work;
    create_directory(work.path(u"a"));
    EXPECT_FAILURE(create_directory(work.path(u"a")), file_exists(work.path(u"a")));
    EXPECT_FAILURE(create_directory(work.path(u"A")), file_exists(work.path(u"A")))
        << "named as the caller wrote it";
    EXPECT_FAILURE(create_directories(work.path(u"a")), file_exists(work.path(u"a")))
        << "no quiet success";
}

TEST(CreateDirectory, FindsAFileInItsPlace)
{
    workspace work;
    work.make_file(work.path(u"f"), "content");
    EXPECT_FAILURE(create_directory(work.path(u"f")), file_exists(work.path(u"f")));
    EXPECT_FAILURE(create_directories(work.path(u"f")), file_exists(work.path(u"f")));
    EXPECT_TRUE(work.is_file(work.path(u"f")));
}

TEST(CreateDirectory, WantsItsParent)
{
    workspace work;
    EXPECT_FAILURE(create_directory(work.path(uR"(a\b)")), not_found(work.path(uR"(a\b)")));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(CreateDirectory, NamesTheCallersTextInNativeForm)
{
    workspace work;
    work.change_directory(work.root());
    EXPECT_FAILURE(create_directory(u"no/such"), not_found(uR"(no\such)"))
        << "not the absolute text that went to the system";
    std::u16string const overlong = uR"(no\)" + std::u16string(255, u'x');
    EXPECT_FAILURE(create_directory(overlong), not_found(overlong)) << "nor its long prefix";
}

TEST(CreateDirectory, ReportsANameThatTheSystemRefuses)
{
    workspace work;
    auto const refusal = bad_name();
    EXPECT_FAILURE(create_directory(work.path(u"a|b")), refusal);
    EXPECT_FAILURE(create_directories(work.path(u"a|b")), refusal);
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(CreateDirectory, DeniedNamesTheCallersPathname)
{
    workspace work;
    NEEDS(work.can_deny_rights(), "this workspace writes no access control lists");
    work.make_directory(work.path(u"closed"));
    work.deny_creation(work.path(u"closed"));
    EXPECT_FAILURE(create_directory(work.path(uR"(closed\a)")), denied(work.path(uR"(closed\a)")));
    EXPECT_FAILURE(create_directories(work.path(uR"(closed\a\b)")),
                   denied(work.path(uR"(closed\a\b)")))
        << "the level that was denied, not the missing one below it";
    EXPECT_EQ(work.entries(work.path(u"closed")), names{});
}

TEST(CreateDirectories, CreatesEveryMissingLevel)
{
    workspace work;
    work.make_directory(work.path(u"a"));
    create_directories(work.path(uR"(a\b\c)"));
    EXPECT_TRUE(work.is_directory(work.path(uR"(a\b\c)")));
    create_directories(upath(work.path(u"x/y/z")));
    EXPECT_TRUE(work.is_directory(work.path(uR"(x\y\z)")));
    EXPECT_EQ(work.entries(work.root()), (names{u"a", u"x"}));
}

TEST(CreateDirectories, FindsTheWholeChain)
{
    workspace work;
    work.make_directory(work.path(uR"(a\b)"));
    EXPECT_FAILURE(create_directories(work.path(uR"(a\b)")), file_exists(work.path(uR"(a\b)")));
}

TEST(CreateDirectories, FindsAFileInTheWay)
{
    workspace work;
    work.make_file(work.path(uR"(a\f)"));
    std::u16string const wanted = work.path(uR"(a\f\b\c)");
    EXPECT_FAILURE(create_directories(wanted), file_exists(wanted))
        << "names what the caller wants, not the file";
    EXPECT_EQ(work.entries(work.path(u"a")), names{u"f"});
}

TEST(CreateDirectories, OfARootFindsItThere)
{
    workspace work;
    std::u16string const drive = work.root().substr(0, 3);
    EXPECT_FAILURE(create_directories(drive), file_exists(drive));
}

TEST(CreateDirectories, OnADriveThatIsNotThere)
{
    EXPECT_FAILURE(create_directories(uR"(Q:\a\b)"), not_found(uR"(Q:\a\b)"));
}

TEST(CreateDirectories, OnAShare)
{
    workspace work;
    NEEDS(work.has_share(), "this system offers the tests no network share");
    std::u16string const wanted = work.share_root() + uR"(\a\b)";
    create_directories(wanted);
    EXPECT_TRUE(work.is_directory(wanted));
    EXPECT_FAILURE(create_directories(wanted), file_exists(wanted));
}

TEST(CreateDirectories, ByTwoThreadsSucceedsInOneOfThem)
{
    workspace work;
    std::u16string const wanted = work.path(uR"(a\b\c\d)");
    std::optional<failure> results[2];
    auto const create = [&](std::optional<failure> &result) {
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

/// A chain below `head` whose absolute pathname has `size` units.
std::u16string chain_of_size(std::u16string text, std::size_t size)
{
    while (text.size() < size) {
        std::size_t const left = size - text.size() - 1; // behind a backslash
        // no element may be empty, nor may the last backslash stand alone
        std::size_t const element = left <= 101 ? left : 99;
        text += u'\\';
        text.append(element, u'd');
    }
    return text;
}

TEST(CreateDirectories, BeyondEveryLengthLimit)
{
    workspace work;
    char16_t chain = u'A';
    for (std::size_t const size : {246U, 247U, 248U, 259U, 260U, 261U, 1000U, 3000U}) {
        std::u16string const wanted = chain_of_size(work.path({&chain, 1}), size);
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
TEST(Overloads, TakeLiteralsTextsAndPaths)
{
    workspace work;
    work.change_directory(work.root());
    create_directory(u"literal");
    create_directory(std::u16string(u"text"));
    create_directory(upath(u"path"));
    create_directories(u"literal/sub");
    create_directories(upath(u"path/sub"));
    std::u16string const from_literal = absolute(u"literal");
    EXPECT_EQ(from_literal, work.path(u"literal"));
    EXPECT_EQ(absolute(u"x", uR"(C:\base)"), uR"(C:\base\x)");
    upath const from_path = absolute(upath(u"x"), std::u16string(uR"(C:\base)"));
    EXPECT_EQ(from_path.native(), uR"(C:\base\x)");
    EXPECT_EQ(work.entries(work.root()), (names{u"literal", u"path", u"text"}));
}

} // namespace
} // namespace fl::filesystem
