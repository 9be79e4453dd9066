#include "support/allocations.hpp"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;
thread_local std::size_t until_failure = 0; // 0: none fails

} // namespace

test_support::failing_allocation::failing_allocation(std::size_t nth)
{
    until_failure = nth;
}

test_support::failing_allocation::~failing_allocation()
{
    until_failure = 0;
}

bool test_support::failing_allocation::fired() const
{
    return until_failure == 0;
}

std::size_t test_support::allocations()
{
    return count;
}

// Replaces the allocation of the whole program: where the standard library is
// linked in, or takes its allocation from the program, its own counts, too.
void *operator new(std::size_t size)
{
    ++count;
    if (until_failure != 0 && --until_failure == 0)
        throw std::bad_alloc();
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
