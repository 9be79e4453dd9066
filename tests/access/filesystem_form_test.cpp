#include "access/filesystem_form.hpp"

#include "access/absolute.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST_IN_WORKSPACE(MakeFilesystemForm, GetsThePrefixBeyond247Units)
{
    char16_t const *const drive = uR"(C:\)";
    for (std::size_t const size : {4U, 246U, 247U})
        EXPECT_EQ(make_filesystem_form(upath(of_size(drive, size))), wide(of_size(drive, size)));
    for (std::size_t const size : {248U, 249U, 1000U})
        EXPECT_EQ(make_filesystem_form(upath(of_size(drive, size))),
                  LR"(\\?\)" + wide(of_size(drive, size)));
}

TEST_IN_WORKSPACE(MakeFilesystemForm, OfAShareBeyond247Units)
{
    char16_t const *const share = uR"(\\server\share\)";
    EXPECT_EQ(make_filesystem_form(upath(of_size(share, 247))), wide(of_size(share, 247)));
    EXPECT_EQ(make_filesystem_form(upath(of_size(share, 248))),
              LR"(\\?\UNC\)" + wide(of_size(share, 248).substr(2)));
}

TEST_IN_WORKSPACE(MakeFilesystemForm, CountsTheAbsoluteText)
{
    std::size_t const head = work.root().size() + 1;
    for (std::size_t const size : {246U, 247U, 248U}) {
        std::u16string const relative(size - head, u'a');
        std::wstring const prefix = size > 247 ? LR"(\\?\)" : L"";
        EXPECT_EQ(make_filesystem_form(upath(relative)), prefix + wide(at(relative))) << size;
    }
}

TEST_IN_WORKSPACE(MakeFilesystemForm, OfNothingIsNothing)
{
    EXPECT_EQ(make_filesystem_form(upath()), L"");
}

TEST_IN_WORKSPACE(MakeFilesystemForm, OfALongPrefixedTextIsTheFormWithoutIt)
{
    // a path object has lost the prefix, and gets it back only where it is needed
    EXPECT_EQ(make_filesystem_form(upath(uR"(\\?\C:\x)")), LR"(C:\x)");
    EXPECT_EQ(make_filesystem_form(upath(of_size(uR"(\\?\C:\)", 252))),
              wide(of_size(uR"(\\?\C:\)", 252)));
}

TEST_IN_WORKSPACE(MakeFilesystemForm, LeavesAPrefixThatNativeFormUncovers)
{
    // a server named `?` twice over: what is left begins like a long prefix
    std::u16string const odd = uR"(\\?\UNC\?\UNC\?\foo\)" + std::u16string(250, u'a');
    EXPECT_EQ(make_filesystem_form(upath(odd)), LR"(\\?\foo\)" + std::wstring(250, L'a'));
}

TEST_IN_WORKSPACE(MakeFilesystemForm, RefusesALongPathnameThatCantHaveThePrefix)
{
    EXPECT_FAILURE(make_filesystem_form(upath(of_size(uR"(\\server)", 248))),
                   invalid_argument("Long UNC path without root not permitted"));
}

TEST(JoinWithBase, KeepsTextAndFlagOfWhatItReturns)
{
    upath const relative(u"a", false);
    EXPECT_FALSE(join_with_base(relative, upath()).form_flag()) << "a copy of the path";
    EXPECT_EQ(join_with_base(relative, upath()).native(), u"a");
    upath const joined = join_with_base(upath(u"a"), upath(uR"(C:\b)", false));
    EXPECT_EQ(joined.native(), uR"(C:\b\a)");
    EXPECT_FALSE(joined.form_flag()) << "the base's flag";
    upath const rooted = join_with_base(upath(uR"(\a)", false), upath(uR"(C:\b)"));
    EXPECT_EQ(rooted.native(), uR"(\a)") << "can't be joined: a copy of the path";
    EXPECT_FALSE(rooted.form_flag());
    EXPECT_EQ(join_with_base(upath(), upath(uR"(C:\b)")).native(), uR"(C:\b)");
}

TEST(JoinWithBase, TestsAsTheStandardDoes)
{
    auto const refusal = invalid_argument("Invalid path type for base path");
    upath const relative(u"a");
    for (char16_t const *base : {u"b", u"C:", u"C:b", uR"(\b)"})
        EXPECT_FAILURE(join_with_base(relative, upath(base)), refusal);
    for (char16_t const *base : {uR"(\\server)", uR"(\\.\COM1)", uR"(\??\C:\b)"})
        EXPECT_EQ(join_with_base(relative, upath(base)).native(), base + std::u16string(u"\\a"));
}

} // namespace
} // namespace fl::filesystem::detail
