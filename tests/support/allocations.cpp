#include "support/allocations.hpp"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;
bool (*is_left_out)() noexcept = nullptr;
thread_local std::size_t until_failure = 0; // 0: none fails
thread_local std::size_t size_to_fail = 0;  // 0: none fails
thread_local bool size_has_failed = false;

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

test_support::failing_size::failing_size(std::size_t size)
{
    size_to_fail = size;
    size_has_failed = false;
}

test_support::failing_size::~failing_size()
{
    size_to_fail = 0;
}

bool test_support::failing_size::fired() const
{
    return size_has_failed;
}

void test_support::count_all_but(bool (*is_systems)() noexcept)
{
    is_left_out = is_systems;
}

std::size_t test_support::allocations()
{
    return count;
}

// Replaces the allocation of the whole program: where the standard library is
// linked in, or takes its allocation from the program, its own counts, too.
void *operator new(std::size_t size)
{
    bool const is_counted = is_left_out == nullptr || !is_left_out();
    if (is_counted)
        ++count;
    if (is_counted && until_failure != 0 && --until_failure == 0)
        throw std::bad_alloc();
    if (size_to_fail != 0 && size == size_to_fail) {
        size_has_failed = true;
        throw std::bad_alloc();
    }
    if (void *const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void *operator new[](std::size_t size)
{
    return ::operator new(size);
}

// Those that answer a null pointer would not come here in every runtime.
void *operator new(std::size_t size, std::nothrow_t const &) noexcept
{
    try {
        return ::operator new(size);
    } catch (std::bad_alloc const &) {
        return nullptr;
    }
}

void *operator new[](std::size_t size, std::nothrow_t const &nothrow) noexcept
{
    return ::operator new(size, nothrow);
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
