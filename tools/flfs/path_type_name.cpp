#include "flfs/path_type_name.hpp"

#include <array>
#include <cstdio>

namespace flfs {

namespace windows = fl::filesystem::detail::windows;

char const *path_type_name(windows::path_type_enum type)
{
    switch (type) {
    case windows::PATH_TYPE_INVALID:
        return "PATH_TYPE_INVALID";
    case windows::PATH_TYPE_RELATIVE:
        return "PATH_TYPE_RELATIVE";
    case windows::PATH_TYPE_ROOTED:
        return "PATH_TYPE_ROOTED";
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return "PATH_TYPE_DRIVE_ABSOLUTE";
    case windows::PATH_TYPE_DRIVE_RELATIVE:
        return "PATH_TYPE_DRIVE_RELATIVE";
    case windows::PATH_TYPE_UNC:
        return "PATH_TYPE_UNC";
    case windows::PATH_TYPE_UNC_NO_ROOT:
        return "PATH_TYPE_UNC_NO_ROOT";
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
        return "PATH_TYPE_LONG_DRIVE_ABSOLUTE";
    case windows::PATH_TYPE_LONG_DRIVE_RELATIVE:
        return "PATH_TYPE_LONG_DRIVE_RELATIVE";
    case windows::PATH_TYPE_LONG_UNC:
        return "PATH_TYPE_LONG_UNC";
    case windows::PATH_TYPE_LONG_UNC_NO_ROOT:
        return "PATH_TYPE_LONG_UNC_NO_ROOT";
    case windows::PATH_TYPE_DEVICE:
        return "PATH_TYPE_DEVICE";
    }
    return "(no path type)";
}

std::string path_type_hex(windows::path_type_enum type)
{
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "0x%04X", static_cast<unsigned int>(type));
    return buffer.data();
}

} // namespace flfs
