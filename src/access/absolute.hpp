#ifndef FL_FILESYSTEM_SRC_ACCESS_ABSOLUTE_HPP
#define FL_FILESYSTEM_SRC_ACCESS_ABSOLUTE_HPP
// What stands behind the operation `absolute` and every form for the system.

#include <fl/filesystem/path.hpp>

namespace fl::filesystem::detail {

/// Returns `p` joined to `base` if `p` isn't absolute and `base` isn't empty. Else
/// returns a copy of `p`, also if it can't be joined, as `\foo` can't. Throws
/// `InvalidArgument` "Invalid path type for base path" if a base is needed and
/// isn't absolute.
upath join_with_base(upath const &p, upath const &base);

/// The operation `absolute`, for those whom an operation is made of.
upath make_absolute(upath const &p, upath const &base = upath());

} // namespace fl::filesystem::detail

#endif
