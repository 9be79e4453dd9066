#include "status/permission_word.hpp"

#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/pathname_traits.hpp>

#include "pathname/characters.hpp"

#include <windows.h>

#include <algorithm>

namespace fl::filesystem::detail {

namespace {

constexpr unsigned int read_bits = 0444;

/// A flag of the permission word, and the attribute that it stands for.
struct attribute_flag
{
    std::uint32_t attribute;
    unsigned int flag;
};

constexpr attribute_flag attribute_flags[] = {
    {FILE_ATTRIBUTE_ARCHIVE, file_status::archive_file},
    {FILE_ATTRIBUTE_HIDDEN, file_status::hidden_file},
    {FILE_ATTRIBUTE_SYSTEM, file_status::system_file},
    {FILE_ATTRIBUTE_NOT_CONTENT_INDEXED, file_status::non_indexed_file},
};

/// The attributes that the flags in `perms` stand for.
std::uint32_t flagged_attributes(unsigned int perms)
{
    std::uint32_t attributes = 0;
    for (attribute_flag const &row : attribute_flags) {
        if ((perms & row.flag) != 0)
            attributes |= row.attribute;
    }
    return attributes;
}

bool has_extension_that_runs(std::wstring_view path)
{
    constexpr std::size_t extension_size = 3;
    std::size_t const stop = path.rfind(pathname_traits<wchar_t>::DOT_CHARACTER);
    if (stop == std::wstring_view::npos || path.size() - stop != extension_size + 1)
        return false;
    constexpr std::wstring_view running[] = {L"exe", L"bat", L"com", L"cmd"};
    std::wstring const extension = to_lower_case(path.substr(stop + 1));
    std::wstring_view const sought = extension;
    return std::find(std::begin(running), std::end(running), sought) != std::end(running);
}

} // namespace

unsigned int attributes_to_perms(std::wstring_view path, std::uint32_t attributes)
{
    bool const is_read_only = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    unsigned int perms = is_read_only ? read_bits : read_bits | write_bits;
    for (attribute_flag const &row : attribute_flags) {
        if ((attributes & row.attribute) != 0)
            perms |= row.flag;
    }
    bool const is_directory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!is_directory && has_extension_that_runs(path))
        perms |= exec_bits;
    return perms;
}

std::uint32_t change_attributes(std::uint32_t attributes, unsigned int perms)
{
    constexpr std::uint32_t read_only = FILE_ATTRIBUTE_READONLY;
    bool const can_write = (perms & write_bits) != 0;
    std::uint32_t const flagged = flagged_attributes(perms);
    if ((perms & file_status::perms_add) != 0)
        return (can_write ? attributes & ~read_only : attributes) | flagged;
    if ((perms & file_status::perms_remove) != 0)
        return (can_write ? attributes | read_only : attributes) & ~flagged;
    std::uint32_t const others =
        attributes & ~(read_only | flagged_attributes(file_status::perms_mask));
    return others | flagged | (can_write ? 0 : read_only);
}

} // namespace fl::filesystem::detail
