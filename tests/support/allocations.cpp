#include "support/allocations.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

thread_local std::size_t count = 0;
bool (*is_left_out)() noexcept = nullptr;
thread_local std::size_t until_failure = 0; // 0: none fails
thread_local std::size_t size_to_fail = 0;  // 0: none fails
thread_local bool size_has_failed = false;
thread_local std::ptrdiff_t held = 0;
thread_local std::ptrdiff_t most_held = 0;

/// Stands ahead of each block. As large as what any type's address must be a multiple of.
struct alignas(__STDCPP_DEFAULT_NEW_ALIGNMENT__) block_head
{
    std::ptrdiff_t counted_size; ///< 0 if it is left out
};

void *take(std::size_t size, bool is_counted)
{
    void *const memory = std::malloc(sizeof(block_head) + size);
    if (memory == nullptr)
        throw std::bad_alloc();
    auto const counted_size = is_counted ? static_cast<std::ptrdiff_t>(size) : 0;
    held += counted_size;
    most_held = std::max(most_held, held);
    return ::new (memory) block_head{counted_size} + 1;
}

void give_back(void *memory) noexcept
{
    if (memory == nullptr)
        return;
    block_head *const head = static_cast<block_head *>(memory) - 1;
    held -= head->counted_size;
    std::free(head);
}

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

std::size_t test_support::most_bytes_held()
{
    std::ptrdiff_t const most = std::exchange(most_held, held);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(most, 0));
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
    return take(size, is_counted);
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
    give_back(memory);
}

void operator delete[](void *memory) noexcept
{
    give_back(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    give_back(memory);
}

void operator delete[](void *memory, std::size_t) noexcept
{
    give_back(memory);
}
