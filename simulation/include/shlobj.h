#ifndef FL_SIMULATION_SHLOBJ_H
#define FL_SIMULATION_SHLOBJ_H
// The names of <shlobj.h> that the library and its tests use, on a host that is no
// Windows: the shell link object. Methods stand in the order of the original.

#include <objbase.h>

typedef struct _WIN32_FIND_DATAW WIN32_FIND_DATAW;
typedef struct HWND__ *HWND;

struct ITEMIDLIST;
using PIDLIST_ABSOLUTE = ITEMIDLIST *;
using PCIDLIST_ABSOLUTE = ITEMIDLIST const *;

typedef enum SLGP_FLAGS
{
    SLGP_SHORTPATH = 0x1,
    SLGP_UNCPRIORITY = 0x2,
    SLGP_RAWPATH = 0x4,
    SLGP_RELATIVEPRIORITY = 0x8
} SLGP_FLAGS;

typedef enum SLR_FLAGS
{
    SLR_NONE = 0x0,
    SLR_NO_UI = 0x1,
    SLR_UPDATE = 0x4,
    SLR_NOUPDATE = 0x8,
    SLR_NOSEARCH = 0x10,
    SLR_NOTRACK = 0x20
} SLR_FLAGS;

extern "C" {

extern CLSID const CLSID_ShellLink;
extern IID const IID_IShellLinkW;
extern IID const IID_IPersist;
extern IID const IID_IPersistFile;

} // extern "C"

struct IShellLinkW : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetPath(LPWSTR buffer, int room, WIN32_FIND_DATAW *found,
                                              DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIDList(PIDLIST_ABSOLUTE *list) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIDList(PCIDLIST_ABSOLUTE list) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDescription(LPWSTR buffer, int room) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDescription(LPCWSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetWorkingDirectory(LPWSTR buffer, int room) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetWorkingDirectory(LPCWSTR directory) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetArguments(LPWSTR buffer, int room) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetArguments(LPCWSTR arguments) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHotkey(WORD *key) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetHotkey(WORD key) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetShowCmd(int *command) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetShowCmd(int command) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIconLocation(LPWSTR buffer, int room, int *icon) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIconLocation(LPCWSTR path, int icon) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetRelativePath(LPCWSTR path, DWORD reserved) = 0;
    virtual HRESULT STDMETHODCALLTYPE Resolve(HWND window, DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPath(LPCWSTR path) = 0;

protected:
    ~IShellLinkW() = default;
};

struct IPersist : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetClassID(CLSID *id) = 0;

protected:
    ~IPersist() = default;
};

struct IPersistFile : public IPersist
{
    virtual HRESULT STDMETHODCALLTYPE IsDirty() = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(LPCOLESTR file, DWORD mode) = 0;
    virtual HRESULT STDMETHODCALLTYPE Save(LPCOLESTR file, BOOL remember) = 0;
    virtual HRESULT STDMETHODCALLTYPE SaveCompleted(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR *file) = 0;

protected:
    ~IPersistFile() = default;
};

#endif
