#ifndef FL_FILESYSTEM_BENCH_WORKS_HPP
#define FL_FILESYSTEM_BENCH_WORKS_HPP
// What is measured: works, and who does them.

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Does a work so many times.
using repeated = std::function<void(long)>;

/// Keeps the compiler from leaving out what led to `value`.
template <typename Value>
void keep(Value const &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

template <typename Work>
repeated times(Work work)
{
    return [work](long count) {
        for (; count > 0; --count)
            work();
    };
}

/// One who does a work. What `prepare` does isn't measured; without it the work leaves things
/// as they were, and is done often enough at once for the clock.
struct contender
{
    std::string name;
    repeated run;
    std::function<void()> prepare = nullptr;
};

struct work
{
    std::string name;
    double target = 0; ///< of ours, as a ratio to the first contender, the floor; 0: none
    std::vector<contender> contenders;
};

/// Text functions: the floor, which is a copy of the text, and ours.
std::vector<work> text_works();

} // namespace bench

#endif
