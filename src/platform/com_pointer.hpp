#ifndef FL_FILESYSTEM_SRC_PLATFORM_COM_POINTER_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_COM_POINTER_HPP
// Owns one reference to a COM interface.

#include <windows.h>

#include <objbase.h>

#include <utility>

namespace fl::filesystem::detail {

template <typename Interface>
class com_pointer
{
public:
    com_pointer() noexcept = default;
    explicit com_pointer(Interface *raw) noexcept : raw_(raw) {}
    com_pointer(com_pointer &&other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
    com_pointer &operator=(com_pointer other) noexcept
    {
        std::swap(raw_, other.raw_); // what was held before is released with `other`
        return *this;
    }
    ~com_pointer()
    {
        if (raw_ != nullptr)
            raw_->Release();
    }

    explicit operator bool() const noexcept { return raw_ != nullptr; }
    Interface *get() const noexcept { return raw_; }
    Interface *operator->() const noexcept { return raw_; }

    /// Takes the reference that `call(&address)` stores, and returns its answer. The
    /// address has the type that such calls fill, `void *`, so that nothing is written
    /// through a pointer of another type.
    template <typename Call>
    HRESULT acquire(Call call)
    {
        void *address = nullptr;
        HRESULT const answer = call(&address);
        *this = com_pointer(static_cast<Interface *>(address));
        return answer;
    }

private:
    Interface *raw_ = nullptr;
};

} // namespace fl::filesystem::detail

#endif
