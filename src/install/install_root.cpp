#include "install/install_root.hpp"

#include <fl/filesystem/pathname.hpp>

#include <windows.h>

namespace fl::filesystem::detail {

namespace {

using path_text = path_traits<wchar_t, wchar_t>;

constexpr char platform_directory[] = "win64";
constexpr char program_directory[] = "bin";

bool is_named(std::wstring const &name, std::string_view wanted)
{
    return ::lstrcmpiW(name.c_str(), std::wstring(wanted.begin(), wanted.end()).c_str()) == 0;
}

/// Cuts the last element off `path` and returns it, empty at the end.
std::wstring take_last(std::wstring &path)
{
    std::wstring name = path_text::extract_filename(path);
    if (!name.empty())
        path_text::remove_filename(path);
    return name;
}

} // namespace

std::wstring find_install_root(std::wstring const &path)
{
    std::wstring rest = path_text::make_native_form(path, true);
    for (;;) {
        std::wstring name = take_last(rest);
        if (name.empty())
            return {};
        if (!is_named(name, platform_directory))
            continue;
        name = take_last(rest);
        if (name.empty())
            return {};
        if (is_named(name, program_directory))
            return rest;
    }
}

} // namespace fl::filesystem::detail
