#include "failure/blame.hpp"

#include <fl/filesystem/operations.hpp>

#include "failure/missing_codes.hpp"
#include "failure/win32_error.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"
#include "standard/filesystem.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

/// Deleting or replacing a symbolic link takes a right on the link, and whether its
/// target can be read tells nothing about it.
bool is_symbolic_link(std::wstring const &path)
{
    std::error_code ignored; // what can't be looked at is taken for no link
    return standard::symlink_status(path, ignored).type() == std::filesystem::file_type::symlink;
}

/// Codes that speak of a place where something is to be put.
bool is_about_target(unsigned int code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_EXISTS:
    case ERROR_DIR_NOT_EMPTY:
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_DIRECTORY:
        return true;
    default:
        return false;
    }
}

} // namespace

void throw_win32_exception_for_pair(unsigned int error_code, std::wstring const &first_path,
                                    std::wstring const &second_path)
{
    std::u16string const source = narrow(first_path);
    DWORD const saved = ::GetLastError();
    if (is_symbolic_link(first_path) && error_code == ERROR_ACCESS_DENIED)
        throw_win32_exception(error_code, first_path);
    ::SetLastError(saved);
    // asked whatever the code is: a source that can't be looked at is a failure of its own
    bool const source_exists = exists(source);
    if (!source_exists && is_missing_source(error_code))
        throw_win32_exception(error_code, first_path);
    if (source.size() > longest_pathname)
        throw_win32_exception(error_code, first_path);
    if (error_code == ERROR_ACCESS_DENIED)
        throw_win32_exception(error_code, access(source, access_read) ? second_path : first_path);
    if (is_about_target(error_code))
        throw_win32_exception(error_code, second_path);
    throw_win32_exception(error_code, first_path, second_path);
}

} // namespace fl::filesystem::detail
