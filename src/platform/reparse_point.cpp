#include "platform/reparse_point.hpp"

#include <winioctl.h>

#include <algorithm>

namespace fl::filesystem::detail {

namespace {

// Offsets of fields, in bytes. The two kinds of link differ by the flags, which only
// a symbolic link has, ahead of its names.
constexpr std::size_t tag_at = 0;
constexpr std::size_t data_length_at = 4;
constexpr std::size_t data_at = 8;
constexpr std::size_t substitute_name_at = 8;
constexpr std::size_t print_name_at = 12;
constexpr std::size_t flags_at = 16;
constexpr std::size_t names_of_mount_point_at = 16;
constexpr std::size_t names_of_symbolic_link_at = 20;

/// What lies behind the end counts as zero.
std::uint32_t number_at(reparse_bytes bytes, std::size_t at, std::size_t width) noexcept
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i)
        number |= std::uint32_t{bytes[at + i]} << (8 * i);
    return number;
}

/// The text that offset and length at `field` describe. Names stand at even distances
/// from where names begin: the lowest bit of an offset doesn't count.
std::wstring text_at(reparse_bytes bytes, std::size_t names_at, std::size_t field)
{
    std::size_t const offset = number_at(bytes, field, 2) & ~std::size_t{1};
    std::size_t const length = number_at(bytes, field + 2, 2);
    std::size_t const begin = std::min(names_at + offset, bytes.size());
    std::size_t const units = std::min(length, bytes.size() - begin) / 2;
    std::wstring text(units, L'\0');
    for (std::size_t i = 0; i < units; ++i)
        text[i] = static_cast<wchar_t>(number_at(bytes, begin + 2 * i, 2));
    return text;
}

} // namespace

opened_reparse_point open_reparse_point(std::wstring const &path, DWORD access) noexcept
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    // the first for directories, the second for the link itself
    constexpr DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
    HANDLE const raw =
        ::CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, flags, nullptr);
    DWORD const code = ::GetLastError();
    if (raw == INVALID_HANDLE_VALUE)
        return {file_handle(), code};
    return {file_handle(raw), ERROR_SUCCESS};
}

DWORD get_reparse_point(file_handle const &file, std::span<unsigned char> buffer) noexcept
{
    DWORD returned = 0;
    DWORD const room = static_cast<DWORD>(buffer.size());
    if (::DeviceIoControl(file.get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, buffer.data(), room,
                          &returned, nullptr))
        return ERROR_SUCCESS;
    return ::GetLastError();
}

std::uint32_t reparse_tag(reparse_bytes bytes) noexcept
{
    return number_at(bytes, tag_at, 4);
}

std::size_t reparse_size(reparse_bytes bytes) noexcept
{
    return std::min<std::size_t>(data_at + number_at(bytes, data_length_at, 2), bytes.size());
}

bool is_link_tag(std::uint32_t tag) noexcept
{
    return tag == std::uint32_t{IO_REPARSE_TAG_SYMLINK} ||
           tag == std::uint32_t{IO_REPARSE_TAG_MOUNT_POINT};
}

std::uint32_t symbolic_link_flags(reparse_bytes bytes) noexcept
{
    return number_at(bytes, flags_at, 4);
}

std::wstring link_name(reparse_bytes bytes)
{
    std::uint32_t const tag = reparse_tag(bytes);
    if (!is_link_tag(tag))
        return {};
    std::size_t const names_at = tag == std::uint32_t{IO_REPARSE_TAG_SYMLINK}
                                     ? names_of_symbolic_link_at
                                     : names_of_mount_point_at;
    bool const has_print_name = number_at(bytes, print_name_at + 2, 2) != 0;
    return text_at(bytes, names_at, has_print_name ? print_name_at : substitute_name_at);
}

} // namespace fl::filesystem::detail
