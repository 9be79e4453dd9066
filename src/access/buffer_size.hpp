#ifndef FL_FILESYSTEM_SRC_ACCESS_BUFFER_SIZE_HPP
#define FL_FILESYSTEM_SRC_ACCESS_BUFFER_SIZE_HPP
// The sizes of buffers for pathnames in the making.

#include <cstddef>

namespace fl::filesystem::detail {

/// Returns the smallest multiple of 512 that is not below `size`, so that a buffer that
/// grows is moved now and then only. Throws `SystemError` with code 1462, without a
/// pathname, for a size beyond a signed 32-bit integer.
std::size_t round_up_to_512(std::size_t size);

} // namespace fl::filesystem::detail

#endif
