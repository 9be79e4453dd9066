#ifndef FL_FILESYSTEM_SRC_PATHNAME_GROWING_PATHNAME_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_GROWING_PATHNAME_HPP
// One pathname for all levels of a tree: the pathnames of 16,000 levels together would take
// half a gigabyte.

#include "pathname/long_prefix.hpp"
#include "pathname/shapes.hpp"

#include <cstddef>
#include <string>

namespace fl::filesystem::detail {

/// What a name added to the pathname that it went behind.
struct addition
{
    std::size_t former_size = 0;
    bool added_prefix = false;
};

/// Has `append(path)` put a name behind `path`, and the long prefix ahead of it if need be.
template <typename Append>
addition add_name(std::wstring &path, Append append)
{
    bool const was_prefixed = is_long_prefix_at<wchar_t>(path, 0);
    std::size_t const former_size = path.size();
    append(path);
    return {former_size, !was_prefixed && is_long_prefix_at<wchar_t>(path, 0)};
}

/// Makes `path` what it was before the name.
inline void take_off(std::wstring &path, addition added)
{
    if (added.added_prefix)
        strip_long_path_prefix(path, path.size(), std::wstring::npos);
    path.resize(added.former_size);
}

} // namespace fl::filesystem::detail

#endif
