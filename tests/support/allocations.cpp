#include "support/allocations.hpp"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;

} // namespace

std::size_t test_support::allocations()
{
    return count;
}

// Replaces the allocation of the whole program: where the standard library is
// linked in, or takes its allocation from the program, its own counts, too.
void *operator new(std::size_t size)
{
    ++count;
    if (void *const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void *operator new[](std::size_t size)
{
    return ::operator new(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory, std::size_t) noexcept
{
    std::free(memory);
}
