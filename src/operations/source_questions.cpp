#include "operations/source_questions.hpp"

#include <fl/filesystem/operations.hpp>

#include "standard/filesystem.hpp"

namespace fl::filesystem::detail {

bool is_symbolic_link(std::wstring const &path)
{
    std::error_code ignored;
    return standard::symlink_status(path, ignored).type() == std::filesystem::file_type::symlink;
}

bool does_source_exist(std::u16string const &path)
{
    return exists(path);
}

bool can_source_be_read(std::u16string const &path)
{
    return access(path, access_read);
}

} // namespace fl::filesystem::detail
