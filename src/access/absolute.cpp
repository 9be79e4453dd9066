#include "access/absolute.hpp"

#include <fl/filesystem/exceptions.hpp>

#include "failure/filesystem_error.hpp"
#include "failure/throw.hpp"
#include "platform/code_units.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem::detail {

upath join_with_base(upath const &p, upath const &base)
{
    if (base.empty() || standard::is_absolute<char16_t>(p.native()))
        return p;
    if (!standard::is_absolute<char16_t>(base.native()))
        throw_invalid_argument("Invalid path type for base path");
    try {
        return base / p;
    } catch (InvalidArgument const &) {
        return p; // a drive or a backslash ahead: the current directories must do
    }
}

upath make_absolute(upath const &p, upath const &base)
{
    if (p.empty() && base.empty())
        return upath();
    upath const joined = join_with_base(p, base);
    std::error_code ec;
    std::wstring const full = standard::absolute(joined.wstring(), ec);
    throw_on_filesystem_error(ec, p);
    return upath(narrow(full));
}

} // namespace fl::filesystem::detail
