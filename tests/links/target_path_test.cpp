// The kind and text of a link out of its bytes. No disk takes part.

#include <fl/filesystem.hpp>

#include "links/link_cases.hpp"
#include "support/names.hpp"

#include <algorithm>
#include <iterator>

namespace fl::filesystem::tests {
namespace {

struct decoded
{
    windows::attrib_link_type link_type{};
    std::u16string target;

    friend bool operator==(decoded const &, decoded const &) = default;
};

std::ostream &operator<<(std::ostream &out, decoded const &shown)
{
    out << std::hex << shown.link_type << std::dec << " {";
    for (char16_t const unit : shown.target)
        out << static_cast<unsigned int>(unit) << ' ';
    return out << '}';
}

decoded decode(reparse_data const &data)
{
    decoded result;
    result.target = units(windows::get_target_path_bridge(result.link_type, data));
    return result;
}

TEST(LinkTypes, HaveFixedValues)
{
    EXPECT_EQ(windows::link_type_none, 0U);
    EXPECT_EQ(windows::link_type_volume_mount, 4U);
    EXPECT_EQ(windows::link_type_dedup_file, 5U);
    EXPECT_EQ(windows::link_type_dfs_directory, 6U);
    EXPECT_EQ(windows::link_type_symlink_absolute, 4098U);
    EXPECT_EQ(windows::link_type_symlink_relative, 4354U);
    EXPECT_EQ(windows::link_type_mount_point, 4099U);
    EXPECT_EQ(sizeof(reparse_data), 16392U);
    for (auto const type :
         {windows::link_type_none, volume_mount, windows::link_type_dedup_file,
          windows::link_type_dfs_directory, absolute_link, relative_link, junction})
        EXPECT_EQ((type & 0x100) != 0, type == relative_link) << type;
}

TEST(TargetPath, Table)
{
    for (link_case const &row : link_cases) {
        decoded const expected{row.link_type, row.target};
        EXPECT_EQ(decode(data_of(row.tag, row.substitute, row.print, row.flags)), expected)
            << row.why;
    }
}

// The rows of the documentation.
TEST(TargetPath, DocumentedRows)
{
    EXPECT_EQ(decode(data_of(symlink_tag, u"..\\x", u"..\\x", 1)),
              (decoded{relative_link, u"..\\x"}));
    EXPECT_EQ(decode(data_of(symlink_tag, u"\\??\\C:\\x", u"C:/x")),
              (decoded{absolute_link, u"C:\\x"}));
    EXPECT_EQ(decode(data_of(mount_point_tag, u"\\??\\C:\\x", u"C:\\x\\")),
              (decoded{junction, u"C:\\x\\"}));
    EXPECT_EQ(decode(data_of(mount_point_tag, u"\\??\\C:\\x\\", u"")),
              (decoded{junction, u"C:\\x"}));
    EXPECT_EQ(decode(data_of(mount_point_tag, u"\\??\\Volume{1}\\", u"")),
              (decoded{volume_mount, u""}));
}

struct refused_case
{
    char16_t const *name;
    char const *why;
};

constexpr refused_case refused_cases[] = {
    {u"\u00E9C:\\directory", "the first unit"},
    {u"\\??\\Vol\u00FCme{1}\\", "one of the ten that are compared"},
    {
        u"\\??\\Volum\u00C9",
        "the last of them, in a name of eleven",
    },
};

TEST(TargetPath, ANameBeyondAsciiCantBeCompared)
{
    std::u16string const padding = u"xx"; // more than ten units in each
    for (refused_case const &row : refused_cases) {
        reparse_data const data = data_of(mount_point_tag, row.name + padding, u"");
        EXPECT_THROW(decode(data), foundation::ustring::CtypeInvalidCharacter) << row.why;
        EXPECT_NO_THROW(decode(data_of(symlink_tag, row.name + padding, u""))) << row.why;
    }
}

/// Names that stand where no system puts them. The buffer holds `ab` and then zeros.
struct place_case
{
    std::uint32_t tag;
    name_place substitute, print;
    std::size_t size; ///< of the text that comes out
    char16_t first;   ///< its first unit, if any
    char const *why;
};

constexpr place_case place_cases[] = {
    {symlink_tag, {0, 0}, {0, 4}, 2, u'a', "in order"},
    {symlink_tag, {0, 0}, {1, 4}, 2, u'a', "the lowest bit of an offset is ignored"},
    {symlink_tag, {0, 0}, {2, 2}, 1, u'b', "the second unit"},
    {symlink_tag, {0, 0}, {3, 2}, 1, u'b', "the same, odd"},
    {symlink_tag, {0, 0}, {0, 3}, 1, u'a', "half a unit at the end is none"},
    {symlink_tag, {0, 4}, {0, 1}, 0, 0, "half a unit is a print name, without a unit"},
    {mount_point_tag, {0, 0}, {0, 3}, 1, u'a', "of a mount point likewise"},
    {mount_point_tag, {3, 2}, {0, 0}, 1, u'b', "and of a substitute name"},
    {symlink_tag, {0, 0}, {0, 0xFFFF}, 8186, u'a', "longer than the buffer"},
    {mount_point_tag, {0, 0xFFFF}, {0, 0}, 8188, u'a', "longer than the buffer"},
    {symlink_tag, {0, 0}, {16370, 2}, 1, 0, "the last unit of the buffer"},
    {symlink_tag, {0, 0}, {16370, 4}, 1, 0, "one more than that"},
    {symlink_tag, {0, 0}, {16372, 2}, 0, 0, "right behind the buffer"},
    {mount_point_tag, {0, 0}, {16374, 4}, 1, 0, "four bytes later in a mount point"},
    {mount_point_tag, {0, 0}, {16376, 2}, 0, 0, "right behind the buffer"},
    {symlink_tag, {0, 0}, {0xFFFF, 0xFFFF}, 0, 0, "far behind the buffer"},
    {mount_point_tag, {0xFFFE, 0xFFFE}, {0, 0}, 0, 0, "far behind the buffer"},
};

TEST(TargetPath, NamesEndWithTheBuffer)
{
    for (place_case const &row : place_cases) {
        reparse_data data = data_of(row.tag, row.substitute, row.print);
        put_text(data, names_at(row.tag), u"ab");
        std::u16string const target = decode(data).target;
        EXPECT_EQ(target.size(), row.size) << row.why;
        if (row.size > 0 && !target.empty()) {
            EXPECT_EQ(target.front(), row.first) << row.why;
        }
    }
}

// A NUL is a unit as any other: the length tells where a name ends.
TEST(TargetPath, KeepsNulsAndSurrogates)
{
    std::u16string const name{u'a', u'\0', 0xD83D, u'b', 0xFFFF};
    EXPECT_EQ(decode(data_of(symlink_tag, u"", name, 1)), (decoded{relative_link, name}));
    EXPECT_EQ(decode(data_of(mount_point_tag, u"", name)), (decoded{junction, name}));
}

TEST(TargetPath, OfNothingButSetBits)
{
    reparse_data data;
    std::fill(std::begin(data.buffer), std::end(data.buffer), static_cast<unsigned char>(0xFF));
    EXPECT_EQ(decode(data), (decoded{windows::link_type_none, u""}));
    for (std::uint32_t const tag : {symlink_tag, mount_point_tag}) {
        put(data, 0, 4, tag);
        EXPECT_EQ(decode(data).target, u"") << "both names begin behind the buffer";
        EXPECT_EQ(decode(data).link_type, tag == symlink_tag ? absolute_link : junction);
    }
}

// What must hold of any bytes. The sanitizers look at where it reads.
TEST(TargetPath, OfRandomBytes)
{
    std::mt19937 numbers(20240501);
    int compared = 0;
    int beyond_ascii = 0;
    for (int round = 0; round < 4000; ++round) {
        reparse_data const data = random_reparse_data(numbers);
        try {
            decoded const result = decode(data);
            EXPECT_LE(result.target.size(), 8188U);
            EXPECT_EQ(result.target.find(u'/'), std::u16string::npos);
            bool const has_text = result.link_type == junction || (result.link_type & 0xFFF) == 2;
            EXPECT_TRUE(has_text || result.target.empty());
            ++compared;
        } catch (foundation::ustring::CtypeInvalidCharacter const &) {
            ++beyond_ascii;
        }
    }
    EXPECT_GT(compared, 1000);
    EXPECT_GT(beyond_ascii, 100);
}

} // namespace
} // namespace fl::filesystem::tests
