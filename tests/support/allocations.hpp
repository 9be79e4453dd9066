#ifndef FL_FILESYSTEM_TESTS_SUPPORT_ALLOCATIONS_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_ALLOCATIONS_HPP
// Counts what a piece of code takes from the heap.

#include <cstddef>

namespace test_support {

/// How often this thread has called `operator new` so far.
std::size_t allocations();

/// How often `call` allocates.
template <typename Call>
std::size_t allocations_of(Call call)
{
    std::size_t const before = allocations();
    call();
    return allocations() - before;
}

} // namespace test_support

#endif
