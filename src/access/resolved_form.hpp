#ifndef FL_FILESYSTEM_SRC_ACCESS_RESOLVED_FORM_HPP
#define FL_FILESYSTEM_SRC_ACCESS_RESOLVED_FORM_HPP
// What most operations hand to a Win32 call.

#include <string>

namespace fl::filesystem::detail {

/// Returns `path` absolute, with a long prefix and without `.` and `..`. A `..` leads to
/// where the directory ahead of it really is; a link at the very end stays one, since
/// callers speak about the link itself. Without a `..` no disk is touched. Throws what
/// `absolute`, `clean_pathname` and `resolve_link_chain` throw.
std::wstring make_resolved_access_form(std::u16string const &path);

} // namespace fl::filesystem::detail

#endif
