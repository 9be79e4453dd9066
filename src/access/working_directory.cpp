#include "access/working_directory.hpp"

#include "failure/throw.hpp"
#include "standard/filesystem.hpp"

#include <filesystem>
#include <system_error>

namespace fl::filesystem::detail {

std::wstring current_path_wide()
{
    std::error_code ec;
    std::wstring path = standard::current_path(ec);
    if (ec)
        throw_exception(std::filesystem::filesystem_error("current_path()", ec));
    return path;
}

} // namespace fl::filesystem::detail
