#include "standard/filesystem.hpp"

#include "platform/owned_handle.hpp"
#include "platform/reparse_point.hpp"
#include "standard/codes.hpp"

#include <windows.h>

namespace fl::filesystem::detail::standard {

namespace {

/// FileDispositionInfoEx, which some headers show only to the newest targets.
constexpr auto disposition_with_flags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

template <typename Information>
DWORD set_information(file_handle const &file, FILE_INFO_BY_HANDLE_CLASS kind, Information info)
{
    if (::SetFileInformationByHandle(file.get(), kind, &info, sizeof info))
        return ERROR_SUCCESS;
    return ::GetLastError();
}

/// How systems and file systems say that they know no deletion with flags: Windows before
/// 10 version 1809, FAT, many shares.
bool means_unknown(DWORD code)
{
    return code == ERROR_INVALID_PARAMETER || code == ERROR_INVALID_FUNCTION ||
           code == ERROR_NOT_SUPPORTED;
}

/// Frees the name at once, whoever has the file open, and removes read-only files, too.
DWORD mark_with_flags(file_handle const &file)
{
    constexpr DWORD flags = FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS |
                            FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE;
    return set_information(file, disposition_with_flags, FILE_DISPOSITION_INFO_EX{flags});
}

DWORD mark_plainly(file_handle const &file)
{
    return set_information(file, FileDispositionInfo, FILE_DISPOSITION_INFO{TRUE});
}

/// Marks a file that was refused with code 5. If it is a read-only one, that attribute is
/// taken away, and put back if it wasn't what stood in the way.
DWORD mark_read_only(file_handle const &file, std::wstring const &text)
{
    auto const [attributes_file, code] =
        open_reparse_point(text, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
    FILE_BASIC_INFO info = {};
    if (!attributes_file ||
        !::GetFileInformationByHandleEx(attributes_file.get(), FileBasicInfo, &info, sizeof info))
        return ERROR_ACCESS_DENIED;
    FILE_BASIC_INFO changed = {}; // times of 0 stay as they are
    changed.FileAttributes = info.FileAttributes & ~DWORD{FILE_ATTRIBUTE_READONLY};
    if (changed.FileAttributes == info.FileAttributes)
        return ERROR_ACCESS_DENIED;
    if (changed.FileAttributes == 0)
        changed.FileAttributes = FILE_ATTRIBUTE_NORMAL; // 0 would change nothing
    if (set_information(attributes_file, FileBasicInfo, changed) != ERROR_SUCCESS)
        return ERROR_ACCESS_DENIED;
    DWORD const answer = mark_plainly(file);
    if (answer != ERROR_SUCCESS) {
        changed.FileAttributes = info.FileAttributes;
        set_information(attributes_file, FileBasicInfo, changed);
    }
    return answer;
}

DWORD mark_for_deletion(file_handle const &file, std::wstring const &text)
{
    DWORD code = mark_with_flags(file);
    if (!means_unknown(code))
        return code;
    code = mark_plainly(file);
    return code == ERROR_ACCESS_DENIED ? mark_read_only(file, text) : code;
}

} // namespace

bool remove(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    auto const [file, open_code] = open_reparse_point(text, DELETE);
    if (!file)
        return !is_missing_for_standard(open_code) && fail(open_code, ec);
    DWORD const code = mark_for_deletion(file, text);
    return code == ERROR_SUCCESS || fail(code, ec);
}

void rename(std::wstring const &from, std::wstring const &to, std::error_code &ec)
{
    ec.clear();
    if (!::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED))
        ec = system_code(::GetLastError());
}

} // namespace fl::filesystem::detail::standard
