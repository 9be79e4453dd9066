#ifndef FL_FILESYSTEM_TESTS_SUPPORT_SHELL_LINK_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_SHELL_LINK_HPP
// COM and the shell link object, as tests hold them.

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <stdexcept>
#include <string>

namespace test_support {

/// An HRESULT as tables have it.
inline DWORD code_of(HRESULT result)
{
    return static_cast<DWORD>(result);
}

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
        if (FAILED(create_link(reinterpret_cast<void **>(&link_))))
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

} // namespace test_support

#endif
