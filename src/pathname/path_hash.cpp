#include <fl/filesystem/path.hpp>

std::uint64_t
std::hash<fl::filesystem::upath>::operator()(fl::filesystem::upath const &path) const noexcept
{
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t value = 0xCBF29CE484222325;
    for (char16_t const unit : path.native()) {
        // Each step waits for the multiplication of the one before. Where the high byte is 0,
        // both of a unit are one.
        constexpr std::uint64_t prime_twice = prime * prime;
        if (unit <= 0xFFU) {
            value = (value ^ unit) * prime_twice;
        } else {
            value = (value ^ (unit & 0xFFU)) * prime;
            value = (value ^ (unit >> 8U)) * prime;
        }
    }
    return value;
}
