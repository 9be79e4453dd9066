#include "directory/listing_form.hpp"

#include "access/absolute.hpp"
#include "failure/throw.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

namespace fl::filesystem::detail {

std::wstring make_listing_form(upath const &p)
{
    if (p.empty())
        throw_invalid_argument("Empty Path not permitted");
    upath const full = make_absolute(p);
    std::u16string_view const text = full.native();
    switch (classify_path_type(text)) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return with_long_prefix<wchar_t>(text, false);
    case windows::PATH_TYPE_UNC:
        return with_long_prefix<wchar_t>(text, true);
    default: // the system may know what it is
        return widen(text);
    }
}

} // namespace fl::filesystem::detail
