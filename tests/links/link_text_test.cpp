// Reparse data as the library reads it inside: tags, and what it costs.

#include "links/reparse_data.hpp"

#include <fl/filesystem/windows.hpp>

#include "links/link_cases.hpp"
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

struct attributes_case
{
    std::uint32_t attributes;
    bool is_candidate;
    char const *why;
};

constexpr attributes_case attributes_cases[] = {
    {0x400, true, "a reparse point"},        {0x410, true, "a directory that is one"},
    {0x420, true, "with another attribute"}, {0x600, false, "a sparse one"},
    {0x200, false, "sparse, but none"},      {0x020, false, "a plain file"},
    {0x010, false, "a directory"},           {0, false, "nothing"},
};

TEST(CanBeLink, Table)
{
    for (attributes_case const &row : attributes_cases)
        EXPECT_EQ(can_be_link(row.attributes), row.is_candidate) << row.why;
}

} // namespace
} // namespace fl::filesystem::detail
