#include "failure/win32_error.hpp"

#include "failure/missing_codes.hpp"
#include "failure/throw.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

// The system also answers "path not found" to a pathname beyond its length limit.
[[noreturn]] void throw_not_found_or_too_large(std::u16string const &first,
                                               std::u16string const &second)
{
    std::u16string const &longer = first.size() >= second.size() ? first : second;
    if (longer.size() > longest_pathname)
        throw_exception(FileNameTooLarge(longer));
    throw_exception(PathNotFound(first));
}

} // namespace

void throw_win32_exception(unsigned int error_code, std::wstring const &path,
                           std::wstring const &second_path)
{
    std::u16string const first = narrow(path);
    std::u16string const second = narrow(second_path);
    switch (error_code) {
    case ERROR_FILE_NOT_FOUND:
        throw_exception(PathNotFound(first));
    case ERROR_PATH_NOT_FOUND:
        throw_not_found_or_too_large(first, second);
    case ERROR_ACCESS_DENIED:
    case ERROR_CANT_ACCESS_FILE:
        throw_exception(AccessDenied(first));
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        throw_exception(FileExistsError(first));
    case ERROR_INVALID_NAME:
        throw_invalid_argument(
            "The filename, directory name, or volume label syntax is incorrect.");
    case ERROR_DIR_NOT_EMPTY:
        throw_exception(DirectoryNotEmpty(first));
    case ERROR_BAD_PATHNAME:
        throw_invalid_argument("The specified path is invalid.");
    case ERROR_FILENAME_EXCED_RANGE:
        throw_exception(FileNameTooLarge());
    case ERROR_DIRECTORY:
        throw_exception(NotDirectoryError(first));
    case ERROR_NOT_A_REPARSE_POINT:
        throw_invalid_argument("The file or directory is not a reparse point.");
    default:
        throw_exception(SystemError(error_code, first, {second}));
    }
}

void throw_win32_exception(unsigned int error_code, std::wstring const &path)
{
    throw_win32_exception(error_code, path, std::wstring());
}

void throw_unless_missing(unsigned int error_code, std::wstring const &path)
{
    if (is_missing_for_use(error_code, path.size()))
        return;
    bool const is_too_long = error_code == ERROR_PATH_NOT_FOUND;
    throw_win32_exception(is_too_long ? ERROR_FILENAME_EXCED_RANGE : error_code, path);
}

} // namespace fl::filesystem::detail
