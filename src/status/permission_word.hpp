#ifndef FL_FILESYSTEM_SRC_STATUS_PERMISSION_WORD_HPP
#define FL_FILESYSTEM_SRC_STATUS_PERMISSION_WORD_HPP
// Permissions as far as Windows has them: attributes, and an extension that runs.

#include <cstdint>
#include <string_view>

namespace fl::filesystem::detail {

inline constexpr unsigned int write_bits = 0222; ///< for the owner, the group, the others
inline constexpr unsigned int exec_bits = 0111;

/// Returns the permission word of a name with these attributes. Execute bits are those
/// of files whose pathname ends in `.exe`, `.bat`, `.com` or `.cmd`, in any case; the
/// last full stop of the whole text counts, wherever it stands. Throws
/// `foundation::ustring::CtypeInvalidCharacter` on an extension of three units with one
/// above 127.
///
///     C:\tool.EXE, archive           0777 and archive_file
///     C:\tool.exe.txt, read-only     0444
///     C:\bin.exe, directory          0666
unsigned int attributes_to_perms(std::wstring_view path, std::uint32_t attributes);

/// Returns `attributes` as `perms` would have them: with `perms_add` or `perms_remove` only
/// what is named changes, and without either it replaces what a permission word can say.
/// Any write bit stands for all of them, that is for not being read-only. Attributes
/// that have no flag stay.
///
///     hidden, 0222                        none
///     hidden, perms_add, 0200             hidden
///     hidden, perms_remove, 0002          hidden and read-only
///     hidden, 0                           read-only
std::uint32_t change_attributes(std::uint32_t attributes, unsigned int perms);

} // namespace fl::filesystem::detail

#endif
