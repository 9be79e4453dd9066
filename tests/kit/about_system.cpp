#include "kit/about_system.hpp"

#include <windows.h>

#include <optional>
#include <sstream>

namespace kit {

namespace {

std::optional<DWORD> setting(wchar_t const *key, wchar_t const *name)
{
    DWORD value = 0, size = sizeof value;
    LSTATUS const status =
        ::RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size);
    return status == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
}

char const *in_words(std::optional<DWORD> value)
{
    return value.value_or(0) != 0 ? "on" : "off";
}

void *from_ntdll(char const *name)
{
    return reinterpret_cast<void *>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), name));
}

/// What GetVersionExW tells depends on the program's manifest.
std::string version()
{
    OSVERSIONINFOW info = {};
    info.dwOSVersionInfoSize = sizeof info;
    using call = LONG(WINAPI *)(OSVERSIONINFOW *);
    reinterpret_cast<call>(from_ntdll("RtlGetVersion"))(&info);
    std::ostringstream text;
    text << info.dwMajorVersion << '.' << info.dwMinorVersion << '.' << info.dwBuildNumber;
    if (auto const revision = setting(L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", L"UBR"))
        text << '.' << *revision;
    using wine_call = char const *(*)();
    if (void *const wine = from_ntdll("wine_get_version"))
        text << ", which is Wine " << reinterpret_cast<wine_call>(wine)() << " and no Windows";
    return text.str();
}

bool is_elevated()
{
    HANDLE token = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token))
        return false;
    TOKEN_ELEVATION elevation = {};
    DWORD size = 0;
    bool const known =
        ::GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size) != FALSE;
    ::CloseHandle(token);
    return known && elevation.TokenIsElevated != 0;
}

std::string file_system(std::wstring const &folder)
{
    wchar_t name[100] = L"unknown";
    ::GetVolumeInformationW(folder.substr(0, 3).c_str(), nullptr, 0, nullptr, nullptr, nullptr,
                            name, 100);
    std::string text;
    for (wchar_t const *unit = name; *unit != L'\0'; ++unit)
        text += static_cast<char>(*unit);
    return text;
}

} // namespace

std::string about_system(std::wstring const &folder)
{
    std::ostringstream text;
    text << "windows         " << version() << "\n"
         << "file system     " << file_system(folder) << "\n"
         << "long pathnames  LongPathsEnabled is "
         << in_words(
                setting(L"SYSTEM\\CurrentControlSet\\Control\\FileSystem", L"LongPathsEnabled"))
         << "\n"
         << "developer mode  "
         << in_words(setting(L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\AppModelUnlock",
                             L"AllowDevelopmentWithoutDevLicense"))
         << "\n"
         << "elevated        " << (is_elevated() ? "yes" : "no") << "\n"
         << "code page       " << ::GetACP() << "\n";
    return text.str();
}

} // namespace kit
