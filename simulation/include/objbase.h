#ifndef FL_SIMULATION_OBJBASE_H
#define FL_SIMULATION_OBJBASE_H
// The names of <objbase.h> that the library and its tests use, on a host that is no
// Windows. The functions run on the simulated machine (simulation/machine.hpp).

#include <windows.h>

#include <cstdint>

#define STDMETHODCALLTYPE

using ULONG = std::uint32_t;
using HRESULT = std::int32_t;
using OLECHAR = wchar_t;
using LPOLESTR = OLECHAR *;
using LPCOLESTR = OLECHAR const *;

typedef struct _GUID
{
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
} GUID;

using IID = GUID;
using CLSID = GUID;
using REFGUID = GUID const &;
using REFIID = IID const &;
using REFCLSID = CLSID const &;

inline bool operator==(GUID const &one, GUID const &other)
{
    for (int i = 0; i < 8; ++i) {
        if (one.Data4[i] != other.Data4[i])
            return false;
    }
    return one.Data1 == other.Data1 && one.Data2 == other.Data2 && one.Data3 == other.Data3;
}

#define FL_SIMULATION_HRESULT(code) (static_cast<HRESULT>(code))
#define S_OK FL_SIMULATION_HRESULT(0L)
#define S_FALSE FL_SIMULATION_HRESULT(1L)
#define E_NOTIMPL FL_SIMULATION_HRESULT(0x80004001L)
#define E_NOINTERFACE FL_SIMULATION_HRESULT(0x80004002L)
#define E_POINTER FL_SIMULATION_HRESULT(0x80004003L)
#define E_FAIL FL_SIMULATION_HRESULT(0x80004005L)
#define E_UNEXPECTED FL_SIMULATION_HRESULT(0x8000FFFFL)
#define E_ACCESSDENIED FL_SIMULATION_HRESULT(0x80070005L)
#define E_OUTOFMEMORY FL_SIMULATION_HRESULT(0x8007000EL)
#define E_INVALIDARG FL_SIMULATION_HRESULT(0x80070057L)
#define RPC_E_CHANGED_MODE FL_SIMULATION_HRESULT(0x80010106L)
#define CLASS_E_NOAGGREGATION FL_SIMULATION_HRESULT(0x80040110L)
#define REGDB_E_CLASSNOTREG FL_SIMULATION_HRESULT(0x80040154L)
#define CO_E_NOTINITIALIZED FL_SIMULATION_HRESULT(0x800401F0L)

// by the sign, of a DWORD, too
#define FAILED(result) ((static_cast<std::uint64_t>(result) & 0x80000000U) != 0)
#define SUCCEEDED(result) (!FAILED(result))

#define FACILITY_WIN32 7

/// A code that is an HRESULT already stays what it is.
inline HRESULT HRESULT_FROM_WIN32(DWORD code)
{
    HRESULT const as_it_is = static_cast<HRESULT>(code);
    if (as_it_is <= 0)
        return as_it_is;
    return static_cast<HRESULT>((code & 0xFFFFU) | (DWORD{FACILITY_WIN32} << 16) | 0x80000000U);
}

#define CLSCTX_INPROC_SERVER 0x1
#define CLSCTX_INPROC_HANDLER 0x2
#define CLSCTX_LOCAL_SERVER 0x4

#define STGM_READ 0x00000000L
#define STGM_WRITE 0x00000001L
#define STGM_READWRITE 0x00000002L

typedef enum tagCOINIT
{
    COINIT_MULTITHREADED = 0x0,
    COINIT_APARTMENTTHREADED = 0x2,
    COINIT_DISABLE_OLE1DDE = 0x4,
    COINIT_SPEED_OVER_MEMORY = 0x8
} COINIT;

extern "C" {

extern IID const IID_IUnknown;

} // extern "C"

struct IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void **object) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default; // objects end by their last Release
};

using LPUNKNOWN = IUnknown *;

extern "C" {

HRESULT WINAPI CoInitialize(LPVOID reserved);
HRESULT WINAPI CoInitializeEx(LPVOID reserved, DWORD kind);
void WINAPI CoUninitialize();
HRESULT WINAPI CoCreateInstance(REFCLSID of_class, LPUNKNOWN outer, DWORD context, REFIID wanted,
                                LPVOID *object);

} // extern "C"

#endif
