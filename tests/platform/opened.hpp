#ifndef FL_FILESYSTEM_TESTS_PLATFORM_OPENED_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_OPENED_HPP
// Open files for the tests of the system's calls, and what is asked about a file.

#include "platform/contract.hpp"

#include <utility>

namespace contract {

inline constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// A file or directory that is open as long as this lives. Closed if it couldn't be
/// opened; then `code` says why.
class opened
{
public:
    opened(std::wstring const &name, DWORD access, DWORD share = share_all, DWORD flags = 0)
    {
        code = outcome_of([&] {
            handle_ = ::CreateFileW(name.c_str(), access, share, nullptr, OPEN_EXISTING,
                                    flags | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
            return handle_ != INVALID_HANDLE_VALUE;
        });
    }
    opened(opened const &) = delete;
    opened &operator=(opened const &) = delete;
    ~opened()
    {
        if (handle_ != INVALID_HANDLE_VALUE)
            ::CloseHandle(handle_);
    }
    HANDLE get() const { return handle_; }

    DWORD code = success;

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

/// The content of a small file, or "(closed)" if it can't be opened.
inline std::string content_of(std::wstring const &name)
{
    opened const file(name, GENERIC_READ);
    if (file.code != success)
        return "(closed)";
    std::string content(1000, '\0');
    DWORD read = 0;
    if (!::ReadFile(file.get(), content.data(), 1000, &read, nullptr))
        return "(unread)";
    content.resize(read);
    return content;
}

inline DWORD attributes_of(std::wstring const &name)
{
    return ::GetFileAttributesW(name.c_str());
}

inline void set_attributes(std::wstring const &name, DWORD attributes)
{
    EXPECT_TRUE(::SetFileAttributesW(name.c_str(), attributes));
}

inline BY_HANDLE_FILE_INFORMATION information_of(std::wstring const &name)
{
    BY_HANDLE_FILE_INFORMATION information = {};
    opened const file(name, FILE_READ_ATTRIBUTES);
    EXPECT_EQ(file.code, success);
    EXPECT_TRUE(::GetFileInformationByHandle(file.get(), &information));
    return information;
}

/// A moment long past, on a whole second, so that every file system can keep it.
inline FILETIME past_moment()
{
    constexpr unsigned long long ticks = 125911584000000000; // the first second of 2000
    return {static_cast<DWORD>(ticks & 0xFFFFFFFF), static_cast<DWORD>(ticks >> 32)};
}

inline void set_last_write(std::wstring const &name, FILETIME moment)
{
    opened const file(name, FILE_WRITE_ATTRIBUTES);
    FILE_BASIC_INFO changed = {}; // a time of zero stays as it is
    changed.LastWriteTime.QuadPart =
        static_cast<long long>(moment.dwHighDateTime) << 32 | moment.dwLowDateTime;
    EXPECT_TRUE(::SetFileInformationByHandle(file.get(), FileBasicInfo, &changed, sizeof changed));
}

inline bool same(FILETIME left, FILETIME right)
{
    return left.dwHighDateTime == right.dwHighDateTime && left.dwLowDateTime == right.dwLowDateTime;
}

} // namespace contract

#endif
