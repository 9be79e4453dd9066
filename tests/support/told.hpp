#ifndef FL_FILESYSTEM_TESTS_SUPPORT_TOLD_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_TOLD_HPP
// What a failed call is reported as, for every code.

#include "support/failure.hpp"

#include <map>

namespace test_support {

/// Beyond the last code that has a meaning of its own.
inline constexpr unsigned int last_code = 4400;

/// What the translation of a code makes of it, for one pathname.
inline failure told(unsigned int code, std::u16string const &path)
{
    using namespace fl::filesystem;
    std::map<unsigned int, failure> const own = {
        {2, not_found(path)},
        {3, not_found(path)},
        {5, denied(path)},
        {80, exists(path)},
        {123,
         invalid_argument("The filename, directory name, or volume label syntax is incorrect.")},
        {145, about(fsys_excp_directory_not_empty, "fl:filesystem:DirectoryNotEmpty", path)},
        {161, invalid_argument("The specified path is invalid.")},
        {183, exists(path)},
        {206, too_large(u"")},
        {267, about(fsys_excp_not_directory_error, "fl:filesystem:NotDirectoryError", path)},
        {1920, denied(path)},
        {4390, invalid_argument("The file or directory is not a reparse point.")}};
    auto const row = own.find(code);
    return row == own.end() ? system_error(code, path) : row->second;
}

} // namespace test_support

#endif
