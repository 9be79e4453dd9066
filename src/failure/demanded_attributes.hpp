#ifndef FL_FILESYSTEM_SRC_FAILURE_DEMANDED_ATTRIBUTES_HPP
#define FL_FILESYSTEM_SRC_FAILURE_DEMANDED_ATTRIBUTES_HPP
// What the system says about a name that has to be there.

#include <windows.h>

#include <string>

namespace fl::filesystem::detail {

/// The answer of one `GetFileAttributesExW`. Throws what the code of a failed call stands
/// for, naming `path`.
WIN32_FILE_ATTRIBUTE_DATA demand_attribute_data(std::wstring const &path);

} // namespace fl::filesystem::detail

#endif
