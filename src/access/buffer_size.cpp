#include "access/buffer_size.hpp"

#include "failure/throw.hpp"

#include <windows.h>

#include <cstdint>
#include <limits>

namespace fl::filesystem::detail {

namespace {

/// Sizes must fit a signed 32-bit integer, and what doesn't is told.
std::size_t checked_size(std::size_t size)
{
    constexpr std::size_t largest = std::numeric_limits<std::int32_t>::max();
    if (size > largest)
        throw_exception(SystemError(ERROR_INCORRECT_SIZE));
    return size;
}

} // namespace

std::size_t round_up_to_512(std::size_t size)
{
    constexpr std::size_t step = 512;
    return (checked_size(size) + step - 1) / step * step;
}

} // namespace fl::filesystem::detail
