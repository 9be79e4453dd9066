#include "access/mapped_drive.hpp"

#include "pathname/long_prefix.hpp"

#include <windows.h>

#include <winnetwk.h>

#include <memory>

namespace fl::filesystem::detail {

namespace {

/// What the provider fills: a record, and behind it the text that it points to.
union universal_name {
    UNIVERSAL_NAME_INFOW record;
    unsigned char bytes[65534];
};

} // namespace

bool is_mapped_network_drive(std::wstring_view path, windows::path_type_enum path_type)
{
    if (path_type != windows::PATH_TYPE_DRIVE_ABSOLUTE &&
        path_type != windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE)
        return false;
    std::wstring plain(path); // which can be on a share by now, where a link from a drive led
    strip_long_path_prefix(plain, plain.size(), std::wstring::npos);
    // zeroed, and on the heap: callers are deep in their own stacks
    auto const name = std::make_unique<universal_name>();
    DWORD told_size = 32767; // half of what there is, which is plenty for any name
    DWORD const code =
        ::WNetGetUniversalNameW(plain.c_str(), UNIVERSAL_NAME_INFO_LEVEL, name.get(), &told_size);
    return code == NO_ERROR && name->record.lpUniversalName != nullptr;
}

} // namespace fl::filesystem::detail
