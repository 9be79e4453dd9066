#ifndef FL_FILESYSTEM_SRC_STATUS_LINK_HOP_HPP
#define FL_FILESYSTEM_SRC_STATUS_LINK_HOP_HPP
// Following links one hop at a time, for queries.

#include <fl/filesystem/windows_types.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace fl::filesystem::detail {

/// Throws `SystemError` 8246, naming `path`, if a query has come to it by 20 links.
void check_link_depth(int depth, std::wstring const &path);

/// Whether `path` leads over a network: a server pathname, or one on a mapped drive.
/// Links there name drives of the server, which this machine doesn't see.
bool is_on_network(std::wstring const &path);

/// What a link says: its kind, and the pathname that it leads to. None if it has no text, as
/// the mount point of a volume has none.
struct decoded_link
{
    windows::attrib_link_type type = windows::link_type_none;
    std::optional<std::wstring> target;
};

/// The hop of the link in `data`, which was read from `path`. Throws as
/// `build_target_path_bridge`.
decoded_link hop_from(std::wstring const &path, windows::reparse_data_context const &data);

/// The pathname that `path`, which has these attributes, leads to, or none if it is no
/// link or one that isn't followed: on a network, or without a text.
std::optional<std::wstring> next_hop(std::wstring const &path, std::uint32_t attributes);

} // namespace fl::filesystem::detail

#endif
