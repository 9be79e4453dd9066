#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

TEST(GetUncPath, OfALocalPathnameIsTheStringForTheSystemWhereThatIsTolerated)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.change_directory(work.root());
    struct
    {
        std::u16string text;
        std::u16string expected;
    } const cases[] = {
        {work.path(u"file"), work.path(u"file")},
        {u"file", work.path(u"file")},
        {u"a/./b", work.path(uR"(a\b)")},
        {uR"(dir\..\file)", work.path(u"file")},
        {uR"(\\?\)" + work.root(), work.root()},
        {work.root().substr(0, 3), work.root().substr(0, 3)},
        {work.root().substr(0, 2) + u"x", work.path(u"x")},
    };
    for (auto const &row : cases) {
        EXPECT_EQ(get_unc_path(row.text, true), row.expected) << printable(row.text);
        EXPECT_EQ(get_unc_path(upath(row.text), true).native(), row.expected)
            << printable(row.text);
    }
}

TEST(GetUncPath, OfALocalPathnameIsAFailureWithoutACodeWhereThatIsNot)
{
    workspace work;
    work.make_file(work.path(u"file"));
    work.change_directory(work.root());
    for (char16_t const *text : {u"file", u"missing"}) {
        test_support::failure const expected = system_error(0, work.path(text));
        EXPECT_FAILURE(get_unc_path(text, false), expected);
        EXPECT_FAILURE(get_unc_path(upath(text), false), expected);
        EXPECT_FAILURE(get_unc_path(work.path(text), false), expected);
    }
}

// Providers take drives; a universal name isn't on one, whoever wrote it.
TEST(GetUncPath, OfAUniversalNameIsNoneOfTheProviders)
{
    workspace work;
    std::u16string const name = uR"(\\fl-server\share\file)";
    EXPECT_EQ(get_unc_path(name, true), name);
    EXPECT_EQ(get_unc_path(upath(name), true).native(), name);
    EXPECT_FAILURE(get_unc_path(name, false), system_error(0, name));
}

TEST(GetUncPath, OfALongPathnameKeepsItsPrefixAsATextOnly)
{
    workspace work;
    std::u16string const name(200, u'n');
    std::u16string const file = work.path(name + u'\\' + name);
    EXPECT_EQ(get_unc_path(file, true), uR"(\\?\)" + file);
    EXPECT_EQ(get_unc_path(upath(file), true).native(), file);
    EXPECT_FAILURE(get_unc_path(file, false), system_error(0, uR"(\\?\)" + file));
}

TEST(GetUncPath, OfWhatCantBecomeAStringForTheSystemFailsInEitherCase)
{
    workspace work;
    std::u16string const server = uR"(\\server)";
    auto const expected =
        failure_of([&] { detail::windows::make_native_access_form_bridge(server); });
    ASSERT_TRUE(expected);
    for (bool const tolerant : {false, true}) {
        EXPECT_FAILURE(get_unc_path(server, tolerant), expected);
        EXPECT_FAILURE(get_unc_path(upath(server), tolerant), expected);
    }
}

} // namespace
} // namespace fl::filesystem
