#ifndef FL_FILESYSTEM_SRC_STANDARD_OPENING_HPP
#define FL_FILESYSTEM_SRC_STANDARD_OPENING_HPP
// What the files of the standard facility share about opening, and about texts that calls
// write.

#include "platform/filled_buffer.hpp"
#include "platform/owned_handle.hpp"
#include "standard/codes.hpp"

#include <windows.h>

#include <string>

namespace fl::filesystem::detail::standard {

/// `file` is empty if `code` isn't 0.
struct opened_target
{
    file_handle file;
    DWORD code;
};

/// Opens what `text` leads to, a file or a directory, to look at it.
inline opened_target open_target(std::wstring const &text) noexcept
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE const raw = ::CreateFileW(text.c_str(), FILE_READ_ATTRIBUTES, share, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    DWORD const code = ::GetLastError();
    if (raw == INVALID_HANDLE_VALUE)
        return {file_handle(), code};
    return {file_handle(raw), ERROR_SUCCESS};
}

/// The text that `call(buffer, room)` writes, however long it is.
template <typename Call>
std::wstring filled_text(std::error_code &ec, Call call)
{
    ec.clear();
    DWORD code = ERROR_SUCCESS;
    auto text = filled_buffer(260, growth::until_it_fits, [&](wchar_t *buffer, DWORD room) {
        DWORD const answer = call(buffer, room);
        code = ::GetLastError();
        return answer;
    });
    if (text)
        return *std::move(text);
    ec = system_code(code);
    return {};
}

/// The pathname, with a long prefix, of what `file` is.
inline std::wstring final_path(file_handle const &file, std::error_code &ec)
{
    return filled_text(ec, [&](wchar_t *buffer, DWORD room) {
        return ::GetFinalPathNameByHandleW(file.get(), buffer, room, VOLUME_NAME_DOS);
    });
}

} // namespace fl::filesystem::detail::standard

#endif
