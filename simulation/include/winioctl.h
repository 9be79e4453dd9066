#ifndef FL_SIMULATION_WINIOCTL_H
#define FL_SIMULATION_WINIOCTL_H
// Control codes for DeviceIoControl, on a host that is no Windows.

#include <windows.h>

#define FSCTL_SET_REPARSE_POINT 0x000900A4
#define FSCTL_GET_REPARSE_POINT 0x000900A8
#define FSCTL_DELETE_REPARSE_POINT 0x000900AC

#endif
