// The second reading of reparse data, whose kinds are those of status records.

#include "links/reparse_data.hpp"

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/windows.hpp>

#include "links/link_cases.hpp"
#include "support/allocations.hpp"
#include "support/text.hpp"

#include <gtest/gtest.h>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST(LinkText, Table)
{
    for (link_case const &row : link_cases) {
        unsigned int type = 1;
        reparse_data const data = data_of(row.tag, row.substitute, row.print, row.flags);
        EXPECT_EQ(units(link_text(type, data)), row.target) << row.why;
        EXPECT_EQ(type, row.type_word) << row.why;
        EXPECT_EQ(reparse_tag(data), row.tag) << row.why;
    }
}

TEST(LinkText, IsThatOfTheOtherReading)
{
    std::mt19937 numbers(20240502);
    for (int round = 0; round < 1000; ++round) {
        reparse_data const data = random_reparse_data(numbers);
        windows::attrib_link_type link_type{};
        unsigned int type = 1;
        std::wstring expected;
        try {
            expected = windows::get_target_path_bridge(link_type, data);
        } catch (foundation::ustring::CtypeInvalidCharacter const &) {
            EXPECT_THROW(link_text(type, data), foundation::ustring::CtypeInvalidCharacter);
            continue;
        }
        EXPECT_EQ(link_text(type, data), expected);
    }
}

TEST(LinkText, AllocatesTheTextOnly)
{
    std::u16string const name = u"\\??\\C:\\" + std::u16string(200, u'n') + u'\\';
    for (std::uint32_t const tag : {symlink_tag, mount_point_tag}) {
        reparse_data const data = data_of(tag, name, u"");
        unsigned int type = 1;
        EXPECT_EQ(allocations_of([&] { link_text(type, data); }), 1U);
    }
    unsigned int type = 1;
    reparse_data const other = data_of(dedup_tag, name, name);
    EXPECT_EQ(allocations_of([&] { link_text(type, other); }), 0U);
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
