#include <fl/filesystem/queries.hpp>

#include <fl/filesystem/windows.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/shortcut.hpp"
#include "platform/code_units.hpp"
#include "platform/shell_link_object.hpp"

namespace fl::filesystem {

upath read_shortcut(upath const &p)
{
    std::wstring const form = detail::windows::make_native_access_form_bridge(p.native());
    if (!detail::is_shortcut_path(form))
        detail::throw_invalid_argument("Shortcut path input must have .lnk file extension");
    std::wstring target;
    HRESULT const result = detail::read_stored_target(form, target);
    if (FAILED(result))
        detail::throw_win32_exception(detail::hresult_to_win32(result), p.wstring());
    return upath(detail::narrow(target));
}

std::u16string read_shortcut(std::u16string const &p)
{
    return read_shortcut(upath(p)).u16string();
}

} // namespace fl::filesystem
