#include <fl/filesystem/attempt.hpp>

#include "failure/win32_error.hpp"
#include "platform/code_units.hpp"

namespace fl::filesystem {

void throw_last_error(unsigned int error_code, upath const &p)
{
    detail::throw_win32_exception(error_code, p.wstring());
}

void throw_last_error(unsigned int error_code, std::u16string const &p)
{
    detail::throw_win32_exception(error_code, detail::widen(p));
}

void throw_last_error(unsigned int error_code, upath const &p, upath const &second)
{
    detail::throw_win32_exception(error_code, p.wstring(), second.wstring());
}

void throw_last_error(unsigned int error_code, std::u16string const &p,
                      std::u16string const &second)
{
    detail::throw_win32_exception(error_code, detail::widen(p), detail::widen(second));
}

} // namespace fl::filesystem
