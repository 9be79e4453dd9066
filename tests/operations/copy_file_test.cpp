#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

// In calls with literals and options the namespace is told: those of the standard library
// would fit as well, found by its type of the options.

namespace fl::filesystem {
namespace {

using namespace test_support;
using std::filesystem::copy_options;
using test_support::failure;

TEST(CopyFile, TakesTextsAndPathsInAnyNotation)
{
    workspace work;
    work.make_file(work.path(u"a"), "content");
    work.change_directory(work.root());
    copy_file(u"a", u"text");
    copy_file(upath(u"a"), upath(u"path"));
    copy_file(uR"(\\?\)" + work.path(u"a"), std::u16string(u"./prefixed"));
    EXPECT_EQ(work.entries(work.root()), (names{u"a", u"path", u"prefixed", u"text"}));
    EXPECT_TRUE(work.is_file(work.path(u"text")));
}

TEST(CopyFile, OfAPathAndATextKeepsTheirOrderAndReplacesNothing)
{
    workspace work;
    work.make_file(work.path(u"a"), "content");
    std::u16string const to = work.path(u"to");
    copy_file(upath(work.path(u"a")), std::u16string_view(to));
    EXPECT_TRUE(work.is_file(to));
    EXPECT_FAILURE(copy_file(upath(work.path(u"a")), std::u16string_view(to)), file_exists(to));
}

TEST(CopyFile, ThatFailsForAnotherReasonThanAnExistingTargetSaysSo)
{
    workspace work;
    NEEDS(work.can_deny_rights(), "this workspace writes no access control lists");
    work.make_file(work.path(u"a"), "content");
    work.make_directory(work.path(u"closed"));
    work.deny_creation(work.path(u"closed"));
    for (copy_options const options : {copy_options::skip_existing, copy_options::update_existing})
        EXPECT_FAILURE(
            fl::filesystem::copy_file(work.path(u"a"), work.path(uR"(closed\b)"), options),
            denied(work.path(uR"(closed\b)")));
}

TEST(CopyFile, RefusesTwoWaysWithAnExistingTargetAheadOfAllElse)
{
    workspace work;
    auto const refusal =
        invalid_argument("Invalid combination selected: overwrite_if_exists, skip_existing & "
                         "update_existing cannot be used together");
    constexpr auto skip = copy_options::skip_existing;
    constexpr auto overwrite = copy_options::overwrite_existing;
    constexpr auto update = copy_options::update_existing;
    for (copy_options const options :
         {skip | overwrite, skip | update, overwrite | update, skip | overwrite | update}) {
        EXPECT_FAILURE(copy_file(work.path(u"no"), work.path(u"to"), options), refusal);
        EXPECT_FAILURE(copy_file(upath(), upath(), options), refusal);
    }
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(CopyFile, RefusesTwoWaysWithLinksFirst)
{
    auto const refusal = invalid_argument("Invalid combination selected: copy_symlinks & "
                                          "skip_symlinks cannot be used together");
    constexpr auto options = copy_options::copy_symlinks | copy_options::skip_symlinks;
    EXPECT_FAILURE(fl::filesystem::copy_file(u"", u"", options), refusal);
    EXPECT_FAILURE(fl::filesystem::copy_file(u"", u"",
                                             options | copy_options::skip_existing |
                                                 copy_options::overwrite_existing),
                   refusal);
}

TEST(CopyFile, NamesTheOneThatIsMissing)
{
    workspace work;
    work.make_file(work.path(u"a"));
    work.change_directory(work.root());
    EXPECT_FAILURE(copy_file(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy_file(upath(u"no/no"), upath(u"to")), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy_file(u"a", u"no/to"), not_found(uR"(no\to)"));
    EXPECT_EQ(work.entries(work.root()), names{u"a"});
}

TEST(CopyFile, FindsATargetThatIsThere)
{
    workspace work;
    work.make_file(work.path(u"a"), "a");
    work.make_file(work.path(u"b"), "b");
    EXPECT_FAILURE(copy_file(work.path(u"a"), work.path(u"b")), file_exists(work.path(u"b")));
    EXPECT_FAILURE(copy_file(work.path(u"a"), work.path(u"a")), file_exists(work.path(u"a")))
        << "onto itself";
    EXPECT_FAILURE(copy_file(work.path(u"a"), work.path(u"b"), copy_options::recursive),
                   file_exists(work.path(u"b")))
        << "other options don't count";
}

TEST(CopyFile, OntoItselfIsInItsOwnWay)
{
    workspace work;
    work.make_file(work.path(u"a"), "a");
    std::u16string const self = work.path(u"a");
    for (copy_options const options : {copy_options::skip_existing, copy_options::update_existing})
        EXPECT_FAILURE(copy_file(self, self, options), system_error(32, self, self));
}

TEST(CopyFile, DeclinesQuietlyAndOverwrites)
{
    workspace work;
    work.make_file(work.path(u"a"), "long");
    work.make_file(work.path(u"b"), "b");
    copy_file(work.path(u"a"), work.path(u"b"), copy_options::skip_existing);
    EXPECT_EQ(status(work.path(u"b")).get_size(), 1U);
    copy_file(work.path(u"a"), work.path(u"b"), copy_options::overwrite_existing);
    EXPECT_EQ(status(work.path(u"b")).get_size(), 4U);
}

} // namespace
} // namespace fl::filesystem
