#ifndef FL_FILESYSTEM_BENCH_RAW_CALLS_HPP
#define FL_FILESYSTEM_BENCH_RAW_CALLS_HPP
// The calls that an operation makes, by themselves: nobody who does the same work with them can
// be faster. Failures are nobody's: the trees are made for this.

#include "works.hpp"

#include <windows.h>

#include <string>

namespace bench::raw {

inline DWORD attributes_of(wchar_t const *path)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    return ::GetFileAttributesExW(path, GetFileExInfoStandard, &data) ? data.dwFileAttributes
                                                                      : INVALID_FILE_ATTRIBUTES;
}

/// The pathname in full, as every operation asks for it first.
inline void expand(wchar_t const *path)
{
    wchar_t full[260] = {};
    keep(::GetFullPathNameW(path, 260, full, nullptr));
}

inline bool is_dots(wchar_t const *name)
{
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

/// Calls `visit(data)` for each name that matches.
template <typename Visit>
void search(wchar_t const *pattern, DWORD flags, Visit visit)
{
    WIN32_FIND_DATAW data = {};
    HANDLE const found =
        ::FindFirstFileExW(pattern, FindExInfoBasic, &data, FindExSearchNameMatch, nullptr, flags);
    if (found == INVALID_HANDLE_VALUE)
        return;
    do {
        if (!is_dots(data.cFileName))
            visit(data);
    } while (::FindNextFileW(found, &data));
    ::FindClose(found);
}

/// Takes the first `size` units of `path` for the directory, and leaves them.
inline void remove_tree(std::wstring &path)
{
    std::size_t const size = path.size();
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
    HANDLE const directory = ::CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, share, nullptr,
                                           OPEN_EXISTING, flags, nullptr);
    BY_HANDLE_FILE_INFORMATION info = {};
    ::GetFileInformationByHandle(directory, &info);
    path += L"\\*";
    search(std::wstring(path).c_str(), 0, [&](WIN32_FIND_DATAW const &data) {
        path.resize(size + 1);
        path += data.cFileName;
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            remove_tree(path);
        else
            ::DeleteFileW(path.c_str());
    });
    ::CloseHandle(directory);
    path.resize(size);
    ::RemoveDirectoryW(path.c_str());
}

inline void copy_tree(std::wstring &from, std::wstring &to)
{
    std::size_t const from_size = from.size();
    std::size_t const to_size = to.size();
    keep(attributes_of(from.c_str()));
    keep(attributes_of(to.c_str()));
    ::CreateDirectoryW(to.c_str(), nullptr);
    search((from + L"\\*").c_str(), 0, [&](WIN32_FIND_DATAW const &data) {
        from.append(L"\\").append(data.cFileName);
        to.append(L"\\").append(data.cFileName);
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            copy_tree(from, to);
        } else {
            keep(attributes_of(from.c_str()));
            keep(attributes_of(to.c_str()));
            ::CopyFileW(from.c_str(), to.c_str(), TRUE);
        }
        from.resize(from_size);
        to.resize(to_size);
    });
}

inline void make_file(std::wstring const &path)
{
    HANDLE const file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    ::WriteFile(file, "content", 7, &written, nullptr);
    ::CloseHandle(file);
}

} // namespace bench::raw

#endif
