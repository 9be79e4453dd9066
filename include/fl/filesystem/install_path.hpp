#ifndef FL_FILESYSTEM_INSTALL_PATH_HPP
#define FL_FILESYSTEM_INSTALL_PATH_HPP
// Public. Where the program that uses the library was installed, told by where the
// library's own module lies: in `bin\win64` below the installation's root. No
// configuration stands behind it.

#include <fl/filesystem/config.hpp>

#include <string>

namespace fl::filesystem {

/// Returns the root of the installation that the library's module belongs to, in the case
/// in which the file system has its names; as `detail::get_base_path` does it. Found once for
/// each process and kept, whatever moves afterwards.
///
///     module                                  result
///     D:\Apps\Tool\bin\win64\lib.dll          D:\Apps\Tool
///     C:\bin\win64\lib.dll                    C:\ (the root directory)
///     C:\tools\lib.dll                        C:\tools\lib.dll  (no `bin\win64`: the module)
///
/// Throws what `canonical` throws if the module's pathname can't be resolved; then the next
/// call tries again.
FL_FILESYSTEM_API std::u16string get_install_path();

namespace detail {

/// Returns the same for the module that holds `address`, found anew. The pair `bin\win64` is
/// matched in any case, and the deepest one counts. Names in a directory that the caller can't
/// list come out in lower case. Where there is no pair, or where the root itself can't be
/// found, the result is the pathname of the module. Empty if the address is null or in no
/// module. Throws what `canonical` throws on the module's pathname.
FL_FILESYSTEM_API std::wstring get_base_path(void *address);

/// Returns the pathname of the module that holds `address`, as `GetModuleFileNameW` tells
/// it. Empty if the address is null or in no module. Throws nothing of the library's.
FL_FILESYSTEM_API std::u16string get_module_path_from_address(void *address);

} // namespace detail

} // namespace fl::filesystem

#endif
