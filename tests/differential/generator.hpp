#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_GENERATOR_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_GENERATOR_HPP
// Random sequences out of a small vocabulary, so that steps meet each other's
// files. A seed makes the same sequences on every host and with every compiler.

#include "differential/step.hpp"

#include <cstdint>
#include <random>
#include <vector>

namespace differential {

/// Numbers from a seed. The distributions of <random> differ between libraries.
class dice
{
public:
    explicit dice(std::uint64_t seed) : engine_(seed) {}

    /// 0 to `sides` - 1
    std::size_t roll(std::size_t sides) { return static_cast<std::size_t>(engine_() % sides); }
    bool chance(std::size_t percent) { return roll(100) < percent; }

    template <typename List>
    auto const &pick(List const &list)
    {
        return std::data(list)[roll(std::size(list))];
    }

private:
    std::mt19937_64 engine_;
};

class generator
{
public:
    /// Makes steps of these functions only.
    generator(std::uint64_t seed, std::vector<function> functions);

    sequence next(std::size_t length);

private:
    step next_step();
    function next_function();

    dice dice_;
    std::vector<function> functions_;
};

} // namespace differential

#endif
