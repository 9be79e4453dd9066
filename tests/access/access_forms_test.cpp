#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/windows.hpp>

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST(ToFilesystem, CopiesUnits)
{
    EXPECT_EQ(to_filesystem(u""), L"");
    EXPECT_EQ(to_filesystem(uR"(C:\x)"), LR"(C:\x)");
    std::u16string const odd{char16_t{0xDC00}, char16_t{0}, char16_t{0xFFFF}};
    ASSERT_EQ(to_filesystem(odd).size(), 3U);
    EXPECT_EQ(from_filesystem(to_filesystem(odd)), odd) << "a lone surrogate comes back";
}

TEST(MakeAccessForm, DriveAtTheLimit)
{
    wchar_t const *const drive = LR"(C:\)";
    EXPECT_EQ(make_access_form(of_size(drive, 258)), of_size(drive, 258));
    EXPECT_EQ(make_access_form(of_size(drive, 259)), of_size(drive, 259));
    EXPECT_EQ(make_access_form(of_size(drive, 260)), LR"(\\?\)" + of_size(drive, 260));
    EXPECT_EQ(make_access_form(of_size(drive, 261)).size(), 265U);
}

TEST(MakeAccessForm, ServerAtTheLimit)
{
    wchar_t const *const share = LR"(\\server\share\)";
    EXPECT_EQ(make_access_form(of_size(share, 259)), of_size(share, 259));
    EXPECT_EQ(make_access_form(of_size(share, 260)),
              LR"(\\?\UNC\)" + of_size(share, 260).substr(2));
    EXPECT_EQ(make_access_form(of_size(share, 260)).size(), 266U);
    EXPECT_EQ(make_access_form(of_size(L"//server/share/", 260)),
              LR"(\\?\UNC\)" + of_size(L"server/share/", 258))
        << "either separator";
}

TEST(MakeAccessForm, ExamplesOfTheHeader)
{
    EXPECT_EQ(make_access_form(LR"(C:\)" + std::wstring(256, L'a')).size(), 259U);
    EXPECT_EQ(make_access_form(LR"(C:\)" + std::wstring(257, L'a')).size(), 264U);
}

TEST(MakeAccessForm, AMarkWithoutASeparatorBeginsAServersName)
{
    EXPECT_EQ(make_access_form(of_size(LR"(\\?x\)", 260)), LR"(\\?\UNC\)" + of_size(L"?x\\", 258));
    EXPECT_EQ(make_access_form(of_size(LR"(\\?\UNC\s\)", 260)),
              LR"(\\?\)" + of_size(LR"(\\?\UNC\s\)", 260))
        << "and a prefix is not looked for";
}

TEST(MakeAccessForm, WithoutARootNeverGetsAPrefix)
{
    for (wchar_t const *head : {L"", L"\\", L"\\\\.\\"})
        EXPECT_EQ(make_access_form(of_size(head, 300)), of_size(head, 300));
    EXPECT_EQ(make_access_form(L""), L"");
}

TEST(MakeAccessForm, DoesNotLookForAPrefix)
{
    std::wstring const prefixed = of_size(LR"(\\?\C:\)", 260);
    EXPECT_EQ(make_access_form(prefixed), LR"(\\?\)" + prefixed);
    EXPECT_EQ(make_access_form(prefixed.substr(0, 259)), prefixed.substr(0, 259));
    std::wstring const relative = of_size(L"C:", 260);
    EXPECT_EQ(make_access_form(relative), LR"(\\?\)" + relative) << "any root of two units counts";
}

TEST(AddLongPathPrefixBridge, GoesByTheServerFlag)
{
    using namespace windows;
    EXPECT_EQ(add_long_path_prefix_bridge(LR"(C:\x)", 4, PATH_TYPE_DRIVE_ABSOLUTE), LR"(\\?\C:\x)");
    EXPECT_EQ(add_long_path_prefix_bridge(LR"(\\s\x)", 5, PATH_TYPE_UNC), LR"(\\?\UNC\s\x)");
    EXPECT_EQ(add_long_path_prefix_bridge(LR"(\\s\x)", 5, PATH_TYPE_UNC_NO_ROOT),
              LR"(\\?\UNC\s\x)");
    EXPECT_EQ(add_long_path_prefix_bridge(L"x", 1, PATH_TYPE_RELATIVE), LR"(\\?\x)")
        << "it doesn't look at the text";
    EXPECT_EQ(add_long_path_prefix_bridge(L"x", 1, PATH_TYPE_DEVICE), LR"(\\?\x)");
}

TEST(AddLongPathPrefixBridge, CountsOnlyTheGivenLength)
{
    using namespace windows;
    EXPECT_EQ(add_long_path_prefix_bridge(LR"(C:\xyz)", 4, PATH_TYPE_DRIVE_ABSOLUTE),
              LR"(\\?\C:\x)");
    EXPECT_EQ(add_long_path_prefix_bridge(LR"(\\server\share)", 8, PATH_TYPE_UNC),
              LR"(\\?\UNC\server)");
    EXPECT_EQ(add_long_path_prefix_bridge(LR"(C:\x)", 400, PATH_TYPE_DRIVE_ABSOLUTE),
              LR"(\\?\C:\x)")
        << "never beyond the text";
    EXPECT_EQ(add_long_path_prefix_bridge(L"\\", 1, PATH_TYPE_UNC), LR"(\\?\UNC\)");
}

} // namespace
} // namespace fl::filesystem::detail
