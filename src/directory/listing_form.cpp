#include "directory/listing_form.hpp"

#include "access/absolute.hpp"
#include "failure/throw.hpp"
#include "pathname/long_prefix.hpp"

namespace fl::filesystem::detail {

std::wstring make_listing_form(upath const &p)
{
    if (p.empty())
        throw_invalid_argument("Empty Path not permitted");
    return make_literal_form<wchar_t>(absolute_text(p.native()).view());
}

} // namespace fl::filesystem::detail
