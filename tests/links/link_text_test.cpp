// Reparse data as the library reads it inside: tags, and what it costs.

#include "links/reparse_data.hpp"

#include <fl/filesystem/windows.hpp>

#include "links/link_cases.hpp"
#include "platform/reparse_point.hpp"
#include "support/allocations.hpp"
#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST(ReparseTag, Table)
{
    for (link_case const &row : link_cases)
        EXPECT_EQ(reparse_tag(data_of(row.tag, row.substitute, row.print, row.flags)), row.tag)
            << row.why;
}

TEST(LinkName, OfWhatIsNoLinkIsEmpty)
{
    for (link_case const &row : link_cases) {
        bool const is_link = row.tag == symlink_tag || row.tag == mount_point_tag;
        std::u16string_view const name = *row.print == 0 ? row.substitute : row.print;
        EXPECT_EQ(link_name(data_of(row.tag, row.substitute, row.print, row.flags).buffer),
                  is_link ? wide(name) : L"")
            << row.why;
    }
}

TEST(LinkName, BehindTheEndOfTheDataEverythingIsZero)
{
    unsigned char const bytes[] = {0x0C, 0x00};
    EXPECT_EQ(reparse_tag(bytes), 0x0CU);
    EXPECT_EQ(reparse_size(bytes), 2U);
    EXPECT_EQ(symbolic_link_flags(bytes), 0U);
    EXPECT_EQ(link_name(bytes), L"");
    unsigned char const reserved[64] = {0x0C, 0x00, 0x00, 0xA0, 0x01, 0x00, 0x01};
    EXPECT_EQ(reparse_size(reserved), 9U) << "what is reserved behind the length is no part of it";
    reparse_data const whole = data_of(symlink_tag, u"abc", u"abc", 0);
    auto const name_of = [&](std::size_t size) {
        return link_name(reparse_bytes(whole.buffer).first(size));
    };
    constexpr std::size_t behind = 20 + 8; // where names begin, and the first with its NUL
    EXPECT_EQ(name_of(behind + 6), L"abc");
    EXPECT_EQ(name_of(behind + 5), L"ab") << "no unit is cut in half";
    EXPECT_EQ(name_of(behind), L"");
}

TEST(LinkText, AllocatesTheTextOnly)
{
    std::u16string const name = u"\\??\\C:\\" + std::u16string(200, u'n') + u'\\';
    windows::attrib_link_type type{};
    for (std::uint32_t const tag : {symlink_tag, mount_point_tag}) {
        reparse_data const data = data_of(tag, name, u"");
        EXPECT_EQ(allocations_of([&] { windows::get_target_path_bridge(type, data); }), 1U);
    }
    reparse_data const other = data_of(dedup_tag, name, name);
    EXPECT_EQ(allocations_of([&] { windows::get_target_path_bridge(type, other); }), 0U);
}

constexpr row_of<std::uint32_t, bool> attributes_cases[] = {
    {0x400, true, "a reparse point"},        {0x410, true, "a directory that is one"},
    {0x420, true, "with another attribute"}, {0x600, false, "a sparse one"},
    {0x200, false, "sparse, but none"},      {0x020, false, "a plain file"},
    {0x010, false, "a directory"},           {0, false, "nothing"},
};

TEST(CanBeLink, Table)
{
    expect_rows(attributes_cases, [](std::uint32_t attributes) { return can_be_link(attributes); });
}

} // namespace
} // namespace fl::filesystem::detail
