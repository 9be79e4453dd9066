#ifndef FL_FILESYSTEM_SRC_ACCESS_MAPPED_DRIVE_HPP
#define FL_FILESYSTEM_SRC_ACCESS_MAPPED_DRIVE_HPP
// Drives that are shares of other machines.

#include <fl/filesystem/windows_types.hpp>

#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Whether `path`, a drive pathname with or without a long prefix, is on a network drive:
/// whether `WNetGetUniversalNameW` knows a name for it. Any other type of pathname is
/// false without a call.
bool is_mapped_network_drive(std::wstring_view path, windows::path_type_enum path_type);

} // namespace fl::filesystem::detail

#endif
