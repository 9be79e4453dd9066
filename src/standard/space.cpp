#include "standard/filesystem.hpp"

#include "standard/opening.hpp"

#include <windows.h>

namespace fl::filesystem::detail::standard {

namespace {

DWORD query_space(std::wstring const &directory, std::filesystem::space_info &info)
{
    ULARGE_INTEGER available = {};
    ULARGE_INTEGER capacity = {};
    ULARGE_INTEGER free = {};
    if (!::GetDiskFreeSpaceExW(directory.c_str(), &available, &capacity, &free))
        return ::GetLastError();
    info = {capacity.QuadPart, free.QuadPart, available.QuadPart};
    return ERROR_SUCCESS;
}

/// The root of the volume that a file is on, through all links.
std::wstring volume_of(std::wstring const &text, std::error_code &ec)
{
    auto const [file, code] = open_target(text);
    if (!file) {
        ec = system_code(code);
        return {};
    }
    std::wstring const path = final_path(file, ec);
    if (ec)
        return {};
    std::wstring root(path.size() + 2, L'\0'); // no longer than it, but for a backslash
    if (::GetVolumePathNameW(path.c_str(), root.data(), static_cast<DWORD>(root.size())))
        return root.c_str();
    ec = system_code(::GetLastError());
    return {};
}

} // namespace

std::filesystem::space_info space(std::wstring const &text, std::error_code &ec)
{
    ec.clear();
    std::filesystem::space_info info = {};
    DWORD code = query_space(text, info);
    if (code == ERROR_DIRECTORY) { // it is a file
        std::wstring const root = volume_of(text, ec);
        code = ec ? static_cast<DWORD>(ec.value()) : query_space(root, info);
    }
    if (code != ERROR_SUCCESS)
        ec = system_code(code);
    return info;
}

} // namespace fl::filesystem::detail::standard
