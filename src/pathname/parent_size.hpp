#ifndef FL_FILESYSTEM_SRC_PATHNAME_PARENT_SIZE_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_PARENT_SIZE_HPP
// What is left of a pathname without its last element.

#include "pathname/root_length.hpp"

#include <cstddef>
#include <string_view>

namespace fl::filesystem::detail {

/// The units of `text` that are ahead of its last element, as `remove_filename` tells.
template <typename Char>
constexpr std::size_t parent_size(std::basic_string_view<Char> text)
{
    std::size_t const root = root_path_length(text);
    if (root == text.size())
        return ends_in_backslash(text) ? root - 1 : 0;
    std::size_t const last = text.rfind(pathname_traits<Char>::PATHNAME_SEPARATOR_CHARACTER);
    if (last == text.npos)
        return 0;
    return last < root ? last + 1 : last; // a root stays whole
}

} // namespace fl::filesystem::detail

#endif
