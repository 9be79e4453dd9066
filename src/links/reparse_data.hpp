#ifndef FL_FILESYSTEM_SRC_LINKS_REPARSE_DATA_HPP
#define FL_FILESYSTEM_SRC_LINKS_REPARSE_DATA_HPP
// What a reparse point is to the library, and what it says of its target. The text
// stays as the link has it: who follows it makes a pathname of it.

#include <fl/filesystem/windows_types.hpp>

#include <cstdint>
#include <string>

namespace fl::filesystem::detail {

/// Whether a name with these attributes can be a link. A reparse point that is also
/// sparse is one that keeps its content elsewhere, never a link.
bool can_be_link(std::uint32_t attributes) noexcept;

/// Reads the reparse data of `path`, a string for the system, into `data`, which is
/// zeroed first. Returns the system's code, 0 on success: 4390 if the name is no
/// reparse point. Asks for the right to extended attributes only, which there is on
/// files that can't be read.
unsigned int read_reparse_data(windows::reparse_data_context &data,
                               std::wstring const &path) noexcept;

/// Whether `path`, which has these attributes, is a link: a symbolic link or a mount
/// point whose reparse data can be read. Then that is in `data`.
bool read_link_data(windows::reparse_data_context &data, std::wstring const &path,
                    std::uint32_t attributes) noexcept;

/// The tag in `data`.
std::uint32_t reparse_tag(windows::reparse_data_context const &data) noexcept;

/// Returns the target's text if `path` is a symbolic link or a mount point, and sets
/// `link_type`. Else returns the empty text, leaves `link_type` alone, and takes a
/// reparse point that can't be read for none. If there is no such name it throws what
/// the code stands for, naming `path`, and `foundation::ustring::CtypeInvalidCharacter`
/// as `get_target_path_bridge` does.
std::wstring read_link_target(std::wstring const &path, windows::attrib_link_type &link_type);

/// The same for those who go on where a name is missing: then the code is in `error`,
/// which is otherwise left alone, and nothing is thrown about it.
std::wstring read_link_text(std::wstring const &path, windows::attrib_link_type &link_type,
                            unsigned int &error);

} // namespace fl::filesystem::detail

#endif
