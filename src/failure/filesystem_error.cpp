#include "failure/filesystem_error.hpp"

#include "failure/win32_error.hpp"

namespace fl::filesystem::detail {

void throw_on_filesystem_error(std::error_code ec, std::optional<upath> first)
{
    if (ec.value() == 0)
        return;
    std::wstring const named = first ? first->wstring() : std::wstring();
    throw_win32_exception(static_cast<unsigned int>(ec.value()), named);
}

} // namespace fl::filesystem::detail
