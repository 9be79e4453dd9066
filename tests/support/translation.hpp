#ifndef FL_FILESYSTEM_TESTS_SUPPORT_TRANSLATION_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_TRANSLATION_HPP
// What the translation of a Win32 code makes of it, told once more.

#include "support/failure.hpp"

namespace test_support {

/// Beyond the last code that has a meaning of its own.
inline constexpr unsigned int last_code = 4400;

inline failure translated(unsigned int code, std::u16string const &first,
                          std::u16string const &second = {})
{
    constexpr std::size_t longest = 32767;
    switch (code) {
    case 3:
        if (std::u16string const &longer = first.size() >= second.size() ? first : second;
            longer.size() > longest)
            return too_large(longer);
        [[fallthrough]];
    case 2:
        return not_found(first);
    case 5:
    case 1920:
        return denied(first);
    case 80:
    case 183:
        return file_exists(first);
    case 145:
        return not_empty(first);
    case 206:
        return too_large(u"");
    case 267:
        return not_directory(first);
    case 123:
        return bad_name();
    case 161:
        return invalid_argument("The specified path is invalid.");
    case 4390:
        return invalid_argument("The file or directory is not a reparse point.");
    default:
        return system_error(code, first, second);
    }
}

} // namespace test_support

#endif
