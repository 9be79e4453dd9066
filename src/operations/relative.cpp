#include <fl/filesystem/operations.hpp>

#include "failure/win32_error.hpp"
#include "pathname/native_form.hpp"
#include "pathname/native_path.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem {

upath relative(upath const &p, upath const &base)
{
    std::error_code ec;
    std::wstring const text = detail::standard::relative(p.wstring(), base.wstring(), ec);
    if (ec)
        detail::throw_win32_exception(static_cast<unsigned int>(ec.value()), p.wstring());
    return detail::path_of_native(detail::narrow_native_form(text));
}

std::u16string relative(std::u16string const &p, std::u16string const &base)
{
    return relative(upath(p), upath(base)).u16string();
}

} // namespace fl::filesystem
