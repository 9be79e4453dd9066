#ifndef FL_FILESYSTEM_SRC_STATUS_FILE_INFORMATION_HPP
#define FL_FILESYSTEM_SRC_STATUS_FILE_INFORMATION_HPP
// What the system knows of the file that a pathname leads to, links followed by the system.

#include <windows.h>

#include <cstdint>
#include <string>

namespace fl::filesystem::detail {

/// Returns the answer of `GetFileInformationByHandle` for what `form` leads to, a string for
/// the system. Throws what the code of a failed call stands for, naming `named`.
BY_HANDLE_FILE_INFORMATION demand_file_information(std::wstring const &form,
                                                   std::u16string const &named);

/// The size in `info`, in bytes. Throws `FileIsDirectory` naming `named` if it isn't that of a
/// file.
std::uint64_t demand_size(BY_HANDLE_FILE_INFORMATION const &info, std::u16string const &named);

} // namespace fl::filesystem::detail

#endif
