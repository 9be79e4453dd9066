#ifndef FL_FLFS_INSPECTION_HPP
#define FL_FLFS_INSPECTION_HPP
// Everything that the library makes of one text, as values.

#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows_types.hpp>

#include "flfs/failure_report.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace flfs {

/// The answer of `detail::analyse_path_root`: a type and a length, or an exception.
struct root_analysis
{
    fl::filesystem::detail::windows::path_type_enum type;
    std::uint64_t length;
    std::string exception; ///< its class; empty if there is an answer
    std::string message;
};

/// Asked of the text as it was given: native form would drop a long prefix.
struct kind
{
    fl::filesystem::detail::windows::path_type_enum classified;
    root_analysis analysed;
    std::uint64_t root_path_length;
    std::uint64_t element_root_length;
    std::optional<std::uint64_t> unc_root_length; ///< of server pathnames only
};

/// All but `native` made of the native form.
struct forms
{
    std::u16string native;
    fl::filesystem::detail::windows::path_type_enum native_type; ///< by classify_path_type
    std::u16string generic;
    std::u16string expanded;
    std::optional<failure> expansion_failure; ///< then `expanded` is empty
    std::u16string access;
    bool is_absolute;
    bool is_absolute_when_expanded;
};

/// The native form taken apart.
struct parts
{
    std::u16string root_name;
    std::u16string root_directory;
    std::u16string root_path;
    std::u16string relative_path;
    std::u16string parent_path;
    std::u16string filename;
    std::u16string stem;
    std::u16string extension;
    std::vector<std::u16string> elements; ///< in walking order
    fl::filesystem::pathname_element_context<char16_t> with_share_in_root;
};

struct inspection
{
    std::u16string text;
    flfs::kind kind;
    flfs::forms forms;
    flfs::parts parts;
};

/// Fails on no text: where the library throws, the failure is the answer.
inspection inspect(std::u16string const &text);

/// Whether counting the share to the root changes how the pathname is taken apart.
bool differs_with_share_in_root(parts const &all);

} // namespace flfs

#endif
