#ifndef FL_FILESYSTEM_SRC_PLATFORM_OWNED_HANDLE_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_OWNED_HANDLE_HPP
// Owns what the system hands out as a handle: files, and enumerations of directories.

#include <windows.h>

#include <utility>

namespace fl::filesystem::detail {

/// Closes by `Closer::close`, so that a handle of one kind never meets the call for the
/// other. Empty holds `INVALID_HANDLE_VALUE`, as the opening calls answer when they fail.
template <typename Closer>
class owned_handle
{
public:
    owned_handle() noexcept = default;
    explicit owned_handle(HANDLE raw) noexcept : raw_(raw) {}
    owned_handle(owned_handle &&other) noexcept : raw_(other.release()) {}
    owned_handle &operator=(owned_handle other) noexcept
    {
        std::swap(raw_, other.raw_); // what was held before closes with `other`
        return *this;
    }
    ~owned_handle()
    {
        if (*this)
            Closer::close(raw_);
    }

    // Clang 14 loses sight of it in structured bindings.
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
    explicit operator bool() const noexcept { return raw_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return raw_; }
    /// Gives it up to a caller that closes it and looks at the answer.
    HANDLE release() noexcept { return std::exchange(raw_, INVALID_HANDLE_VALUE); }

private:
    HANDLE raw_ = INVALID_HANDLE_VALUE;
};

struct file_closer
{
    static void close(HANDLE raw) noexcept { ::CloseHandle(raw); }
};

struct find_closer
{
    static void close(HANDLE raw) noexcept { ::FindClose(raw); }
};

using file_handle = owned_handle<file_closer>; ///< what `CreateFileW` opens
using find_handle = owned_handle<find_closer>; ///< what `FindFirstFileExW` begins

} // namespace fl::filesystem::detail

#endif
