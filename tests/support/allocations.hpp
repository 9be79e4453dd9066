#ifndef FL_FILESYSTEM_TESTS_SUPPORT_ALLOCATIONS_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_ALLOCATIONS_HPP
// Counts what a piece of code takes from the heap.

#include <cstddef>

namespace test_support {

/// How often this thread has called `operator new` so far.
std::size_t allocations();

/// How many bytes this thread has taken and not given back, of what is counted: the most since
/// the last time that it was asked.
std::size_t most_bytes_held();

/// Leaves out, on every thread, what is allocated while `is_systems()`; null leaves nothing out.
/// It neither counts nor fails by its number.
void count_all_but(bool (*is_systems)() noexcept);

/// How often `call` allocates.
template <typename Call>
std::size_t allocations_of(Call call)
{
    std::size_t const before = allocations();
    call();
    return allocations() - before;
}

/// Lets the nth allocation of this thread from now on fail, once, as long as this
/// object lives.
class failing_allocation
{
public:
    explicit failing_allocation(std::size_t nth);
    ~failing_allocation();
    failing_allocation(failing_allocation const &) = delete;
    failing_allocation &operator=(failing_allocation const &) = delete;

    /// Whether it has failed.
    bool fired() const;
};

/// Lets each allocation of exactly `size` bytes on this thread fail, as long as this
/// object lives.
class failing_size
{
public:
    explicit failing_size(std::size_t size);
    ~failing_size();
    failing_size(failing_size const &) = delete;
    failing_size &operator=(failing_size const &) = delete;

    /// Whether one has failed.
    bool fired() const;
};

} // namespace test_support

#endif
