#ifndef FL_FILESYSTEM_SRC_DIRECTORY_JOINED_NAME_HPP
#define FL_FILESYSTEM_SRC_DIRECTORY_JOINED_NAME_HPP
// Names found in a directory, put behind its pathname.

#include "pathname/shapes.hpp"
#include "platform/code_units.hpp"

#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// Behind a bare drive a name stands for itself, in the current directory of the drive.
template <typename Char, typename Name>
void join_name(std::basic_string<Char> &directory, Name const &name)
{
    bool const is_bare_drive = directory.size() == drive_size && is_drive_at<Char>(directory, 0);
    if (!is_bare_drive && !ends_in_backslash<Char>(directory))
        directory += backslash<Char>;
    append_units(directory, std::basic_string_view<typename Name::value_type>(name));
}

/// The pattern by which `directory` is listed.
inline std::wstring listing_pattern(std::wstring const &directory)
{
    std::wstring pattern;
    pattern.reserve(directory.size() + 2);
    pattern = directory;
    join_name(pattern, std::wstring_view(L"*"));
    return pattern;
}

} // namespace fl::filesystem::detail

#endif
