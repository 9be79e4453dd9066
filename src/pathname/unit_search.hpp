#ifndef FL_FILESYSTEM_SRC_PATHNAME_UNIT_SEARCH_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_UNIT_SEARCH_HPP
// Searches through many units of a text. They look at blocks of a fixed size and leave none
// half way, which compilers turn into vector instructions; a search that may end at any unit
// they don't.

#include <cstddef>

namespace fl::filesystem::detail {

/// Whether `hit` is 1 for one of the `size` indexes from `at` on.
template <std::size_t size, typename Unit, typename Hit>
constexpr bool has_hit_in_block(std::size_t at, Hit hit)
{
    Unit found = 0;
    for (std::size_t i = 0; i < size; ++i)
        found = static_cast<Unit>(found | hit(at + i));
    return found != 0;
}

inline constexpr std::size_t search_block = 16;
inline constexpr std::size_t large_search_block = 64;

/// Whether `hit`, which returns a `Unit` of 0 or 1, is 1 for an index from `begin` up to `end`.
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

/// The first index from `begin` up to `end` for which `hit` is 1, or `end`.
template <typename Unit, typename Hit>
constexpr std::size_t find_hit(std::size_t begin, std::size_t end, Hit hit)
{
    std::size_t at = begin;
    while (end - at >= search_block && !has_hit_in_block<search_block, Unit>(at, hit))
        at += search_block;
    while (at < end && hit(at) == 0)
        ++at;
    return at;
}

} // namespace fl::filesystem::detail

#endif
