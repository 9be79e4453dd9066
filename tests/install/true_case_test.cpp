#include "install/true_case.hpp"

#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

std::u16string lower(std::u16string text)
{
    for (char16_t &unit : text)
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit + 32);
    return text;
}

TEST_IN_WORKSPACE(RestoreTrueCase, TakesNamesFromTheDisk)
{
    std::u16string const stored = make_directory(uR"(Program Files\TooL)");
    std::wstring const expected = LR"(\\?\)" + wide(stored.substr(0, 1)) + wide(stored.substr(1));
    EXPECT_EQ(restore_true_case(wide(stored)), expected);
    std::u16string typed = stored;
    std::u16string const tail = lower(stored.substr(work.root().size()));
    typed.replace(work.root().size(), std::u16string::npos, tail);
    EXPECT_EQ(restore_true_case(wide(typed)), expected) << "in another case";
    typed[0] = lower(typed.substr(0, 1))[0];
    EXPECT_EQ(restore_true_case(wide(typed)), expected) << "the drive, too";
    EXPECT_EQ(restore_true_case(LR"(\\?\)" + wide(typed)), expected) << "with a long prefix";
}

TEST_IN_WORKSPACE(RestoreTrueCase, OfARootIsTheRoot)
{
    EXPECT_EQ(restore_true_case(LR"(c:\)"), LR"(\\?\C:\)");
    EXPECT_EQ(restore_true_case(LR"(\\?\c:\)"), LR"(\\?\C:\)");
}

TEST_IN_WORKSPACE(RestoreTrueCase, RefusesWhatHasNoRoot)
{
    auto const refusal = invalid_argument("Long UNC path without root not permitted");
    for (wchar_t const *text : {L"", L"a", LR"(a\b)", LR"(\a)", L"C:", L"C:a", LR"(\\server)",
                                LR"(\\.\COM1)", LR"(\\?\)", LR"(\\?\C:)", LR"(\\?\UNC\server)"})
        EXPECT_FAILURE(restore_true_case(text), refusal) << printable(units(text));
}

TEST_IN_WORKSPACE(RestoreTrueCase, OfAMissingNameFailsWithTheLongForm)
{
    std::wstring const text = wide(at(u"Missing"));
    EXPECT_FAILURE(restore_true_case(text), not_found(uR"(\\?\)" + at(u"Missing")));
}

} // namespace
} // namespace fl::filesystem::detail
