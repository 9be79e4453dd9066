#include "failure/filesystem_error.hpp"

#include "failure/blame.hpp"
#include "failure/generic_codes.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"

namespace fl::filesystem::detail {

namespace {

/// "Is a directory" of the facility's own checks.
bool is_a_directory(std::error_code const &ec)
{
    return ec == generic_code(generic_is_a_directory);
}

} // namespace

void throw_on_filesystem_error(std::error_code ec, std::optional<upath> first)
{
    if (ec.value() == 0)
        return;
    std::wstring const named = first ? first->wstring() : std::wstring();
    throw_win32_exception(static_cast<unsigned int>(ec.value()), named);
}

void throw_on_filesystem_error(std::error_code ec, upath const &first, upath const &second)
{
    if (ec.value() == 0)
        return;
    if (is_a_directory(ec))
        throw_exception(FileIsDirectory(first.native()));
    throw_win32_exception_for_pair(static_cast<unsigned int>(ec.value()), first.wstring(),
                                   second.wstring());
}

} // namespace fl::filesystem::detail
