#ifndef FL_FILESYSTEM_SRC_PLATFORM_FILE_HANDLE_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_FILE_HANDLE_HPP
// Owns what `CreateFileW` opens.

#include <windows.h>

#include <utility>

namespace fl::filesystem::detail {

class file_handle
{
public:
    file_handle() noexcept = default;
    explicit file_handle(HANDLE raw) noexcept : raw_(raw) {}
    file_handle(file_handle &&other) noexcept
        : raw_(std::exchange(other.raw_, INVALID_HANDLE_VALUE))
    {
    }
    file_handle &operator=(file_handle other) noexcept
    {
        std::swap(raw_, other.raw_); // what was held before closes with `other`
        return *this;
    }
    ~file_handle()
    {
        if (*this)
            ::CloseHandle(raw_);
    }

    explicit operator bool() const noexcept { return raw_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return raw_; }

private:
    HANDLE raw_ = INVALID_HANDLE_VALUE;
};

} // namespace fl::filesystem::detail

#endif
