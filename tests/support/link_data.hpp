#ifndef FL_FILESYSTEM_TESTS_SUPPORT_LINK_DATA_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_LINK_DATA_HPP
// Reparse data as bytes, built and read by the offsets that Microsoft documents.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace test_support {

inline constexpr std::uint32_t symlink_tag = 0xA000000C;
inline constexpr std::uint32_t mount_point_tag = 0xA0000003;

/// Short names, for those who ask for them.
namespace link_data {

using bytes = std::vector<unsigned char>;

/// A number of `count` bytes, the lowest first.
inline void append(bytes &data, unsigned long value, int count)
{
    for (int i = 0; i < count; ++i)
        data.push_back(static_cast<unsigned char>(value >> (8 * i) & 0xFF));
}

inline unsigned long number_at(bytes const &data, std::size_t offset, std::size_t count)
{
    unsigned long value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= static_cast<unsigned long>(data.at(offset + i)) << (8 * i);
    return value;
}

inline void append_text(bytes &data, std::wstring const &text)
{
    for (wchar_t const unit : text)
        append(data, static_cast<unsigned long>(unit), 2);
}

/// The text that the two numbers at `offset` describe: its offset from `start` and its size.
inline std::u16string text_at(bytes const &data, std::size_t offset, std::size_t start)
{
    std::u16string text;
    std::size_t const first = start + number_at(data, offset, 2);
    std::size_t const size = number_at(data, offset + 2, 2);
    for (std::size_t at = first; at < first + size; at += 2)
        text.push_back(static_cast<char16_t>(number_at(data, at, 2)));
    return text;
}

inline bytes with_header(std::uint32_t tag, bytes const &body)
{
    bytes data;
    append(data, tag, 4);
    append(data, static_cast<unsigned long>(body.size()), 2);
    append(data, 0, 2);
    data.insert(data.end(), body.begin(), body.end());
    return data;
}

/// What makes an empty directory a junction to `target`, an absolute pathname.
inline bytes junction_data(std::wstring const &target)
{
    std::wstring const name = LR"(\??\)" + target;
    bytes body;
    append(body, 0, 2);
    append(body, static_cast<unsigned long>(2 * name.size()), 2);
    append(body, static_cast<unsigned long>(2 * name.size() + 2), 2);
    append(body, static_cast<unsigned long>(2 * target.size()), 2);
    append_text(body, name + L'\0' + target + L'\0');
    return with_header(mount_point_tag, body);
}

/// The name that a symbolic link or a mount point shows to people or, if it has none,
/// the one that the system follows. Throws an exception of the standard library for
/// other data.
inline std::u16string shown_target(bytes const &data)
{
    unsigned long const tag = number_at(data, 0, 4);
    if (tag != symlink_tag && tag != mount_point_tag)
        throw std::invalid_argument("this is neither a symbolic link nor a mount point");
    std::size_t const names = tag == symlink_tag ? 20 : 16;
    std::u16string const print = text_at(data, 12, names);
    return print.empty() ? text_at(data, 8, names) : print;
}

} // namespace link_data

} // namespace test_support

#endif
