#include "links/junction.hpp"

#include <fl/filesystem/pathname_traits.hpp>

#include "standard/opening.hpp"

#include <cstdint>
#include <string_view>
#include <vector>

namespace fl::filesystem::detail {

namespace {

using byte_list = std::vector<unsigned char>;

/// Lowest byte first.
void append_number(byte_list &data, std::uint32_t number, int width)
{
    for (int byte = 0; byte < width; ++byte)
        data.push_back(static_cast<unsigned char>(number >> (8 * byte)));
}

void append_name(byte_list &data, std::wstring_view name)
{
    for (wchar_t const unit : name)
        append_number(data, static_cast<std::uint32_t>(unit), 2);
    append_number(data, 0, 2);
}

} // namespace

// A header, where the two names stand, and the names, of which the lengths are without their
// NULs.
std::vector<unsigned char> junction_data(std::wstring const &target)
{
    std::wstring const followed = pathname_traits<wchar_t>::MOUNT_POINT_PREFIX + target;
    auto const size_of = [](std::wstring const &name) {
        return static_cast<std::uint32_t>(2 * name.size());
    };
    std::uint32_t const shown_at = size_of(followed) + 2;
    std::uint32_t const names_size = shown_at + size_of(target) + 2;
    byte_list data;
    append_number(data, static_cast<std::uint32_t>(IO_REPARSE_TAG_MOUNT_POINT), 4);
    append_number(data, 8 + names_size, 2); // of what stands behind the header
    append_number(data, 0, 2);
    append_number(data, 0, 2);
    append_number(data, size_of(followed), 2);
    append_number(data, shown_at, 2);
    append_number(data, size_of(target), 2);
    append_name(data, followed);
    append_name(data, target);
    return data;
}

bool make_junction(std::wstring const &directory, std::span<unsigned char> data,
                   std::error_code &ec)
{
    auto const [opened, code] = standard::open_entry(directory, GENERIC_WRITE);
    if (!opened)
        return standard::fail(code, ec);
    return standard::set_reparse_data(opened, data, ec);
}

} // namespace fl::filesystem::detail
