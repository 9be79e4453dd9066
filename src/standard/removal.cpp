#include "standard/filesystem.hpp"

#include "platform/owned_handle.hpp"
#include "standard/codes.hpp"
#include "standard/marking.hpp"
#include "standard/opening.hpp"

#include <windows.h>

namespace fl::filesystem::detail::standard {

namespace {

/// FileDispositionInfoEx, which some headers show only to the newest targets.
constexpr auto disposition_with_flags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

template <typename Information>
DWORD set_information(file_handle const &file, FILE_INFO_BY_HANDLE_CLASS kind, Information info)
{
    return code_of(
        [&] { return ::SetFileInformationByHandle(file.get(), kind, &info, sizeof info); });
}

/// How systems and file systems say that they know no deletion with flags: Windows before
/// 10 version 1809, FAT, many shares.
bool means_unknown(DWORD code)
{
    return code == ERROR_INVALID_PARAMETER || code == ERROR_INVALID_FUNCTION ||
           code == ERROR_NOT_SUPPORTED;
}

/// Frees the name at once, whoever has the file open.
DWORD mark_with_flags(file_handle const &file, read_only_names rule)
{
    DWORD flags = FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS;
    if (rule == read_only_names::are_removed)
        flags |= FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE;
    return set_information(file, disposition_with_flags, FILE_DISPOSITION_INFO_EX{flags});
}

DWORD mark_plainly(file_handle const &file)
{
    return set_information(file, FileDispositionInfo, FILE_DISPOSITION_INFO{TRUE});
}

DWORD set_attributes(file_handle const &file, DWORD attributes)
{
    FILE_BASIC_INFO info = {}; // what is 0 stays as it is, also attributes
    info.FileAttributes = attributes == 0 ? DWORD{FILE_ATTRIBUTE_NORMAL} : attributes;
    return set_information(file, FileBasicInfo, info);
}

/// Marks a file that was refused with code 5. If it is a read-only one, that attribute is
/// taken away. It is put back if it wasn't what stood in the way, and if the file has other
/// names, which keep its attributes.
DWORD mark_read_only(file_handle const &file)
{
    auto const [again, code] = open_again(file, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
    FILE_BASIC_INFO info = {};
    FILE_STANDARD_INFO names = {};
    if (!again || get_information(again, FileBasicInfo, info) != ERROR_SUCCESS ||
        get_information(again, FileStandardInfo, names) != ERROR_SUCCESS ||
        (info.FileAttributes & FILE_ATTRIBUTE_READONLY) == 0)
        return ERROR_ACCESS_DENIED;
    DWORD const writable = info.FileAttributes & ~DWORD{FILE_ATTRIBUTE_READONLY};
    if (set_attributes(again, writable) != ERROR_SUCCESS)
        return ERROR_ACCESS_DENIED;
    DWORD const answer = mark_plainly(file);
    if (answer != ERROR_SUCCESS || names.NumberOfLinks > 1)
        set_attributes(again, info.FileAttributes);
    return answer;
}

} // namespace

DWORD mark_for_deletion(file_handle const &file, read_only_names rule)
{
    DWORD code = mark_with_flags(file, rule);
    if (means_unknown(code))
        code = mark_plainly(file);
    bool const tries_again = code == ERROR_ACCESS_DENIED && rule == read_only_names::are_removed;
    return tries_again ? mark_read_only(file) : code;
}

bool remove(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    auto const [file, open_code] = open_entry(text, DELETE);
    if (!file) {
        if (!is_missing_for_standard(open_code))
            ec = system_code(open_code);
        return false;
    }
    ec = system_code(mark_for_deletion(file, read_only_names::are_removed));
    return !ec;
}

void rename(std::wstring const &from, std::wstring const &to, std::error_code &ec)
{
    constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED;
    attempt(ec, [&] { return ::MoveFileExW(from.c_str(), to.c_str(), flags); });
}

} // namespace fl::filesystem::detail::standard
