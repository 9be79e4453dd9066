#ifndef FL_FILESYSTEM_SRC_OPERATIONS_FORMS_OF_TWO_HPP
#define FL_FILESYSTEM_SRC_OPERATIONS_FORMS_OF_TWO_HPP
// The frame of operations with a source and a target.

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"

namespace fl::filesystem::detail {

/// Runs `call(from, to, ec)` on the strings for the system, of which that of `to` is made
/// first, and throws what `ec` then holds, about the pathnames as they were given.
template <typename Call>
void call_with_forms(upath const &from, upath const &to, Call call)
{
    std::wstring const to_form = make_filesystem_form(to);
    std::wstring const from_form = make_filesystem_form(from);
    std::error_code ec;
    call(from_form, to_form, ec);
    throw_on_filesystem_error(ec, from, to);
}

} // namespace fl::filesystem::detail

#endif
