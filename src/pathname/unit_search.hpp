#ifndef FL_FILESYSTEM_SRC_PATHNAME_UNIT_SEARCH_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_UNIT_SEARCH_HPP
// Searches through many units of a text. They look at blocks of a fixed size and leave none
// half way, which compilers turn into vector instructions; a search that may end at any unit
// they don't.

#include <cstddef>

namespace fl::filesystem::detail {

/// All bits of a unit for yes, none for no: what vector instructions answer.
template <typename Unit>
constexpr Unit all_bits_if(bool yes)
{
    return static_cast<Unit>(-static_cast<int>(yes));
}

/// Whether `hit` isn't 0 for one of the `size` indexes from `at` on.
template <std::size_t size, typename Unit, typename Hit>
constexpr bool has_hit_in_block(std::size_t at, Hit hit)
{
    Unit found = 0;
    for (std::size_t i = 0; i < size; ++i)
        found = static_cast<Unit>(found | hit(at + i));
    return found != 0;
}

/// (GCC writes out loops of up to 16 steps, and then no longer sees what they have in common.)
inline constexpr std::size_t search_block = 32;
inline constexpr std::size_t large_search_block = 128;

/// Whether `hit`, which returns a `Unit`, isn't 0 for an index from `begin` up to `end`.
/// It may be asked about an index twice.
template <typename Unit, typename Hit>
constexpr bool has_hit(std::size_t begin, std::size_t end, Hit hit)
{
    std::size_t at = begin;
    for (; end - at >= large_search_block; at += large_search_block)
        if (has_hit_in_block<large_search_block, Unit>(at, hit))
            return true;
    for (; end - at >= search_block; at += search_block)
        if (has_hit_in_block<search_block, Unit>(at, hit))
            return true;
    if (at < end && end - begin >= search_block) // the last ones, with some of those before
        return has_hit_in_block<search_block, Unit>(end - search_block, hit);
    Unit found = 0;
    for (; at < end; ++at)
        found = static_cast<Unit>(found | hit(at));
    return found != 0;
}

} // namespace fl::filesystem::detail

#endif
