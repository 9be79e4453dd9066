#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "platform/code_units.hpp"
#include "status/permission_word.hpp"
#include "status/status.hpp"

#include <windows.h>

namespace fl::filesystem {

namespace {

void check_perms(unsigned int perms)
{
    constexpr unsigned int both = file_status::perms_add | file_status::perms_remove;
    if ((perms & both) == both || (perms & file_status::perms_mask) == file_status::perms_unknown)
        detail::throw_invalid_argument("File Permission not valid");
}

/// One hop from the link `form`. What it leads to may be a link again, and then it is that
/// whose attributes change.
std::wstring target_of(std::wstring const &form)
{
    using namespace detail::windows;
    attrib_link_type link_type = link_type_none;
    std::wstring text = detail::read_link_target(form, link_type);
    DWORD const code = ::GetLastError();
    if (link_type == link_type_volume_mount)
        text = form;
    if (text.empty())
        detail::throw_exception(SystemError(code, detail::narrow(form)));
    return build_target_path_bridge(form, text, link_type);
}

/// The name whose attributes change.
std::wstring find_target(std::wstring const &form, unsigned int perms)
{
    unsigned int const type = detail::demand_symlink_status(form).get_type();
    bool const is_link = type == file_status::symlink_file || type == file_status::reparse_file;
    return is_link && (perms & file_status::perms_symlink) == 0 ? target_of(form) : form;
}

/// Sets also what doesn't change: whether the caller may is then found out in any case.
void change(std::wstring const &target, unsigned int perms)
{
    DWORD const attributes = ::GetFileAttributesW(target.c_str());
    DWORD code = ::GetLastError();
    if (attributes == INVALID_FILE_ATTRIBUTES)
        detail::throw_win32_exception(code, target);
    if (::SetFileAttributesW(target.c_str(), detail::change_attributes(attributes, perms)))
        return;
    code = ::GetLastError();
    detail::throw_win32_exception(code, target);
}

void permissions_of_text(std::u16string const &path, unsigned int perms)
{
    if (path.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    check_perms(perms);
    change(find_target(detail::windows::make_native_access_form_bridge(path), perms), perms);
}

} // namespace

void permissions(upath const &p, unsigned int perms)
{
    permissions_of_text(p.native(), perms);
}

void permissions(std::u16string const &p, unsigned int perms)
{
    permissions_of_text(detail::make_native_form(p, true), perms);
}

} // namespace fl::filesystem
