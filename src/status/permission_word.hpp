#ifndef FL_FILESYSTEM_SRC_STATUS_PERMISSION_WORD_HPP
#define FL_FILESYSTEM_SRC_STATUS_PERMISSION_WORD_HPP
// Permissions as far as Windows has them: attributes, and an extension that runs.

#include <cstdint>
#include <string_view>

namespace fl::filesystem::detail {

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

} // namespace fl::filesystem::detail

#endif
