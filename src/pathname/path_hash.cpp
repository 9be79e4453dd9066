#include <fl/filesystem/path.hpp>

std::uint64_t
std::hash<fl::filesystem::upath>::operator()(fl::filesystem::upath const &path) const noexcept
{
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t value = 0xCBF29CE484222325;
    for (char16_t const unit : path.native()) {
        value = (value ^ (unit & 0xFFU)) * prime;
        value = (value ^ (unit >> 8U)) * prime;
    }
    return value;
}
