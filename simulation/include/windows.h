#ifndef FL_SIMULATION_WINDOWS_H
#define FL_SIMULATION_WINDOWS_H
// The names of <windows.h> that the library and its tests use, on a host that is
// no Windows. The functions run on the simulated machine (simulation/machine.hpp).
//
// A `wchar_t` holds one UTF-16 unit, also where it has 32 bits.

#include <cstdarg>
#include <cstdint>

#define WINAPI
#define CONST const
#define FALSE 0
#define TRUE 1
#define MAX_PATH 260

using VOID = void;
using BOOL = int;
using BYTE = unsigned char;
using BOOLEAN = unsigned char;
using WORD = unsigned short;
using LONG = std::int32_t;
using DWORD = std::uint32_t;
using ULONGLONG = std::uint64_t;
using LONGLONG = std::int64_t;
using WCHAR = wchar_t;
using SIZE_T = std::uintptr_t;
using PVOID = void *;
using LPVOID = void *;
using LPCVOID = void const *;
using LPDWORD = DWORD *;
using LPWSTR = wchar_t *;
using LPCWSTR = wchar_t const *;
using HANDLE = void *;

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1)))

typedef struct _SECURITY_ATTRIBUTES
{
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
} SECURITY_ATTRIBUTES, *PSECURITY_ATTRIBUTES, *LPSECURITY_ATTRIBUTES;

// As in the original, these are signed and `DWORD` is not.
#define ERROR_SUCCESS 0L
#define NO_ERROR 0L
#define ERROR_INVALID_FUNCTION 1L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_PATH_NOT_FOUND 3L
#define ERROR_TOO_MANY_OPEN_FILES 4L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_INVALID_DRIVE 15L
#define ERROR_CURRENT_DIRECTORY 16L
#define ERROR_NOT_SAME_DEVICE 17L
#define ERROR_NO_MORE_FILES 18L
#define ERROR_WRITE_PROTECT 19L
#define ERROR_NOT_READY 21L
#define ERROR_BAD_LENGTH 24L
#define ERROR_GEN_FAILURE 31L
#define ERROR_SHARING_VIOLATION 32L
#define ERROR_LOCK_VIOLATION 33L
#define ERROR_HANDLE_EOF 38L
#define ERROR_NOT_SUPPORTED 50L
#define ERROR_BAD_NETPATH 53L
#define ERROR_NETNAME_DELETED 64L
#define ERROR_BAD_DEV_TYPE 66L
#define ERROR_BAD_NET_NAME 67L
#define ERROR_FILE_EXISTS 80L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_OPEN_FAILED 110L
#define ERROR_DISK_FULL 112L
#define ERROR_CALL_NOT_IMPLEMENTED 120L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_INVALID_NAME 123L
#define ERROR_MOD_NOT_FOUND 126L
#define ERROR_DIR_NOT_EMPTY 145L
#define ERROR_BAD_PATHNAME 161L
#define ERROR_ALREADY_EXISTS 183L
#define ERROR_ENVVAR_NOT_FOUND 203L
#define ERROR_FILENAME_EXCED_RANGE 206L
#define ERROR_MORE_DATA 234L
#define ERROR_DIRECTORY 267L
#define ERROR_MR_MID_NOT_FOUND 317L
#define ERROR_OPERATION_ABORTED 995L
#define ERROR_NOACCESS 998L
#define ERROR_IO_DEVICE 1117L
#define ERROR_TOO_MANY_LINKS 1142L
#define ERROR_BAD_DEVICE 1200L
#define ERROR_NO_NETWORK 1222L
#define ERROR_PRIVILEGE_NOT_HELD 1314L
#define ERROR_INCORRECT_SIZE 1462L
#define ERROR_SYMLINK_CLASS_DISABLED 1463L
#define ERROR_CANT_ACCESS_FILE 1920L
#define ERROR_CANT_RESOLVE_FILENAME 1921L
#define ERROR_NOT_CONNECTED 2250L
#define ERROR_NOT_A_REPARSE_POINT 4390L
#define ERROR_REPARSE_ATTRIBUTE_CONFLICT 4391L
#define ERROR_INVALID_REPARSE_DATA 4392L
#define ERROR_REPARSE_TAG_INVALID 4393L
#define ERROR_REPARSE_TAG_MISMATCH 4394L
#define ERROR_DS_LOOP_DETECT 8246L

#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_HIDDEN 0x00000002
#define FILE_ATTRIBUTE_SYSTEM 0x00000004
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_DEVICE 0x00000040
#define FILE_ATTRIBUTE_NORMAL 0x00000080
#define FILE_ATTRIBUTE_TEMPORARY 0x00000100
#define FILE_ATTRIBUTE_SPARSE_FILE 0x00000200
#define FILE_ATTRIBUTE_REPARSE_POINT 0x00000400
#define FILE_ATTRIBUTE_COMPRESSED 0x00000800
#define FILE_ATTRIBUTE_OFFLINE 0x00001000
#define FILE_ATTRIBUTE_NOT_CONTENT_INDEXED 0x00002000
#define FILE_ATTRIBUTE_ENCRYPTED 0x00004000
#define INVALID_FILE_ATTRIBUTES (static_cast<DWORD>(-1))

#define FILE_READ_DATA 0x0001
#define FILE_LIST_DIRECTORY 0x0001
#define FILE_WRITE_DATA 0x0002
#define FILE_ADD_FILE 0x0002
#define FILE_APPEND_DATA 0x0004
#define FILE_ADD_SUBDIRECTORY 0x0004
#define FILE_READ_EA 0x0008
#define FILE_WRITE_EA 0x0010
#define FILE_EXECUTE 0x0020
#define FILE_TRAVERSE 0x0020
#define FILE_DELETE_CHILD 0x0040
#define FILE_READ_ATTRIBUTES 0x0080
#define FILE_WRITE_ATTRIBUTES 0x0100
#define DELETE 0x00010000L
#define READ_CONTROL 0x00020000L
#define WRITE_DAC 0x00040000L
#define WRITE_OWNER 0x00080000L
#define SYNCHRONIZE 0x00100000L
#define GENERIC_ALL 0x10000000
#define GENERIC_EXECUTE 0x20000000
#define GENERIC_WRITE 0x40000000
#define GENERIC_READ 0x80000000
#define FILE_GENERIC_READ 0x00120089L
#define FILE_GENERIC_WRITE 0x00120116L
#define FILE_GENERIC_EXECUTE 0x001200A0L
#define FILE_ALL_ACCESS 0x001F01FFL

#define FILE_SHARE_READ 0x00000001
#define FILE_SHARE_WRITE 0x00000002
#define FILE_SHARE_DELETE 0x00000004

#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define OPEN_ALWAYS 4
#define TRUNCATE_EXISTING 5

#define FILE_FLAG_OPEN_REPARSE_POINT 0x00200000
#define FILE_FLAG_POSIX_SEMANTICS 0x01000000
#define FILE_FLAG_BACKUP_SEMANTICS 0x02000000
#define FILE_FLAG_DELETE_ON_CLOSE 0x04000000
#define FILE_FLAG_SEQUENTIAL_SCAN 0x08000000
#define FILE_FLAG_RANDOM_ACCESS 0x10000000

#define MOVEFILE_REPLACE_EXISTING 0x00000001
#define MOVEFILE_COPY_ALLOWED 0x00000002
#define MOVEFILE_WRITE_THROUGH 0x00000008

#define SYMBOLIC_LINK_FLAG_DIRECTORY 0x1
#define SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE 0x2

#define IO_REPARSE_TAG_MOUNT_POINT 0xA0000003L
#define IO_REPARSE_TAG_SYMLINK 0xA000000CL
#define IO_REPARSE_TAG_DFS 0x8000000AL
#define IO_REPARSE_TAG_DEDUP 0x80000013L
#define MAXIMUM_REPARSE_DATA_BUFFER_SIZE 16384

#define FILE_NAME_NORMALIZED 0x0
#define FILE_NAME_OPENED 0x8
#define VOLUME_NAME_DOS 0x0
#define VOLUME_NAME_GUID 0x1
#define VOLUME_NAME_NT 0x2
#define VOLUME_NAME_NONE 0x4

#define FIND_FIRST_EX_CASE_SENSITIVE 0x00000001
#define FIND_FIRST_EX_LARGE_FETCH 0x00000002

#define FILE_DISPOSITION_FLAG_DO_NOT_DELETE 0x00000000
#define FILE_DISPOSITION_FLAG_DELETE 0x00000001
#define FILE_DISPOSITION_FLAG_POSIX_SEMANTICS 0x00000002
#define FILE_DISPOSITION_FLAG_FORCE_IMAGE_SECTION_CHECK 0x00000004
#define FILE_DISPOSITION_FLAG_ON_CLOSE 0x00000008
#define FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE 0x00000010

#define FORMAT_MESSAGE_IGNORE_INSERTS 0x00000200
#define FORMAT_MESSAGE_FROM_SYSTEM 0x00001000
#define FORMAT_MESSAGE_MAX_WIDTH_MASK 0x000000FF

#define MEM_COMMIT 0x00001000
#define MEM_FREE 0x00010000
#define MEM_PRIVATE 0x00020000
#define MEM_IMAGE 0x01000000
#define PAGE_NOACCESS 0x01
#define PAGE_READWRITE 0x04
#define PAGE_EXECUTE_READ 0x20
#define PAGE_EXECUTE_WRITECOPY 0x80

/// Ticks of 100 ns since 1601-01-01 UTC.
typedef struct _FILETIME
{
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
} FILETIME, *PFILETIME, *LPFILETIME;

typedef union _LARGE_INTEGER {
    struct
    {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
} LARGE_INTEGER, *PLARGE_INTEGER;

typedef union _ULARGE_INTEGER {
    struct
    {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
} ULARGE_INTEGER, *PULARGE_INTEGER;

typedef struct HINSTANCE__ *HINSTANCE;
typedef HINSTANCE HMODULE;

typedef struct _MEMORY_BASIC_INFORMATION
{
    PVOID BaseAddress;
    PVOID AllocationBase;
    DWORD AllocationProtect;
    SIZE_T RegionSize;
    DWORD State;
    DWORD Protect;
    DWORD Type;
} MEMORY_BASIC_INFORMATION, *PMEMORY_BASIC_INFORMATION;

/// Only ever null here: files are read and written one call after the other.
typedef struct _OVERLAPPED OVERLAPPED, *LPOVERLAPPED;

typedef struct _WIN32_FILE_ATTRIBUTE_DATA
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
} WIN32_FILE_ATTRIBUTE_DATA, *LPWIN32_FILE_ATTRIBUTE_DATA;

typedef struct _WIN32_FIND_DATAW
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];
} WIN32_FIND_DATAW, *PWIN32_FIND_DATAW, *LPWIN32_FIND_DATAW;

typedef struct _BY_HANDLE_FILE_INFORMATION
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD dwVolumeSerialNumber;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD nNumberOfLinks;
    DWORD nFileIndexHigh;
    DWORD nFileIndexLow;
} BY_HANDLE_FILE_INFORMATION, *LPBY_HANDLE_FILE_INFORMATION;

typedef struct _FILE_BASIC_INFO
{
    LARGE_INTEGER CreationTime;
    LARGE_INTEGER LastAccessTime;
    LARGE_INTEGER LastWriteTime;
    LARGE_INTEGER ChangeTime;
    DWORD FileAttributes;
} FILE_BASIC_INFO, *PFILE_BASIC_INFO;

typedef struct _FILE_STANDARD_INFO
{
    LARGE_INTEGER AllocationSize;
    LARGE_INTEGER EndOfFile;
    DWORD NumberOfLinks;
    BOOLEAN DeletePending;
    BOOLEAN Directory;
} FILE_STANDARD_INFO, *PFILE_STANDARD_INFO;

typedef struct _FILE_ATTRIBUTE_TAG_INFO
{
    DWORD FileAttributes;
    DWORD ReparseTag;
} FILE_ATTRIBUTE_TAG_INFO, *PFILE_ATTRIBUTE_TAG_INFO;

typedef struct _FILE_END_OF_FILE_INFO
{
    LARGE_INTEGER EndOfFile;
} FILE_END_OF_FILE_INFO, *PFILE_END_OF_FILE_INFO;

typedef struct _FILE_DISPOSITION_INFO
{
    BOOLEAN DeleteFile;
} FILE_DISPOSITION_INFO, *PFILE_DISPOSITION_INFO;

typedef struct _FILE_DISPOSITION_INFO_EX
{
    DWORD Flags;
} FILE_DISPOSITION_INFO_EX, *PFILE_DISPOSITION_INFO_EX;

typedef struct _FILE_ID_128
{
    BYTE Identifier[16];
} FILE_ID_128, *PFILE_ID_128;

typedef struct _FILE_ID_INFO
{
    ULONGLONG VolumeSerialNumber;
    FILE_ID_128 FileId;
} FILE_ID_INFO, *PFILE_ID_INFO;

typedef enum _GET_FILEEX_INFO_LEVELS
{
    GetFileExInfoStandard,
    GetFileExMaxInfoLevel
} GET_FILEEX_INFO_LEVELS;

typedef enum _FINDEX_INFO_LEVELS
{
    FindExInfoStandard,
    FindExInfoBasic,
    FindExInfoMaxInfoLevel
} FINDEX_INFO_LEVELS;

typedef enum _FINDEX_SEARCH_OPS
{
    FindExSearchNameMatch,
    FindExSearchLimitToDirectories,
    FindExSearchLimitToDevices,
    FindExSearchMaxSearchOp
} FINDEX_SEARCH_OPS;

typedef enum _FILE_INFO_BY_HANDLE_CLASS
{
    FileBasicInfo = 0,
    FileStandardInfo = 1,
    FileNameInfo = 2,
    FileRenameInfo = 3,
    FileDispositionInfo = 4,
    FileAllocationInfo = 5,
    FileEndOfFileInfo = 6,
    FileStreamInfo = 7,
    FileCompressionInfo = 8,
    FileAttributeTagInfo = 9,
    FileIdBothDirectoryInfo = 10,
    FileIdInfo = 18,
    FileDispositionInfoEx = 21,
    MaximumFileInfoByHandleClass = 24
} FILE_INFO_BY_HANDLE_CLASS;

extern "C" {

DWORD WINAPI GetLastError();
void WINAPI SetLastError(DWORD code);

DWORD WINAPI FormatMessageW(DWORD flags, LPCVOID source, DWORD code, DWORD language, LPWSTR buffer,
                            DWORD room, va_list *inserts);

DWORD WINAPI GetFullPathNameW(LPCWSTR name, DWORD room, LPWSTR buffer, LPWSTR *file_part);
DWORD WINAPI GetCurrentDirectoryW(DWORD room, LPWSTR buffer);
BOOL WINAPI SetCurrentDirectoryW(LPCWSTR name);

DWORD WINAPI GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD room);
BOOL WINAPI SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value);

BOOL WINAPI CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES security);
BOOL WINAPI RemoveDirectoryW(LPCWSTR name);
DWORD WINAPI GetFileAttributesW(LPCWSTR name);
BOOL WINAPI GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data);
BOOL WINAPI SetFileAttributesW(LPCWSTR name, DWORD attributes);

HANDLE WINAPI CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD flags, HANDLE model);
HANDLE WINAPI ReOpenFile(HANDLE original, DWORD access, DWORD share, DWORD flags);
BOOL WINAPI CloseHandle(HANDLE handle);
BOOL WINAPI ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED);
BOOL WINAPI WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, LPOVERLAPPED);
BOOL WINAPI DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD input_size,
                            LPVOID output, DWORD output_size, LPDWORD returned, LPOVERLAPPED);
BOOL WINAPI GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information);
BOOL WINAPI GetFileInformationByHandleEx(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind,
                                         LPVOID information, DWORD size);
BOOL WINAPI SetFileInformationByHandle(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind,
                                       LPVOID information, DWORD size);
DWORD WINAPI GetFinalPathNameByHandleW(HANDLE file, LPWSTR buffer, DWORD room, DWORD flags);

HANDLE WINAPI FindFirstFileExW(LPCWSTR pattern, FINDEX_INFO_LEVELS level, LPVOID data,
                               FINDEX_SEARCH_OPS operation, LPVOID filter, DWORD flags);
HANDLE WINAPI FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data);
BOOL WINAPI FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW data);
BOOL WINAPI FindClose(HANDLE search);

BOOL WINAPI DeleteFileW(LPCWSTR name);
BOOL WINAPI MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags);
BOOL WINAPI CopyFileW(LPCWSTR from, LPCWSTR to, BOOL fail_if_there);
BOOL WINAPI CreateHardLinkW(LPCWSTR name, LPCWSTR existing, LPSECURITY_ATTRIBUTES security);
// of the original's type: one byte, and only that byte is an answer
BOOLEAN WINAPI CreateSymbolicLinkW(LPCWSTR name, LPCWSTR target, DWORD flags);

SIZE_T WINAPI VirtualQuery(LPCVOID address, PMEMORY_BASIC_INFORMATION info, SIZE_T size);
DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD room);
int WINAPI lstrcmpiW(LPCWSTR one, LPCWSTR other);
#define CSTR_LESS_THAN 1
#define CSTR_EQUAL 2
#define CSTR_GREATER_THAN 3
int WINAPI CompareStringOrdinal(LPCWSTR one, int length, LPCWSTR other, int other_length,
                                BOOL ignore_case);
BOOL WINAPI GetDiskFreeSpaceExW(LPCWSTR directory, PULARGE_INTEGER available,
                                PULARGE_INTEGER capacity, PULARGE_INTEGER free);
BOOL WINAPI GetVolumePathNameW(LPCWSTR name, LPWSTR buffer, DWORD room);

} // extern "C"

#endif
