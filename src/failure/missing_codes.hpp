#ifndef FL_FILESYSTEM_SRC_FAILURE_MISSING_CODES_HPP
#define FL_FILESYSTEM_SRC_FAILURE_MISSING_CODES_HPP
// Which codes of a failed call mean that the name isn't there. The sets differ, each by the
// rule of those who ask; they stand side by side so that none is taken for another.

#include "platform/limits.hpp"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace fl::filesystem::detail {

constexpr bool is_one_of(DWORD code, std::initializer_list<DWORD> codes)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

/// For the blame between two pathnames: only what a missing source itself can come to. The
/// other codes speak of the target, too.
constexpr bool is_missing_source(DWORD code)
{
    return is_one_of(code, {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND});
}

/// For status queries of a pathname of `size` units. What was a link a moment ago counts as
/// gone; a server that doesn't answer is a failure, since the name may be there. The system
/// says code 3 also of a pathname that is too long, and such a name isn't missing.
constexpr bool is_missing_for_status(DWORD code, std::size_t size)
{
    return is_one_of(code, {ERROR_FILE_NOT_FOUND, ERROR_INVALID_NAME, ERROR_BAD_PATHNAME,
                            ERROR_NOT_A_REPARSE_POINT}) ||
           (code == ERROR_PATH_NOT_FOUND && size <= longest_pathname);
}

/// For `access` and `canonical`: what can't be reached can't be used either, so a server that
/// isn't found counts as well.
constexpr bool is_missing_for_use(DWORD code, std::size_t size)
{
    return is_one_of(code, {ERROR_FILE_NOT_FOUND, ERROR_INVALID_NAME, ERROR_BAD_PATHNAME,
                            ERROR_BAD_NETPATH}) ||
           (code == ERROR_PATH_NOT_FOUND && size <= longest_pathname);
}

/// For the way down a tree: the directory that was told a moment ago is gone, or is none any
/// more. `size` is that of the pattern by which it is listed.
constexpr bool is_missing_for_entering(DWORD code, std::size_t size)
{
    return is_one_of(code, {ERROR_FILE_NOT_FOUND, ERROR_DIRECTORY}) ||
           (code == ERROR_PATH_NOT_FOUND && size <= longest_pathname);
}

/// For the standard facility, which has its own list and takes a share that went away and a
/// file in the place of a directory for "not found".
constexpr bool is_missing_for_standard(DWORD code)
{
    return is_one_of(code, {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_BAD_NETPATH,
                            ERROR_NETNAME_DELETED, ERROR_INVALID_NAME, ERROR_DIRECTORY});
}

} // namespace fl::filesystem::detail

#endif
