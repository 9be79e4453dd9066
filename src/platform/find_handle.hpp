#ifndef FL_FILESYSTEM_SRC_PLATFORM_FIND_HANDLE_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_FIND_HANDLE_HPP
// Owns a search that `FindFirstFileExW` began.

#include <windows.h>

#include <utility>

namespace fl::filesystem::detail {

class find_handle
{
public:
    find_handle() noexcept = default;
    explicit find_handle(HANDLE raw) noexcept : raw_(raw) {}
    find_handle(find_handle &&other) noexcept
        : raw_(std::exchange(other.raw_, INVALID_HANDLE_VALUE))
    {
    }
    find_handle &operator=(find_handle other) noexcept
    {
        std::swap(raw_, other.raw_); // the search held before closes with `other`
        return *this;
    }
    ~find_handle()
    {
        if (*this)
            ::FindClose(raw_);
    }

    explicit operator bool() const noexcept { return raw_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return raw_; }
    /// Gives the search up to a caller that closes it and looks at the answer.
    HANDLE release() noexcept { return std::exchange(raw_, INVALID_HANDLE_VALUE); }

private:
    HANDLE raw_ = INVALID_HANDLE_VALUE;
};

} // namespace fl::filesystem::detail

#endif
