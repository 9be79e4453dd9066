#ifndef FL_FILESYSTEM_TESTS_LINKS_REPARSE_BYTES_HPP
#define FL_FILESYSTEM_TESTS_LINKS_REPARSE_BYTES_HPP
// Reparse data made by hand, byte by byte: sound, odd and broken.

#include "support/link_data.hpp"

#include <fl/filesystem/windows_types.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>

namespace test_support {

inline constexpr std::uint32_t dedup_tag = 0x80000013;
inline constexpr std::uint32_t dfs_tag = 0x8000000A;

/// What the fields say, in bytes; where the names begin depends on the tag.
struct name_place
{
    std::uint16_t offset;
    std::uint16_t length;
};

using reparse_data = fl::filesystem::detail::windows::reparse_data_context;

inline void put(reparse_data &data, std::size_t at, std::size_t width, std::uint32_t number)
{
    for (std::size_t i = 0; i < width; ++i)
        data.buffer[at + i] = static_cast<unsigned char>(number >> (8 * i));
}

inline void put_text(reparse_data &data, std::size_t at, std::u16string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
        put(data, at + 2 * i, 2, text[i]);
}

inline std::size_t names_at(std::uint32_t tag)
{
    return tag == symlink_tag ? 20 : 16;
}

/// Zeros but for the tag and where the names are.
inline reparse_data data_of(std::uint32_t tag, name_place substitute, name_place print)
{
    reparse_data data{};
    put(data, 0, 4, tag);
    put(data, 8, 2, substitute.offset);
    put(data, 10, 2, substitute.length);
    put(data, 12, 2, print.offset);
    put(data, 14, 2, print.length);
    return data;
}

/// As the system writes it: the substitute name, a NUL, and the print name.
inline reparse_data data_of(std::uint32_t tag, std::u16string_view substitute,
                            std::u16string_view print, std::uint32_t flags = 0)
{
    auto const bytes = [](std::size_t units) { return static_cast<std::uint16_t>(2 * units); };
    name_place const first{0, bytes(substitute.size())};
    name_place const second{bytes(substitute.size() + 1), bytes(print.size())};
    reparse_data data = data_of(tag, first, second);
    if (tag == symlink_tag)
        put(data, 16, 4, flags);
    put_text(data, names_at(tag) + first.offset, substitute);
    put_text(data, names_at(tag) + second.offset, print);
    return data;
}

/// Any bytes, but mostly one of the tags with names, since others are left alone.
inline reparse_data random_reparse_data(std::mt19937 &numbers)
{
    reparse_data data;
    std::generate(std::begin(data.buffer), std::end(data.buffer),
                  [&] { return static_cast<unsigned char>(numbers()); });
    std::uint32_t const tags[] = {symlink_tag, mount_point_tag, mount_point_tag, dedup_tag};
    if (numbers() % 8 != 0)
        put(data, 0, 4, tags[numbers() % 4]);
    if (numbers() % 2 == 0) // names inside the buffer, too
        for (std::size_t const field : {9U, 11U, 13U, 15U})
            data.buffer[field] &= 0x1F;
    if (numbers() % 2 == 0)
        put_text(data, 16, uR"(\??\Volume{)");
    return data;
}

} // namespace test_support

#endif
