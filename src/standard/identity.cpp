#include "standard/identity.hpp"

#include "standard/codes.hpp"
#include "standard/opening.hpp"

#include <cstddef>

namespace fl::filesystem::detail::standard {

namespace {

/// File systems without identifiers of 128 bits, such as FAT, have those of 64.
bool read_short_identity(file_handle const &file, file_identity &identity, std::error_code &ec)
{
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!attempt(ec, [&] { return ::GetFileInformationByHandle(file.get(), &info); }))
        return false;
    identity.volume = info.dwVolumeSerialNumber;
    DWORD const halves[] = {info.nFileIndexLow, info.nFileIndexHigh};
    for (std::size_t i = 0; i < 8; ++i)
        identity.file.Identifier[i] = static_cast<BYTE>(halves[i / 4] >> (8 * (i % 4)));
    return true;
}

} // namespace

bool read_identity(std::wstring const &text, file_identity &identity, std::error_code &ec)
{
    auto const [file, code] = open_target(text);
    if (!file)
        return fail(code, ec);
    FILE_ID_INFO info = {};
    ec = system_code(get_information(file, FileIdInfo, info));
    // each file system says in its own way that it has none; who says nothing doesn't say that
    if (ec && !is_unexplained(ec))
        return read_short_identity(file, identity, ec);
    identity = {info.VolumeSerialNumber, info.FileId};
    return !ec;
}

} // namespace fl::filesystem::detail::standard
