#ifndef FL_FILESYSTEM_SRC_PLATFORM_SHELL_LINK_OBJECT_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_SHELL_LINK_OBJECT_HPP
// The shell link object, by which alone shortcut files are read and written. All of
// it is inline: the command-line tool takes the same steps without reaching into the
// library.

#include "platform/com_apartment.hpp"
#include "platform/com_pointer.hpp"

#include <shlobj.h>

#include <cstdint>
#include <string>

namespace fl::filesystem::detail {

/// The Win32 code inside of a failing HRESULT, or 14077 for one that holds none and
/// that no code would describe.
inline unsigned int hresult_to_win32(HRESULT hresult) noexcept
{
    constexpr std::uint32_t win32_failure = 0x8007; // severity and FACILITY_WIN32
    constexpr unsigned int indescribable = 14077;
    std::uint32_t const bits = static_cast<std::uint32_t>(hresult);
    return bits >> 16 == win32_failure ? bits & 0xFFFFU : indescribable;
}

inline HRESULT create_shell_link(com_pointer<IShellLinkW> &link)
{
    return link.acquire([](void **address) {
        return ::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                  address);
    });
}

/// The other interface of the same object, which reads and writes its file.
inline HRESULT query_persistence(com_pointer<IShellLinkW> const &link,
                                 com_pointer<IPersistFile> &persistence)
{
    return persistence.acquire(
        [&](void **address) { return link->QueryInterface(IID_IPersistFile, address); });
}

/// Stores in `buffer` the target of the shortcut `file` as it is written there, with
/// environment variables unexpanded. Returns the first failure, or what the last call
/// answers. The shell has looked for the target by then and may have searched for one
/// that was moved. `file` has no long prefix, which the shell is not handed.
inline HRESULT read_stored_path(std::wstring const &file, wchar_t (&buffer)[MAX_PATH])
{
    com_apartment const apartment; // outlives the interfaces
    com_pointer<IShellLinkW> link;
    com_pointer<IPersistFile> persistence;
    HRESULT result = create_shell_link(link);
    if (SUCCEEDED(result))
        result = query_persistence(link, persistence);
    if (SUCCEEDED(result))
        result = persistence->Load(file.c_str(), STGM_READ);
    if (SUCCEEDED(result))
        result = link->Resolve(nullptr, 0);
    if (SUCCEEDED(result))
        result = link->GetPath(buffer, MAX_PATH, nullptr, SLGP_RAWPATH);
    return result;
}

/// Writes the shortcut `file` with this target, over a file that is there. Returns the
/// first failure, or what the last call answers. A target that the shell refuses isn't
/// one: the shortcut is then without.
inline HRESULT save_stored_path(std::wstring const &file, std::wstring const &target)
{
    com_apartment const apartment; // outlives the interfaces
    com_pointer<IShellLinkW> link;
    com_pointer<IPersistFile> persistence;
    HRESULT result = create_shell_link(link);
    if (SUCCEEDED(result)) {
        static_cast<void>(link->SetPath(target.c_str()));
        result = query_persistence(link, persistence);
    }
    if (SUCCEEDED(result))
        result = persistence->Save(file.c_str(), TRUE);
    return result;
}

} // namespace fl::filesystem::detail

#endif
