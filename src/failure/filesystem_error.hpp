#ifndef FL_FILESYSTEM_SRC_FAILURE_FILESYSTEM_ERROR_HPP
#define FL_FILESYSTEM_SRC_FAILURE_FILESYSTEM_ERROR_HPP
// The common end of operations that go through the standard filesystem facility:
// its error codes become exceptions that name what the caller wrote.

#include <fl/filesystem/path.hpp>

#include <optional>
#include <system_error>

namespace fl::filesystem::detail {

/// Returns if `ec` holds no error; else throws what its value stands for as a
/// Win32 code, whatever its category, naming `first` or nothing. Takes the path by
/// value: it outlives the strings that went to the system.
void throw_on_filesystem_error(std::error_code ec, std::optional<upath> first);
inline void throw_on_filesystem_error(std::error_code ec, upath const &first)
{
    if (ec.value() != 0) // else nobody needs the copy
        throw_on_filesystem_error(ec, std::optional<upath>(first));
}

/// The same for an operation with a source and a target: throws `FileIsDirectory`
/// naming `first` for the facility's own "is a directory" (21 of the generic category),
/// and otherwise blames one of the two as `throw_win32_exception_for_pair` does. The
/// number counts as a Win32 code in any category.
void throw_on_filesystem_error(std::error_code ec, upath const &first, upath const &second);

} // namespace fl::filesystem::detail

#endif
