#ifndef FL_FILESYSTEM_TESTS_KIT_ABOUT_SYSTEM_HPP
#define FL_FILESYSTEM_TESTS_KIT_ABOUT_SYSTEM_HPP
// What a report must say of the Windows that it was made on, and nothing about its user.

#include <string>

namespace kit {

/// Lines of a name and a value. `folder` is where the programs work.
std::string about_system(std::wstring const &folder);

} // namespace kit

#endif
