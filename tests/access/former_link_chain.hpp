#ifndef FL_FILESYSTEM_TESTS_ACCESS_FORMER_LINK_CHAIN_HPP
#define FL_FILESYSTEM_TESTS_ACCESS_FORMER_LINK_CHAIN_HPP
// The walk through links as it was before it was written on strings, to compare with.

#include <fl/filesystem/windows.hpp>

#include <string>
#include <string_view>

namespace fl::filesystem::detail::former {

std::wstring resolve_link_chain(std::wstring_view path, windows::path_type_enum path_type);

} // namespace fl::filesystem::detail::former

#endif
