#ifndef FL_FILESYSTEM_BENCH_TEXTS_HPP
#define FL_FILESYSTEM_BENCH_TEXTS_HPP
// The pathnames that text functions are measured with.

#include <cstddef>
#include <string>

namespace bench {

inline constexpr std::size_t text_sizes[] = {65, 251, 2001, 32767};

/// A pathname of `size` units: a drive, and names of eight units behind `separator`.
inline std::u16string pathname(std::size_t size, std::u16string const &separator = u"\\")
{
    std::u16string text = u"C:";
    while (text.size() < size)
        text += separator + u"name.txt";
    text.resize(size, u'x');
    if (text.back() == u'\\' || text.back() == u'/')
        text.back() = u'x'; // which a native form would drop
    return text;
}

} // namespace bench

#endif
