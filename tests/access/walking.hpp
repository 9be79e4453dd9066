#ifndef FL_FILESYSTEM_TESTS_ACCESS_WALKING_HPP
#define FL_FILESYSTEM_TESTS_ACCESS_WALKING_HPP
// What walks end in that lead nowhere.

#include "support/failure.hpp"

namespace test_support {

/// What the walk says where there is no directory to take a `.` or `..` from, and where a
/// root leads nowhere.
inline failure nowhere()
{
    return not_found(u"");
}

/// What the 101st link ends in.
inline failure too_many_links(std::u16string const &path)
{
    return {fl::filesystem::fsys_excp_system_error, "fl:filesystem:SystemError", path, {}, 8246};
}

} // namespace test_support

#endif
