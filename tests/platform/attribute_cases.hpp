#ifndef FL_FILESYSTEM_TESTS_PLATFORM_ATTRIBUTE_CASES_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_ATTRIBUTE_CASES_HPP
// Names that calls on attributes are asked about, and what all of them say.

#include "platform/contract.hpp"

namespace contract {

// One call on a folder that holds `dir` and `file`. See `text_in`.
inline void fill_for_attributes(workspace &space)
{
    space.make_directory(space.path(u"dir"));
    space.make_file(space.path(u"file"), "content");
    space.change_directory(space.root());
}

/// The same for asking and for setting. What differs stands with the tests of each call.
inline constexpr call_row common_attribute_cases[] = {
    {LR"(@\dir)", success, "a directory"},
    {LR"(@\DIR\)", success, "with a separator, in another case"},
    {LR"(@\file)", success, "a file"},
    {LR"(@/dir/../FILE)", success, "by a detour"},
    {LR"(@\file. )", success, "once the end is trimmed"},
    {LR"(?@\file)", success, "as it stands"},
    {LR"(@\missing)", ERROR_FILE_NOT_FOUND, "not there"},
    {LR"(@\missing\a)", ERROR_PATH_NOT_FOUND, "nor the directory above"},
    {LR"(@\file\a)", ERROR_PATH_NOT_FOUND, "below a file"},
    {LR"(@\a*b)", ERROR_INVALID_NAME, "no name"},
    {LR"(@\a<b\c)", ERROR_INVALID_NAME, "nor the one above"},
    {LR"(@\missing\a*b)", ERROR_PATH_NOT_FOUND, "names are checked in their turn",
     ERROR_INVALID_NAME},
    {LR"(?@\file.)", ERROR_FILE_NOT_FOUND, "as it stands, it is another name"},
    {LR"(?@\dir\.)", ERROR_INVALID_NAME, "as they stand, dots are no names"},
    {LR"(?@/dir)", ERROR_INVALID_NAME, "nor is a slash in one"},
    {L"", ERROR_PATH_NOT_FOUND, "no text"},
    {L"  ", ERROR_PATH_NOT_FOUND, "blanks only"},
    {LR"(Q:\)", ERROR_PATH_NOT_FOUND, "no such drive"},
    {LR"(Q:\a)", ERROR_PATH_NOT_FOUND, "nor anything on it", ERROR_FILE_NOT_FOUND},
    {LR"(\\fl-dead-server\share)", ERROR_BAD_NETPATH, "no such server", ERROR_PATH_NOT_FOUND},
    {LR"(\\fl-dead-server\share\a)", ERROR_BAD_NETPATH, "nor anything on it", ERROR_PATH_NOT_FOUND},
};

} // namespace contract

#endif
