#include <fl/filesystem/pathname_traits.hpp>

#include "support/names.hpp"

#include <type_traits>

namespace fl::filesystem::tests {
namespace {

using narrow_traits = pathname_traits<char16_t>;
using wide_traits = pathname_traits<wchar_t>;

TEST(PathnameTraits, Characters)
{
    EXPECT_EQ(narrow_traits::PATHNAME_SEPARATOR_CHARACTER, char16_t{0x5C});
    EXPECT_EQ(narrow_traits::VOLUME_SEPARATOR_CHARACTER, char16_t{0x3A});
    EXPECT_EQ(narrow_traits::DOT_CHARACTER, char16_t{0x2E});
    EXPECT_EQ(narrow_traits::GENERIC_PATHNAME_SEPARATOR_CHARACTER, char16_t{0x2F});
    EXPECT_EQ(narrow_traits::PATH_SEPARATOR_CHAR, char16_t{0x3B});
    EXPECT_EQ(wide_traits::PATHNAME_SEPARATOR_CHARACTER, wchar_t{0x5C});
    EXPECT_EQ(wide_traits::VOLUME_SEPARATOR_CHARACTER, wchar_t{0x3A});
    EXPECT_EQ(wide_traits::DOT_CHARACTER, wchar_t{0x2E});
    EXPECT_EQ(wide_traits::GENERIC_PATHNAME_SEPARATOR_CHARACTER, wchar_t{0x2F});
    EXPECT_EQ(wide_traits::PATH_SEPARATOR_CHAR, wchar_t{0x3B});
}

struct constant_case
{
    char16_t const *const *narrow_constant;
    wchar_t const *const *wide_constant;
    char16_t const *expected;
    std::size_t length;
};

// Taken by address: the constants are data of the library, not only of its headers.
constant_case const constant_cases[] = {
    {&narrow_traits::PATHNAME_SEPARATOR, &wide_traits::PATHNAME_SEPARATOR, u"\\", 1},
    {&narrow_traits::ROOT_PATHNAME, &wide_traits::ROOT_PATHNAME, u"\\", 1},
    {&narrow_traits::LONG_PATHNAME_PREFIX, &wide_traits::LONG_PATHNAME_PREFIX, u"\\\\?\\", 4},
    {&narrow_traits::LONG_UNC_PATHNAME_PREFIX, &wide_traits::LONG_UNC_PATHNAME_PREFIX,
     u"\\\\?\\UNC\\", 8},
    {&narrow_traits::UNC_PREFIX, &wide_traits::UNC_PREFIX, u"\\\\", 2},
    {&narrow_traits::VOLUME_SEPARATOR, &wide_traits::VOLUME_SEPARATOR, u":", 1},
    {&narrow_traits::CURRENT_DIRECTORY, &wide_traits::CURRENT_DIRECTORY, u".", 1},
    {&narrow_traits::PARENT_DIRECTORY, &wide_traits::PARENT_DIRECTORY, u"..", 2},
    {&narrow_traits::DEVICE_PATHNAME_PREFIX, &wide_traits::DEVICE_PATHNAME_PREFIX, u"\\\\.\\", 4},
    {&narrow_traits::MOUNT_POINT_PREFIX, &wide_traits::MOUNT_POINT_PREFIX, u"\\??\\", 4},
    {&narrow_traits::VOLUME_NAME_PREFIX, &wide_traits::VOLUME_NAME_PREFIX, u"\\??\\Volume", 10},
    {&narrow_traits::PATH_SEPARATOR, &wide_traits::PATH_SEPARATOR, u";", 1},
};

TEST(PathnameTraits, Texts)
{
    for (auto const &row : constant_cases) {
        std::u16string const expected = row.expected;
        EXPECT_EQ(std::u16string(*row.narrow_constant), expected);
        EXPECT_EQ(std::wstring(*row.wide_constant), wide(expected));
        EXPECT_EQ(expected.size(), row.length);
    }
}

TEST(PathnameTraits, UpathConstants)
{
    // by address, as above
    struct
    {
        char16_t const *const *constant;
        char16_t const *expected;
    } const cases[] = {
        {&upath_constant::GENERIC_PATHNAME_SEPARATOR, u"/"},
        {&upath_constant::PATHNAME_SEPARATOR, u"\\"},
        {&upath_constant::PATH_SEPARATOR, u";"},
        {&upath_constant::FILE_EXTENSION_SEPARATOR, u"."},
        {&upath_constant::CURRENT_DIRECTORY, u"."},
        {&upath_constant::PARENT_DIRECTORY, u".."},
        {&upath_constant::WILD_CARD, u"*"},
    };
    for (auto const &row : cases)
        EXPECT_EQ(std::u16string(*row.constant), row.expected);
}

#define FL_TEST_DETECT(member)                                                                     \
    template <typename T, typename = void>                                                         \
    constexpr bool has_##member = false;                                                           \
    template <typename T>                                                                          \
    constexpr bool has_##member<T, std::void_t<decltype(T::member)>> = true;

FL_TEST_DETECT(LONG_PATHNAME_PREFIX)
FL_TEST_DETECT(LONG_UNC_PATHNAME_PREFIX)
FL_TEST_DETECT(UNC_PREFIX)
FL_TEST_DETECT(DEVICE_PATHNAME_PREFIX)
FL_TEST_DETECT(MOUNT_POINT_PREFIX)
FL_TEST_DETECT(VOLUME_NAME_PREFIX)
FL_TEST_DETECT(WILD_CARD)
FL_TEST_DETECT(FILE_EXTENSION_SEPARATOR)
#undef FL_TEST_DETECT

TEST(PathnameTraits, PrefixesAndWildCardStandInOneStructureEach)
{
    EXPECT_FALSE(has_LONG_PATHNAME_PREFIX<upath_constant>);
    EXPECT_FALSE(has_LONG_UNC_PATHNAME_PREFIX<upath_constant>);
    EXPECT_FALSE(has_UNC_PREFIX<upath_constant>);
    EXPECT_FALSE(has_DEVICE_PATHNAME_PREFIX<upath_constant>);
    EXPECT_FALSE(has_MOUNT_POINT_PREFIX<upath_constant>);
    EXPECT_FALSE(has_VOLUME_NAME_PREFIX<upath_constant>);
    EXPECT_TRUE(has_UNC_PREFIX<wide_traits>) << "the detection works";
    EXPECT_FALSE(has_WILD_CARD<narrow_traits> || has_WILD_CARD<wide_traits>);
    EXPECT_FALSE(has_FILE_EXTENSION_SEPARATOR<narrow_traits> ||
                 has_FILE_EXTENSION_SEPARATOR<wide_traits>);
    EXPECT_TRUE(has_WILD_CARD<upath_constant>);
}

TEST(PathnameTraits, StructuresAreEmptyAndAssignable)
{
    EXPECT_TRUE(std::is_empty_v<narrow_traits>);
    EXPECT_TRUE(std::is_empty_v<wide_traits>);
    EXPECT_TRUE(std::is_empty_v<upath_constant>);
    EXPECT_TRUE(std::is_trivially_copy_assignable_v<upath_constant>);
    EXPECT_TRUE(std::is_trivially_move_assignable_v<upath_constant>);
    narrow_traits left;
    narrow_traits right;
    EXPECT_EQ(&(left = right), &left);
    EXPECT_EQ(&(left = std::move(right)), &left);
    wide_traits wide_left;
    wide_traits wide_right;
    EXPECT_EQ(&(wide_left = wide_right), &wide_left);
    EXPECT_EQ(&(wide_left = std::move(wide_right)), &wide_left);
}

TEST(PathnameTraits, TildeIsAnOrdinaryCharacter)
{
    EXPECT_EQ(narrow_traits::replace_tilde_with_home_dir(u"~\\x"), u"~\\x");
    EXPECT_EQ(wide_traits::replace_tilde_with_home_dir(L"~"), L"~");
    EXPECT_EQ(narrow_traits::replace_tilde_with_home_dir(u""), u"");
}

TEST(PathnameTraits, ConversionCopiesUnits)
{
    std::u16string const odd{u'a', char16_t{0xD800}, char16_t{0}, char16_t{0xFFFF}, u'b'};
    std::wstring const wide_odd = narrow_traits::to_filesystem(odd);
    ASSERT_EQ(wide_odd.size(), odd.size());
    EXPECT_EQ(static_cast<unsigned int>(wide_odd[1]), 0xD800U);
    EXPECT_EQ(static_cast<unsigned int>(wide_odd[3]), 0xFFFFU);
    EXPECT_EQ(narrow_traits::from_filesystem(wide_odd), odd);
    EXPECT_EQ(wide_traits::to_filesystem(wide_odd), wide_odd);
    EXPECT_EQ(wide_traits::from_filesystem(wide_odd), wide_odd);
    EXPECT_EQ(narrow_traits::to_filesystem(u""), L"");
}

} // namespace
} // namespace fl::filesystem::tests
