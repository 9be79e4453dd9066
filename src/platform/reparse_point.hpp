#ifndef FL_FILESYSTEM_SRC_PLATFORM_REPARSE_POINT_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_REPARSE_POINT_HPP
// Reparse data as bytes: getting them from the system, and the fields in them. What
// kind of link they make is not known here.
//
// The bytes come from a disk that anybody may have written. Numbers are put together
// lowest byte first, and every offset and length ends with the buffer.

#include "platform/owned_handle.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace fl::filesystem::detail {

using reparse_bytes = std::span<unsigned char const>;

/// `file` is empty if `code` isn't 0.
struct opened_reparse_point
{
    file_handle file;
    DWORD code;
};

/// Opens the entry itself, whatever it leads to, be it a file or a directory.
opened_reparse_point open_reparse_point(std::wstring const &path, DWORD access) noexcept;

/// Reads into all of `buffer` and returns the system's code, 0 on success: 4390 if it
/// is no reparse point, 234 if its data is longer.
DWORD get_reparse_point(file_handle const &file, std::span<unsigned char> buffer) noexcept;

std::uint32_t reparse_tag(reparse_bytes bytes) noexcept;

/// The header of `bytes` and the data behind it, in bytes.
std::size_t reparse_size(reparse_bytes bytes) noexcept;

/// Whether `tag` is that of a symbolic link or a mount point, which have names.
bool is_link_tag(std::uint32_t tag) noexcept;

/// The flags of a symbolic link.
std::uint32_t symbolic_link_flags(reparse_bytes bytes) noexcept;

/// Returns the name that a symbolic link or mount point shows to people or, if it has
/// none, the one that the system follows, as it stands. As much of it as lies inside
/// the buffer. Nothing for other tags.
std::wstring link_name(reparse_bytes bytes);

} // namespace fl::filesystem::detail

#endif
