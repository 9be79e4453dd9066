#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

// In calls with literals and options the namespace is told: those of the standard library
// would fit as well, found by its type of the options.

namespace fl::filesystem::tests {
namespace {

using std::filesystem::copy_options;

TEST_IN_WORKSPACE(CopyFile, TakesTextsAndPathsInAnyNotation)
{
    make_file(u"a", "content");
    copy_file(u"a", u"text");
    copy_file(upath(u"a"), upath(u"path"));
    copy_file(uR"(\\?\)" + at(u"a"), std::u16string(u"./prefixed"));
    EXPECT_EQ(entries(), (names{u"a", u"path", u"prefixed", u"text"}));
    EXPECT_TRUE(work.is_file(at(u"text")));
}

TEST_IN_WORKSPACE(CopyFile, OfAPathAndATextKeepsTheirOrderAndReplacesNothing)
{
    make_file(u"a", "content");
    std::u16string const to = at(u"to");
    copy_file(upath(at(u"a")), std::u16string_view(to));
    EXPECT_TRUE(work.is_file(to));
    EXPECT_FAILURE(copy_file(upath(at(u"a")), std::u16string_view(to)), file_exists(to));
}

TEST_IN_WORKSPACE(CopyFile, ThatFailsForAnotherReasonThanAnExistingTargetSaysSo)
{
    NEEDS(work.can_deny_rights(), "this workspace writes no access control lists");
    make({{u"a", "content"}, u"closed\\"});
    work.deny_creation(at(u"closed"));
    for (copy_options const options : {copy_options::skip_existing, copy_options::update_existing})
        EXPECT_FAILURE(fl::filesystem::copy_file(at(u"a"), at(uR"(closed\b)"), options),
                       denied(at(uR"(closed\b)")));
}

TEST_IN_WORKSPACE(CopyFile, RefusesTwoWaysWithAnExistingTargetAheadOfAllElse)
{
    auto const refusal =
        invalid_argument("Invalid combination selected: overwrite_if_exists, skip_existing & "
                         "update_existing cannot be used together");
    constexpr auto skip = copy_options::skip_existing;
    constexpr auto overwrite = copy_options::overwrite_existing;
    constexpr auto update = copy_options::update_existing;
    for (copy_options const options :
         {skip | overwrite, skip | update, overwrite | update, skip | overwrite | update}) {
        EXPECT_FAILURE(copy_file(at(u"no"), at(u"to"), options), refusal);
        EXPECT_FAILURE(copy_file(upath(), upath(), options), refusal);
    }
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(CopyFile, RefusesTwoWaysWithLinksFirst)
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

TEST_IN_WORKSPACE(CopyFile, NamesTheOneThatIsMissing)
{
    make_file(u"a");
    EXPECT_FAILURE(copy_file(u"no", u"to"), not_found(u"no"));
    EXPECT_FAILURE(copy_file(upath(u"no/no"), upath(u"to")), not_found(uR"(no\no)"));
    EXPECT_FAILURE(copy_file(u"a", u"no/to"), not_found(uR"(no\to)"));
    EXPECT_EQ(entries(), names{u"a"});
}

TEST_IN_WORKSPACE(CopyFile, FindsATargetThatIsThere)
{
    make({{u"a", "a"}, {u"b", "b"}});
    EXPECT_FAILURE(copy_file(at(u"a"), at(u"b")), file_exists(at(u"b")));
    EXPECT_FAILURE(copy_file(at(u"a"), at(u"a")), file_exists(at(u"a"))) << "onto itself";
    EXPECT_FAILURE(copy_file(at(u"a"), at(u"b"), copy_options::recursive), file_exists(at(u"b")))
        << "other options don't count";
}

TEST_IN_WORKSPACE(CopyFile, OntoItselfIsInItsOwnWay)
{
    make_file(u"a", "a");
    std::u16string const self = at(u"a");
    for (copy_options const options : {copy_options::skip_existing, copy_options::update_existing})
        EXPECT_FAILURE(copy_file(self, self, options), system_error(32, self, self));
}

TEST_IN_WORKSPACE(CopyFile, DeclinesQuietlyAndOverwrites)
{
    make({{u"a", "long"}, {u"b", "b"}});
    copy_file(at(u"a"), at(u"b"), copy_options::skip_existing);
    EXPECT_EQ(status(at(u"b")).get_size(), 1U);
    copy_file(at(u"a"), at(u"b"), copy_options::overwrite_existing);
    EXPECT_EQ(status(at(u"b")).get_size(), 4U);
}

} // namespace
} // namespace fl::filesystem::tests
