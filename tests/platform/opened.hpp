#ifndef FL_FILESYSTEM_TESTS_PLATFORM_OPENED_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_OPENED_HPP
// Open files for the tests of the system's calls, and what is asked about a file.

#include "platform/contract.hpp"

#include <string>

namespace contract {

/// A file or directory that is open as long as this lives. Closed if it couldn't be
/// opened; then `code` says why.
class opened
{
public:
    opened(std::wstring const &name, DWORD access, DWORD share = share_all, DWORD flags = 0)
    {
        code = outcome_of([&] {
            handle_ = open(
                name,
                {.access = access, .share = share, .flags = flags | FILE_FLAG_BACKUP_SEMANTICS});
            return static_cast<bool>(handle_);
        });
    }
    HANDLE get() const { return handle_.get(); }

    DWORD code = success;

private:
    handle handle_;
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

inline void give_attributes(std::wstring const &name, DWORD attributes)
{
    EXPECT_EQ(set_attributes(name, attributes), success);
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

} // namespace contract

#endif
