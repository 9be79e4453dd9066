#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/shortcut.hpp"
#include "platform/shell_link_object.hpp"

namespace fl::filesystem {

void create_shortcut(upath const &target, upath const &shortcut)
{
    create_shortcut(target.native(), shortcut.native());
}

void create_shortcut(std::u16string const &target, std::u16string const &shortcut)
{
    std::wstring const target_form = detail::windows::make_native_access_form_bridge(target);
    std::wstring const form = detail::windows::make_native_access_form_bridge(shortcut);
    if (target_form.empty() || form.empty())
        detail::throw_invalid_argument("Empty path inputs not permitted");
    if (!detail::is_shortcut_path(form))
        detail::throw_invalid_argument("Shortcut path input must have .lnk file extension");
    HRESULT const result = detail::save_stored_path(form, target_form);
    if (FAILED(result))
        detail::throw_win32_exception(detail::hresult_to_win32(result), form);
}

} // namespace fl::filesystem
