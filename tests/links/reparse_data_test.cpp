// Names that are no links, on any system.

#include "links/reparse_data.hpp"

#include "support/names.hpp"
#include "support/workspace.hpp"

#include <algorithm>
#include <iterator>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr unsigned int untouched = 77;

struct plain_case
{
    char16_t const *name;
    unsigned int reading;    ///< what reading its reparse data answers
    unsigned int attributes; ///< what asking for its attributes answers
    char const *why;
};

constexpr plain_case plain_cases[] = {
    {u"file", 4390, 0, "a file"},
    {u"dir", 4390, 0, "a directory"},
    {u"missing", 2, 2, "nothing there"},
    {uR"(missing\x)", 3, 3, "nor the directory above it"},
};

class PlainNames : public testing::Test
{
protected:
    PlainNames()
    {
        work.make_file(work.path(u"file"));
        work.make_directory(work.path(u"dir"));
    }

    workspace work;
};

TEST_F(PlainNames, HaveNoReparseData)
{
    for (plain_case const &row : plain_cases) {
        windows::reparse_data_context data;
        std::fill(std::begin(data.buffer), std::end(data.buffer), static_cast<unsigned char>(0xFF));
        EXPECT_EQ(read_reparse_data(data, wide(work.path(row.name))), row.reading) << row.why;
        EXPECT_TRUE(std::all_of(std::begin(data.buffer), std::end(data.buffer),
                                [](unsigned char byte) { return byte == 0; }))
            << row.why << ": nothing of what was there before is left";
    }
}

TEST_F(PlainNames, HaveNoText)
{
    for (plain_case const &row : plain_cases) {
        unsigned int error = untouched;
        auto link_type = windows::link_type_dedup_file;
        EXPECT_EQ(read_link_text(wide(work.path(row.name)), link_type, error), L"") << row.why;
        EXPECT_EQ(link_type, windows::link_type_dedup_file) << row.why << ": left alone";
        EXPECT_EQ(error, row.attributes != 0 ? row.attributes : untouched) << row.why;
    }
}

TEST_F(PlainNames, HaveNoTarget)
{
    for (plain_case const &row : plain_cases) {
        auto link_type = windows::link_type_dedup_file;
        std::u16string const name = work.path(row.name);
        auto const thrown =
            failure_of([&] { EXPECT_EQ(read_link_target(wide(name), link_type), L"") << row.why; });
        if (row.attributes == 0)
            EXPECT_EQ(thrown, std::nullopt) << row.why;
        else
            EXPECT_EQ(thrown, not_found(name)) << row.why;
        EXPECT_EQ(link_type, windows::link_type_dedup_file) << row.why << ": left alone";
    }
}

} // namespace
} // namespace fl::filesystem::detail
