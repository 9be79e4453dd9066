#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

/// Both overloads, and both orders, agree.
bool same(std::u16string const &left, std::u16string const &right)
{
    bool const answer = equivalent(left, right);
    EXPECT_EQ(equivalent(upath(left), upath(right)), answer);
    EXPECT_EQ(equivalent(right, left), answer);
    return answer;
}

TEST(Equivalent, OneFileByManyNames)
{
    workspace work;
    work.make_file(work.path(uR"(d\f)"));
    work.make_directory(work.path(uR"(d\e)"));
    work.change_directory(work.path(u"d"));
    std::u16string const file = work.path(uR"(d\f)");
    for (std::u16string const &other :
         {file, std::u16string(u"f"), work.path(u"d/./e/../f"), work.path(uR"(D\F)"),
          uR"(\\?\)" + file, file.substr(2), work.root().substr(0, 2) + u"f"})
        EXPECT_TRUE(same(file, other)) << printable(other);
    EXPECT_TRUE(same(work.path(u"d"), u"."));
    EXPECT_TRUE(same(work.path(uR"(d\)"), work.path(uR"(d\e\..)")));
    EXPECT_TRUE(same(work.root().substr(0, 3), uR"(\)"));
}

TEST(Equivalent, DifferentFiles)
{
    workspace work;
    work.make_file(work.path(u"a"), "same content");
    work.make_file(work.path(u"b"), "same content");
    work.make_directory(work.path(u"d"));
    work.make_directory(work.path(u"e"));
    EXPECT_FALSE(same(work.path(u"a"), work.path(u"b")));
    EXPECT_FALSE(same(work.path(u"d"), work.path(u"e")));
    EXPECT_FALSE(same(work.path(u"a"), work.path(u"d")));
    EXPECT_FALSE(same(work.path(u"d"), work.root()));
}

TEST(Equivalent, OneMissingIsFalse)
{
    workspace work;
    work.make_file(work.path(u"f"));
    for (char16_t const *missing : {u"no", uR"(no\x)", uR"(f\x)"})
        EXPECT_FALSE(same(work.path(u"f"), work.path(missing)));
    EXPECT_FALSE(same(work.root(), work.path(u"no")));
}

TEST(Equivalent, TwoMissingNameTheFirst)
{
    workspace work;
    work.make_file(work.path(u"f"));
    work.change_directory(work.root());
    EXPECT_FAILURE(equivalent(u"no", u"none"), not_found(u"no"));
    EXPECT_FAILURE(equivalent(u"none", u"no"), not_found(u"none"));
    EXPECT_FAILURE(equivalent(u"no", u"no"), not_found(u"no")) << "one name twice";
    EXPECT_FAILURE(equivalent(upath(uR"(no\x)"), upath(uR"(f\x)")), not_found(uR"(no\x)"));
}

TEST(Equivalent, BeyondTheLimitOfAPlainPathname)
{
    workspace work;
    std::u16string const directory = work.path(std::u16string(100, u'd')) + u'\\' +
                                     std::u16string(100, u'e') + u'\\' + std::u16string(100, u'f');
    work.make_file(directory + uR"(\a)");
    work.make_file(directory + uR"(\b)");
    EXPECT_TRUE(same(directory + uR"(\a)", directory + uR"(\A)"));
    EXPECT_FALSE(same(directory + uR"(\a)", directory + uR"(\b)"));
    EXPECT_FALSE(same(directory + uR"(\a)", directory + uR"(\no)"));
    EXPECT_FAILURE(equivalent(directory + uR"(\no)", directory + uR"(\none)"),
                   not_found(directory + uR"(\no)"))
        << "as it was given";
}

} // namespace
} // namespace fl::filesystem
