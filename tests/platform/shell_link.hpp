#ifndef FL_FILESYSTEM_TESTS_PLATFORM_SHELL_LINK_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_SHELL_LINK_HPP
// COM and the shell link object, as tests use them.

#include "platform/contract.hpp"

#include <objbase.h>
#include <shlobj.h>

#include <stdexcept>

namespace contract {

/// Of no class and no interface.
inline constexpr GUID unknown_id = {
    0x6F1C0E52, 0x0001, 0x4002, {0x80, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09}};

/// An HRESULT as the tables have it.
inline DWORD code_of(HRESULT result)
{
    return static_cast<DWORD>(result);
}

/// A system code as an HRESULT.
constexpr DWORD from_win32(DWORD code)
{
    return 0x80070000 | code;
}

inline constexpr DWORD yes = 0; // S_OK
inline constexpr DWORD no = 1;  // S_FALSE
inline constexpr DWORD garbage = 0x80004005;

struct apartment
{
    apartment() { ::CoInitialize(nullptr); }
    ~apartment() { ::CoUninitialize(); }
    apartment(apartment const &) = delete;
    apartment &operator=(apartment const &) = delete;
};

inline DWORD create_link(void **object)
{
    return code_of(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IShellLinkW, object));
}

/// A shell link object by both of its interfaces.
class shortcut
{
public:
    shortcut()
    {
        if (create_link(reinterpret_cast<void **>(&link_)) != yes)
            throw std::runtime_error("there is no shell link object");
        link_->QueryInterface(IID_IPersistFile, reinterpret_cast<void **>(&file_));
    }
    ~shortcut()
    {
        file_->Release();
        link_->Release();
    }
    shortcut(shortcut const &) = delete;
    shortcut &operator=(shortcut const &) = delete;

    IShellLinkW *link() const noexcept { return link_; }
    IPersistFile *file() const noexcept { return file_; }

    DWORD set_path(std::wstring const &path) { return code_of(link_->SetPath(path.c_str())); }
    DWORD load(std::wstring const &name) { return code_of(file_->Load(name.c_str(), STGM_READ)); }
    DWORD save(std::wstring const &name) { return code_of(file_->Save(name.c_str(), TRUE)); }
    DWORD resolve() { return code_of(link_->Resolve(nullptr, 0)); }

    std::wstring path(int room = MAX_PATH)
    {
        std::wstring buffer(1000, L'#');
        path_code_ = code_of(link_->GetPath(buffer.data(), room, nullptr, SLGP_RAWPATH));
        return buffer.c_str();
    }
    /// Of the last `path`.
    DWORD path_code() const noexcept { return path_code_; }

private:
    IShellLinkW *link_ = nullptr;
    IPersistFile *file_ = nullptr;
    DWORD path_code_ = 0;
};

} // namespace contract

#endif
