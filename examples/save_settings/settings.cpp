#include "settings.hpp"

namespace {

/// Writes all of `text` to a new file. Returns 0, or the system's code.
DWORD write_new(std::wstring const &name, std::string_view text)
{
    HANDLE const file = ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return ::GetLastError();
    DWORD code = 0;
    DWORD written = 0;
    if (!::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        code = ::GetLastError();
    if (code == 0 && written != text.size())
        code = ERROR_DISK_FULL;
    if (!::CloseHandle(file) && code == 0)
        code = ::GetLastError();
    return code;
}

} // namespace

DWORD save_settings(std::wstring const &name, std::string_view text)
{
    std::wstring const beside = name + L".new";
    DWORD code = write_new(beside, text);
    if (code == 0 && !::MoveFileExW(beside.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING))
        code = ::GetLastError();
    if (code != 0)
        ::DeleteFileW(beside.c_str());
    return code;
}
