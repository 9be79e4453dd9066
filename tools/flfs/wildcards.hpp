#ifndef FL_FLFS_WILDCARDS_HPP
#define FL_FLFS_WILDCARDS_HPP
// Names with `*` and `?` in them, which no file has. Windows' shells leave it to programs to find
// out what they stand for.

#include <string>
#include <string_view>
#include <vector>

namespace flfs {

/// Whether a name in `pathname` has a wildcard. The one in a long prefix is none.
bool has_wildcard(std::u16string const &pathname);

/// Whether `pattern` stands for `name`: `?` for one UTF-16 unit, `*` for any number of them, and
/// `*.*` for every name, as on Windows since DOS. In any case, as disks compare names. Unlike the
/// system's own search this doesn't look at the short names that files may have besides.
bool matches(std::u16string_view pattern, std::u16string_view name);

/// The pathnames that `pathname` stands for, in the order in which the disk tells them. None if
/// there is none, or if nothing can be listed on the way.
std::vector<std::u16string> expanded(std::u16string const &pathname);

} // namespace flfs

#endif
