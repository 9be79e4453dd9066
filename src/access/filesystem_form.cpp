#include "access/filesystem_form.hpp"

#include <fl/filesystem/pathname_traits.hpp>

#include "access/absolute.hpp"
#include "pathname/long_prefix.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"

namespace fl::filesystem::detail {

std::wstring make_filesystem_form(upath const &p)
{
    upath const full = make_absolute(p);
    std::u16string_view const text = full.native();
    std::u16string_view const prefix = pathname_traits<char16_t>::LONG_PATHNAME_PREFIX;
    if (text.size() > longest_bare_directory && text.substr(0, prefix.size()) != prefix)
        return add_long_prefix<wchar_t>(text);
    return widen(text);
}

} // namespace fl::filesystem::detail
