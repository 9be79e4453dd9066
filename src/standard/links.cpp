#include "standard/filesystem.hpp"

#include "platform/reparse_point.hpp"
#include "standard/codes.hpp"
#include "standard/opening.hpp"
#include "standard/roots.hpp"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>

namespace fl::filesystem::detail::standard {

namespace {

/// The most that reparse data takes, and two bytes more.
constexpr std::size_t reparse_room = 16386;

/// A reparse point's data, `reparse_room` bytes off the heap.
using reparse_block = std::unique_ptr<unsigned char[]>;

/// Reads the reparse data of what was opened into `data`. Returns whether it could; if not,
/// `ec` holds the system's code.
bool read_reparse_point(opened_file const &opened, reparse_block &data, std::error_code &ec)
{
    if (!opened.file)
        return fail(opened.code, ec);
    data.reset(new (std::nothrow) unsigned char[reparse_room]());
    if (!data)
        return fail(ERROR_NOT_ENOUGH_MEMORY, ec);
    return get_reparse_data(opened.file, {data.get(), reparse_room}, ec);
}

/// The same for a pathname, and whether the link is one to a directory.
bool read_link(std::wstring const &text, reparse_block &data, bool &is_directory,
               std::error_code &ec)
{
    opened_file const opened = open_entry(text, FILE_READ_ATTRIBUTES);
    if (!read_reparse_point(opened, data, ec))
        return false;
    FILE_BASIC_INFO info = {};
    ec = system_code(get_information(opened.file, FileBasicInfo, info));
    is_directory = (info.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return !ec;
}

void make_link(std::wstring const &target, std::wstring const &link, DWORD flavour,
               std::error_code &ec)
{
    // without it only administrators may make links, also where the user has allowed it
    constexpr DWORD unprivileged = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    auto const make = [&](DWORD flags) {
        attempt(ec, [&] { return ::CreateSymbolicLinkW(link.c_str(), target.c_str(), flags); });
    };
    make(flavour | unprivileged);
    if (ec == system_code(ERROR_INVALID_PARAMETER)) // from systems before Windows 10 version 1703
        make(flavour);
}

/// The system takes the text of a link as it stands, and knows no slashes in it.
std::wstring with_single_backslashes(std::wstring_view text)
{
    std::size_t const root = root_name_length(text);
    std::wstring cleaned(text.substr(0, root));
    std::replace_if(cleaned.begin(), cleaned.end(), is_separator<wchar_t>, backslash<wchar_t>);
    for (std::size_t at = root; at < text.size(); ++at) {
        if (!is_separator(text[at]))
            cleaned += text[at];
        else if (at == root || !is_separator(text[at - 1]))
            cleaned += backslash<wchar_t>;
    }
    return cleaned;
}

void make_cleaned_link(std::wstring const &target, std::wstring const &link, DWORD flavour,
                       std::error_code &ec)
{
    constexpr int not_enough_memory = 12;
    ec.clear();
    try {
        make_link(with_single_backslashes(target), link, flavour, ec);
    } catch (std::bad_alloc const &) {
        ec = std::error_code(not_enough_memory, std::generic_category());
    }
}

} // namespace

std::wstring read_symlink(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    reparse_block data;
    if (!read_reparse_point(open_entry(text, FILE_READ_ATTRIBUTES), data, ec))
        return {};
    reparse_bytes const bytes(data.get(), reparse_room);
    if (is_link_tag(reparse_tag(bytes)))
        return link_name(bytes);
    ec = system_code(ERROR_REPARSE_TAG_INVALID);
    return {};
}

void create_symlink(std::wstring const &target, std::wstring const &link, std::error_code &ec)
{
    make_cleaned_link(target, link, 0, ec);
}

void create_directory_symlink(std::wstring const &target, std::wstring const &link,
                              std::error_code &ec)
{
    make_cleaned_link(target, link, SYMBOLIC_LINK_FLAG_DIRECTORY, ec);
}

void copy_symlink(std::wstring const &existing, std::wstring const &link, std::error_code &ec)
{
    ec.clear();
    reparse_block data;
    bool is_directory = false;
    if (!read_link(existing, data, is_directory, ec))
        return;
    reparse_bytes const bytes(data.get(), reparse_room);
    if (reparse_tag(bytes) == std::uint32_t{IO_REPARSE_TAG_SYMLINK})
        make_link(link_name(bytes), link, is_directory ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0, ec);
    else
        ec = system_code(ERROR_REPARSE_TAG_INVALID);
}

} // namespace fl::filesystem::detail::standard
