#ifndef FL_FILESYSTEM_TESTS_STATUS_CHANGED_ATTRIBUTES_HPP
#define FL_FILESYSTEM_TESTS_STATUS_CHANGED_ATTRIBUTES_HPP
// What a permission word makes of attributes, bit by bit, and the words to try it with.

#include <cstdint>

namespace test_support {

inline constexpr unsigned int adds = 0x10000;
inline constexpr unsigned int removes = 0x20000;
inline constexpr unsigned int on_the_link = 0x40000;

/// The attributes that a word can change.
inline constexpr std::uint32_t changeable_attributes = 0x2027;

struct flag_row
{
    unsigned int flag;
    std::uint32_t attribute;
};

inline constexpr flag_row flag_rows[] = {
    {0x1000, 0x20},   // archive
    {0x2000, 0x4},    // system
    {0x4000, 0x2},    // hidden
    {0x8000, 0x2000}, // not indexed
};

/// None, each write bit, some and all.
inline constexpr unsigned int write_words[] = {0, 0200, 020, 02, 0220, 0202, 022, 0222};

/// Replacing, adding, removing.
inline constexpr unsigned int ways[] = {0, adds, removes};

/// What becomes of `attributes`.
inline std::uint32_t changed_attributes(std::uint32_t attributes, unsigned int perms)
{
    bool const is_adding = (perms & adds) != 0, is_removing = (perms & removes) != 0;
    auto const put = [&attributes](std::uint32_t attribute, bool is_set) {
        attributes = is_set ? attributes | attribute : attributes & ~attribute;
    };
    bool const names_writing = (perms & 0222) != 0;
    if (is_adding || is_removing) {
        if (names_writing)
            put(0x1, is_removing);
    } else {
        put(0x1, !names_writing);
    }
    for (flag_row const &row : flag_rows) {
        bool const is_named = (perms & row.flag) != 0;
        if (is_named)
            put(row.attribute, !is_removing);
        else if (!is_adding && !is_removing)
            put(row.attribute, false);
    }
    return attributes;
}

/// Calls `visit` with each of the 32 combinations of changeable attributes.
template <typename Visit>
void for_all_attributes(Visit visit)
{
    for (std::uint32_t attributes = 0; attributes <= changeable_attributes; ++attributes) {
        if ((attributes & ~changeable_attributes) == 0)
            visit(attributes);
    }
}

/// Calls `visit` with each way, each combination of flags and each of `write_words`.
template <typename Visit>
void for_all_words(Visit visit)
{
    for (unsigned int const way : ways)
        for (unsigned int flags = 0; flags <= 0xF000; flags += 0x1000)
            for (unsigned int const writes : write_words)
                visit(way | flags | writes);
}

} // namespace test_support

#endif
