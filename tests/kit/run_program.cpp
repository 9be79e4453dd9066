#include "kit/run_program.hpp"

#include <sstream>

namespace kit {

namespace {

constexpr DWORD patience = 30 * 60 * 1000; // a server that isn't there takes its time

HANDLE open_for_heirs(wchar_t const *name, DWORD access, DWORD disposition)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return ::CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string content_of(std::wstring const &name)
{
    std::string content;
    HANDLE const file =
        ::CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return content;
    char part[4096];
    DWORD count = 0;
    while (::ReadFile(file, part, sizeof part, &count, nullptr) && count != 0)
        content.append(part, count);
    ::CloseHandle(file);
    return content;
}

void wait_for(PROCESS_INFORMATION const &process, finished &result)
{
    ULONGLONG const begin = ::GetTickCount64();
    if (::WaitForSingleObject(process.hProcess, patience) != WAIT_OBJECT_0) {
        result.was_ended = true;
        ::TerminateProcess(process.hProcess, 1);
        ::WaitForSingleObject(process.hProcess, INFINITE);
    }
    ::GetExitCodeProcess(process.hProcess, &result.code);
    result.seconds = static_cast<int>((::GetTickCount64() - begin + 500) / 1000);
}

} // namespace

finished run_program(std::wstring const &command, std::wstring const &folder)
{
    finished result;
    std::wstring const output = folder + L"\\output";
    HANDLE const nothing = open_for_heirs(L"nul", GENERIC_READ, OPEN_EXISTING);
    HANDLE const log = open_for_heirs(output.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = nothing;
    start.hStdOutput = start.hStdError = log;
    PROCESS_INFORMATION process = {};
    std::wstring line = command; // the call may change it
    result.began = ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                    folder.c_str(), &start, &process) != FALSE;
    if (result.began) {
        wait_for(process, result);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    } else {
        result.code = ::GetLastError();
    }
    ::CloseHandle(log);
    ::CloseHandle(nothing);
    result.printed = content_of(output);
    ::DeleteFileW(output.c_str());
    return result;
}

std::string finished::trouble() const
{
    constexpr DWORD no_dll = 0xC0000135, no_entry = 0xC0000139; // STATUS_DLL_NOT_FOUND and its kin
    std::ostringstream text;
    if (is_well())
        return {};
    if (!began)
        text << "didn't start: code " << code;
    else if (was_ended)
        text << "was ended after " << seconds << " seconds";
    else if (code == no_dll)
        text << "didn't start: a DLL is missing";
    else if (code == no_entry)
        text << "didn't start: a DLL is not the one that it wants";
    else if (code >= 0x80000000)
        text << "crashed with 0x" << std::hex << code;
    else
        text << "ended with " << code;
    return text.str();
}

} // namespace kit
