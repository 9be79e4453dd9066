#include "platform/filled_buffer.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace fl::filesystem::detail {
namespace {

/// A call that answers with the given numbers, one after the other, and writes a
/// text of that length where it fits.
struct scripted_call
{
    std::vector<DWORD> answers;
    std::vector<DWORD> *rooms;

    DWORD operator()(wchar_t *buffer, DWORD room)
    {
        rooms->push_back(room);
        for (DWORD at = 0; at < room; ++at)
            EXPECT_EQ(buffer[at], L'\0') << "a buffer is zeroed before the call";
        DWORD const answer = answers.at(rooms->size() - 1);
        if (answer <= room)
            for (DWORD at = 0; at < answer; ++at)
                buffer[at] = static_cast<wchar_t>(L'a' + at % 26);
        return answer;
    }
};

std::wstring letters(DWORD size)
{
    std::wstring text;
    for (DWORD at = 0; at < size; ++at)
        text += static_cast<wchar_t>(L'a' + at % 26);
    return text;
}

struct buffer_case
{
    growth rule;
    std::vector<DWORD> answers;
    std::optional<DWORD> size; // of the text; none: no text
    std::vector<DWORD> rooms;
    char const *why;
};

buffer_case const buffer_cases[] = {
    {growth::once, {9}, 9, {10}, "one shorter than the buffer"},
    {growth::once, {10}, 10, {10}, "as long as the buffer"},
    {growth::once, {11, 10}, 10, {10, 11}, "one longer: that is the room to give"},
    {growth::once, {11, 11}, 11, {10, 11}, "as long as the larger buffer"},
    {growth::once, {11, 12}, std::nullopt, {10, 11}, "longer again: it gives up"},
    {growth::once, {11, 0}, std::nullopt, {10, 11}, "failed the second time"},
    {growth::once, {0}, std::nullopt, {10}, "failed"},
    {growth::once, {1}, 1, {10}, "one unit"},
    {growth::until_it_fits, {9}, 9, {10}, "one shorter than the buffer"},
    {growth::until_it_fits, {10, 9}, 9, {10, 10}, "as long as the buffer: asked again"},
    {growth::until_it_fits, {11, 10}, 10, {10, 11}, "one longer"},
    {growth::until_it_fits, {11, 20, 30, 29}, 29, {10, 11, 20, 30}, "growing under our feet"},
    {growth::until_it_fits, {11, 0}, std::nullopt, {10, 11}, "failed the second time"},
    {growth::until_it_fits, {0}, std::nullopt, {10}, "failed"},
};

TEST(FilledBuffer, Table)
{
    for (auto const &row : buffer_cases) {
        std::vector<DWORD> rooms;
        std::optional<std::wstring> const text =
            filled_buffer(10, row.rule, scripted_call{row.answers, &rooms});
        EXPECT_EQ(rooms, row.rooms) << row.why;
        ASSERT_EQ(text.has_value(), row.size.has_value()) << row.why;
        if (text) {
            EXPECT_EQ(*text, letters(*row.size)) << row.why;
        }
    }
}

TEST(FilledBuffer, AFirstBufferIsNeverLargerThanItsRoom)
{
    constexpr DWORD most = text_buffer::most_at_first;
    for (DWORD const asked : {most - 1, most, most + 1, 10 * most}) {
        std::vector<DWORD> rooms;
        filled_buffer(asked, growth::once, scripted_call{{1}, &rooms});
        EXPECT_EQ(rooms, std::vector<DWORD>{std::min(asked, most)}) << asked;
    }
}

} // namespace
} // namespace fl::filesystem::detail
