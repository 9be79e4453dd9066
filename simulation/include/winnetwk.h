#ifndef FL_SIMULATION_WINNETWK_H
#define FL_SIMULATION_WINNETWK_H
// The names of <winnetwk.h> that the library and its tests use, on a host that is no
// Windows. The functions run on the simulated machine (simulation/machine.hpp).

#include <windows.h>

#define UNIVERSAL_NAME_INFO_LEVEL 0x00000001
#define REMOTE_NAME_INFO_LEVEL 0x00000002

typedef struct _UNIVERSAL_NAME_INFOW
{
    LPWSTR lpUniversalName;
} UNIVERSAL_NAME_INFOW, *LPUNIVERSAL_NAME_INFOW;

typedef struct _REMOTE_NAME_INFOW
{
    LPWSTR lpUniversalName;
    LPWSTR lpConnectionName;
    LPWSTR lpRemainingPath;
} REMOTE_NAME_INFOW, *LPREMOTE_NAME_INFOW;

#define WN_SUCCESS NO_ERROR
#define WN_NO_ERROR NO_ERROR
#define WN_NOT_SUPPORTED ERROR_NOT_SUPPORTED
#define WN_MORE_DATA ERROR_MORE_DATA
#define WN_BAD_VALUE ERROR_INVALID_PARAMETER
#define WN_BAD_LOCALNAME ERROR_BAD_DEVICE
#define WN_NO_NETWORK ERROR_NO_NETWORK
#define WN_NOT_CONNECTED ERROR_NOT_CONNECTED

extern "C" {

DWORD WINAPI WNetGetUniversalNameW(LPCWSTR local_path, DWORD level, LPVOID buffer, DWORD *size);

} // extern "C"

#endif
