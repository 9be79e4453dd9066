#ifndef FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_WINDOWS_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_WINDOWS_HPP
// What the sources of a workspace on the real system share.

#include "support/workspace.hpp"

#include <windows.h>

namespace test_support {

/// Throws the failure of the last call, for the test's output.
[[noreturn]] void fail(char const *what);

/// The text with a long prefix: it may have any length, and names may end in dots.
std::wstring long_form(std::u16string_view path);

std::u16string parent_of(std::u16string const &path);

/// A file, directory or link that is there, open as long as this lives.
class open_file
{
public:
    open_file(std::u16string const &path, DWORD access)
        : name_(long_form(path)),
          raw_(::CreateFileW(name_.c_str(), access,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                             OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr))
    {
        if (raw_ == INVALID_HANDLE_VALUE)
            fail("CreateFileW");
    }
    ~open_file() { ::CloseHandle(raw_); }
    open_file(open_file const &) = delete;
    open_file &operator=(open_file const &) = delete;
    HANDLE get() const noexcept { return raw_; }

private:
    std::wstring name_;
    HANDLE raw_;
};

} // namespace test_support

#endif
