#include <fl/filesystem/pathname.hpp>

#include "pathname/shapes.hpp"

#include <algorithm>

namespace fl::filesystem::detail {

std::u16string make_generic_form(std::u16string const &text)
{
    using traits = pathname_traits<char16_t>;
    std::u16string generic = text;
    std::replace(generic.begin(), generic.end(), traits::PATHNAME_SEPARATOR_CHARACTER,
                 traits::GENERIC_PATHNAME_SEPARATOR_CHARACTER);
    return generic;
}

} // namespace fl::filesystem::detail
