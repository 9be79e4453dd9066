#include "failure/blame.hpp"

#include "failure/missing_codes.hpp"
#include "failure/win32_error.hpp"
#include "operations/source_questions.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

/// Codes that speak of a place where something is to be put. So does "too long" (206), but
/// what becomes of it names nobody.
bool is_about_target(unsigned int code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_EXISTS:
    case ERROR_DIR_NOT_EMPTY:
    case ERROR_ALREADY_EXISTS:
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
    // deleting or replacing a symbolic link takes a right on the link, and whether its
    // target can be read tells nothing about it
    if (is_symbolic_link(first_path) && error_code == ERROR_ACCESS_DENIED)
        throw_win32_exception(error_code, first_path);
    ::SetLastError(saved);
    // asked whatever the code is: a source that can't be looked at is a failure of its own
    bool const source_exists = does_source_exist(source);
    if (!source_exists && is_missing_source(error_code))
        throw_win32_exception(error_code, first_path);
    if (source.size() > longest_pathname)
        throw_win32_exception(error_code, first_path);
    if (error_code == ERROR_ACCESS_DENIED)
        throw_win32_exception(error_code, can_source_be_read(source) ? second_path : first_path);
    if (is_about_target(error_code))
        throw_win32_exception(error_code, second_path);
    throw_win32_exception(error_code, first_path, second_path);
}

} // namespace fl::filesystem::detail
