#include "access/buffer_size.hpp"

#include "failure/throw.hpp"

#include <windows.h>

#include <boost/numeric/conversion/cast.hpp>

#include <cstdint>
#include <typeinfo>

namespace fl::filesystem::detail {

namespace {

/// Sizes pass through a signed 32-bit integer, and what doesn't fit is told.
std::int32_t checked_size(std::size_t size)
{
    try {
        return boost::numeric_cast<std::int32_t>(size);
    } catch (std::bad_cast const &) { // boost::numeric::positive_overflow
        throw_exception(SystemError(ERROR_INCORRECT_SIZE));
    }
}

} // namespace

std::size_t round_up_to_512(std::size_t size)
{
    constexpr std::size_t step = 512;
    auto const checked = static_cast<std::size_t>(checked_size(size));
    return (checked + step - 1) / step * step;
}

} // namespace fl::filesystem::detail
