#ifndef FL_FILESYSTEM_SRC_OPERATIONS_REMOVAL_CALLS_HPP
#define FL_FILESYSTEM_SRC_OPERATIONS_REMOVAL_CALLS_HPP
// The two calls that remove one name each. No link is followed by either.

#include "failure/win32_error.hpp"

#include <windows.h>

#include <string>

namespace fl::filesystem::detail {

/// Throws what the code of a failure stands for, naming `path`.
inline void delete_file_at(std::wstring const &path)
{
    if (::DeleteFileW(path.c_str()))
        return;
    DWORD const code = ::GetLastError();
    throw_win32_exception(code, path);
}

/// The same for an empty directory or a link to a directory.
inline void remove_directory_at(std::wstring const &path)
{
    if (::RemoveDirectoryW(path.c_str()))
        return;
    DWORD const code = ::GetLastError();
    throw_win32_exception(code, path);
}

} // namespace fl::filesystem::detail

#endif
