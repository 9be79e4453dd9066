#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

/// Both overloads, and both orders, agree.
bool same(std::u16string const &left, std::u16string const &right)
{
    bool const answer = equivalent(left, right);
    EXPECT_EQ(equivalent(upath(left), upath(right)), answer);
    EXPECT_EQ(equivalent(right, left), answer);
    return answer;
}

TEST_IN_WORKSPACE(Equivalent, OneFileByManyNames)
{
    make({uR"(d\f)", uR"(d\e\)"});
    enter(u"d");
    std::u16string const file = at(uR"(d\f)");
    for (std::u16string const &other :
         {file, std::u16string(u"f"), at(u"d/./e/../f"), at(uR"(D\F)"), uR"(\\?\)" + file,
          file.substr(2), work.root().substr(0, 2) + u"f"})
        EXPECT_TRUE(same(file, other)) << printable(other);
    EXPECT_TRUE(same(at(u"d"), u"."));
    EXPECT_TRUE(same(at(uR"(d\)"), at(uR"(d\e\..)")));
    EXPECT_TRUE(same(work.root().substr(0, 3), uR"(\)"));
}

TEST_IN_WORKSPACE(Equivalent, DifferentFiles)
{
    make({{u"a", "same content"}, {u"b", "same content"}, u"d\\", u"e\\"});
    EXPECT_FALSE(same(at(u"a"), at(u"b")));
    EXPECT_FALSE(same(at(u"d"), at(u"e")));
    EXPECT_FALSE(same(at(u"a"), at(u"d")));
    EXPECT_FALSE(same(at(u"d"), work.root()));
}

TEST_IN_WORKSPACE(Equivalent, OneMissingIsFalse)
{
    make_file(u"f");
    for (char16_t const *missing : {u"no", uR"(no\x)", uR"(f\x)"})
        EXPECT_FALSE(same(at(u"f"), at(missing)));
    EXPECT_FALSE(same(work.root(), at(u"no")));
}

TEST_IN_WORKSPACE(Equivalent, TwoMissingNameTheFirst)
{
    make_file(u"f");
    EXPECT_FAILURE(equivalent(u"no", u"none"), not_found(u"no"));
    EXPECT_FAILURE(equivalent(u"none", u"no"), not_found(u"none"));
    EXPECT_FAILURE(equivalent(u"no", u"no"), not_found(u"no")) << "one name twice";
    EXPECT_FAILURE(equivalent(upath(uR"(no\x)"), upath(uR"(f\x)")), not_found(uR"(no\x)"));
}

TEST_IN_WORKSPACE(Equivalent, BeyondTheLimitOfAPlainPathname)
{
    std::u16string const directory = chain_of_size(work.root(), 350);
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
} // namespace fl::filesystem::tests
