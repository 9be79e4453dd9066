#include "standard/filesystem.hpp"

#include "standard/opening.hpp"

#include <windows.h>

#include <cstdint>

namespace fl::filesystem::detail::standard {

namespace {

DWORD query_space(std::wstring const &directory, std::filesystem::space_info &info)
{
    ULARGE_INTEGER available = {};
    ULARGE_INTEGER capacity = {};
    ULARGE_INTEGER free = {};
    DWORD const code = code_of(
        [&] { return ::GetDiskFreeSpaceExW(directory.c_str(), &available, &capacity, &free); });
    if (code == ERROR_SUCCESS)
        info = {capacity.QuadPart, free.QuadPart, available.QuadPart};
    return code;
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
    std::wstring root(path.size() + 1, L'\0'); // a file is below it
    DWORD const room = static_cast<DWORD>(root.size());
    attempt(ec, [&] { return ::GetVolumePathNameW(path.c_str(), root.data(), room); });
    return root.substr(0, root.find(L'\0'));
}

} // namespace

std::filesystem::space_info space(std::wstring const &text, std::error_code &ec)
{
    constexpr auto unknown = static_cast<std::uintmax_t>(-1);
    std::filesystem::space_info info = {unknown, unknown, unknown};
    ec = system_code(query_space(text, info));
    if (ec != system_code(ERROR_DIRECTORY))
        return info;
    std::wstring const root = volume_of(text, ec); // it is a file
    if (!ec)
        ec = system_code(query_space(root, info));
    return info;
}

} // namespace fl::filesystem::detail::standard
