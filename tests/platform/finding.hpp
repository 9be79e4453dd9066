#ifndef FL_FILESYSTEM_TESTS_PLATFORM_FINDING_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_FINDING_HPP
// Enumerations for the tests of the system's calls.

#include "platform/contract.hpp"

namespace contract {

/// An enumeration that stands on its first entry, or failed with `code`.
class search
{
public:
    explicit search(std::wstring const &pattern, FINDEX_INFO_LEVELS level = FindExInfoBasic)
    {
        code = outcome_of([&] {
            handle_ = ::FindFirstFileExW(pattern.c_str(), level, &data, FindExSearchNameMatch,
                                         nullptr, 0);
            return handle_ != INVALID_HANDLE_VALUE;
        });
    }
    search(search const &) = delete;
    search &operator=(search const &) = delete;
    ~search()
    {
        if (handle_ != INVALID_HANDLE_VALUE)
            ::FindClose(handle_);
    }

    /// The next entry: success, or what ended the enumeration.
    DWORD next()
    {
        return outcome_of([&] { return ::FindNextFileW(handle_, &data) != FALSE; });
    }

    DWORD code = success;
    WIN32_FIND_DATAW data = {};

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

/// The names that match, joined by `|`, in the system's order; or `error` and the code
/// of the call that failed.
inline std::wstring found(std::wstring const &pattern, FINDEX_INFO_LEVELS level = FindExInfoBasic)
{
    search entries(pattern, level);
    if (entries.code != success)
        return L"error " + std::to_wstring(entries.code);
    std::wstring names = entries.data.cFileName;
    DWORD code = entries.next();
    for (; code == success; code = entries.next())
        names += std::wstring(L"|") + entries.data.cFileName;
    return code == ERROR_NO_MORE_FILES ? names : names + L" error " + std::to_wstring(code);
}

} // namespace contract

#endif
