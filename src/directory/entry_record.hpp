#ifndef FL_FILESYSTEM_SRC_DIRECTORY_ENTRY_RECORD_HPP
#define FL_FILESYSTEM_SRC_DIRECTORY_ENTRY_RECORD_HPP
// What a directory entry holds.

#include <fl/filesystem/path.hpp>

#include <windows.h>

#include <cstdint>
#include <string>

namespace fl::filesystem::detail {

/// One name, and what the system has told of it. Without attributes nothing is there: the
/// system gives even a file without any `FILE_ATTRIBUTE_NORMAL`.
struct entry_record
{
    std::wstring form;   ///< for the system
    std::u16string text; ///< as it is shown; what a path drops from the end of a name included
    std::u16string name; ///< the last name of both
    upath path;          ///< the text
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    DWORD reparse_tag = 0; ///< of a reparse point
};

/// Whether `record` is that of a symbolic link or mount point, which calls follow.
bool is_link(entry_record const &record) noexcept;

/// The type word of the name itself.
unsigned int type_word(entry_record const &record) noexcept;

} // namespace fl::filesystem::detail

#endif
