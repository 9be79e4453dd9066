#pragma once
#include <vcruntime.h>

namespace std {

struct nothrow_t
{
    explicit nothrow_t() = default;
};
extern nothrow_t const nothrow;
enum class align_val_t : size_t
{
};

} // namespace std

void *operator new(size_t);
void *operator new(size_t, std::nothrow_t const &) noexcept;
void *operator new(size_t, std::align_val_t);
void *operator new[](size_t);
void *operator new[](size_t, std::nothrow_t const &) noexcept;
void *operator new[](size_t, std::align_val_t);
void operator delete(void *) noexcept;
void operator delete(void *, size_t) noexcept;
void operator delete(void *, std::align_val_t) noexcept;
void operator delete(void *, size_t, std::align_val_t) noexcept;
void operator delete[](void *) noexcept;
void operator delete[](void *, size_t) noexcept;

#ifndef __PLACEMENT_NEW_INLINE
#define __PLACEMENT_NEW_INLINE
inline void *operator new(size_t, void *place) noexcept { return place; }
inline void *operator new[](size_t, void *place) noexcept { return place; }
inline void operator delete(void *, void *) noexcept {}
#endif
