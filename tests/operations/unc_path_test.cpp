#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_IN_WORKSPACE(GetUncPath, OfALocalPathnameIsTheStringForTheSystemWhereThatIsTolerated)
{
    make_directory(u"dir");
    std::pair<std::u16string, std::u16string> const cases[] = {
        {at(u"file"), at(u"file")},
        {u"file", at(u"file")},
        {u"a/./b", at(uR"(a\b)")},
        {uR"(dir\..\file)", at(u"file")},
        {uR"(\\?\)" + work.root(), work.root()},
        {work.root().substr(0, 3), work.root().substr(0, 3)},
        {work.root().substr(0, 2) + u"x", at(u"x")},
    };
    for (auto const &[text, expected] : cases) {
        EXPECT_EQ(get_unc_path(text, true), expected) << printable(text);
        EXPECT_EQ(get_unc_path(upath(text), true).native(), expected) << printable(text);
    }
}

TEST_IN_WORKSPACE(GetUncPath, OfALocalPathnameIsAFailureWithoutACodeWhereThatIsNot)
{
    make_file(u"file");
    for (char16_t const *text : {u"file", u"missing"}) {
        auto const expected = system_error(0, at(text));
        EXPECT_FAILURE(get_unc_path(text, false), expected);
        EXPECT_FAILURE(get_unc_path(upath(text), false), expected);
        EXPECT_FAILURE(get_unc_path(at(text), false), expected);
    }
}

// Providers take drives; a universal name isn't on one, whoever wrote it.
TEST_IN_WORKSPACE(GetUncPath, OfAUniversalNameIsNoneOfTheProviders)
{
    std::u16string const name = uR"(\\fl-server\share\file)";
    EXPECT_EQ(get_unc_path(name, true), name);
    EXPECT_EQ(get_unc_path(upath(name), true).native(), name);
    EXPECT_FAILURE(get_unc_path(name, false), system_error(0, name));
}

TEST_IN_WORKSPACE(GetUncPath, OfALongPathnameKeepsItsPrefixAsATextOnly)
{
    std::u16string const file = chain_of_size(work.root(), 450);
    EXPECT_EQ(get_unc_path(file, true), uR"(\\?\)" + file);
    EXPECT_EQ(get_unc_path(upath(file), true).native(), file);
    EXPECT_FAILURE(get_unc_path(file, false), system_error(0, uR"(\\?\)" + file));
}

TEST_IN_WORKSPACE(GetUncPath, OfWhatCantBecomeAStringForTheSystemFailsInEitherCase)
{
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
} // namespace fl::filesystem::tests
