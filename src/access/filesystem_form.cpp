#include "access/filesystem_form.hpp"

#include <fl/filesystem/pathname_traits.hpp>

#include "access/absolute.hpp"
#include "pathname/long_prefix.hpp"
#include "platform/limits.hpp"

namespace fl::filesystem::detail {

std::wstring make_filesystem_form(upath const &p)
{
    absolute_text const full(p.native());
    std::wstring_view const text = full.view();
    std::wstring_view const prefix = pathname_traits<wchar_t>::LONG_PATHNAME_PREFIX;
    if (text.size() > longest_bare_directory && text.substr(0, prefix.size()) != prefix)
        return add_long_prefix<wchar_t>(text);
    return std::wstring(text);
}

} // namespace fl::filesystem::detail
