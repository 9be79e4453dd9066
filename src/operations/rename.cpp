#include <fl/filesystem/operations.hpp>

#include "operations/forms_of_two.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem {

void rename(upath const &from, upath const &to)
{
    detail::call_with_forms(from, to, detail::standard::rename);
}

void rename(std::u16string const &from, std::u16string const &to)
{
    rename(upath(from), upath(to));
}

} // namespace fl::filesystem
