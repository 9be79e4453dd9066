#ifndef FL_FILESYSTEM_SRC_ACCESS_RESOLVED_FORM_HPP
#define FL_FILESYSTEM_SRC_ACCESS_RESOLVED_FORM_HPP
// What most operations hand to a Win32 call.

#include <fl/filesystem/path.hpp>
#include <fl/filesystem/windows_types.hpp>

#include <string>

namespace fl::filesystem::detail {

/// Returns `p`, joined to `base`, absolute and with a long prefix, and sets `path_type` to its
/// type: what a walk through its links begins with. Throws what `absolute` and
/// `clean_pathname` throw.
std::wstring make_cleaned_form(upath const &p, upath const &base,
                               windows::path_type_enum &path_type);

/// Returns `path` absolute, with a long prefix and without `.` and `..`. A `..` leads to
/// where the directory ahead of it really is; a link at the very end stays one, since
/// callers speak about the link itself. Without a `..` no disk is touched. Throws what
/// `absolute`, `clean_pathname` and `resolve_link_chain` throw.
std::wstring make_resolved_access_form(std::u16string const &path);

} // namespace fl::filesystem::detail

#endif
