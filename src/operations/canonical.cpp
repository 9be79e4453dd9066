#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/link_chain.hpp"
#include "access/resolved_form.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/native_form.hpp"
#include "pathname/native_path.hpp"
#include "platform/attribute_query.hpp"
#include "standard/filesystem.hpp"
#include "status/existence.hpp"

#include <algorithm>
#include <utility>

namespace fl::filesystem {

namespace {

/// The pathname with every link in it resolved, if there is a file behind it.
std::wstring resolve(upath const &p, upath const &base)
{
    using detail::windows::path_type_enum;
    path_type_enum path_type = detail::windows::PATH_TYPE_INVALID;
    std::wstring const cleaned = detail::make_cleaned_form(p, base, path_type);
    std::wstring resolved = detail::resolve_link_chain(cleaned, path_type_enum(0));
    detail::attribute_query const query(resolved);
    if (query.has_failed) {
        detail::throw_unless_missing(query.code, resolved);
        detail::throw_exception(PathNotFound());
    }
    resolved.erase(std::find(resolved.begin(), resolved.end(), L'\0'), resolved.end());
    return std::move(detail::strip_long_path_prefix(resolved, resolved.size(), std::wstring::npos));
}

/// Joins to `head` the elements from `element` on that exist, and stops at the first that
/// doesn't.
void walk_what_exists(upath &head, upath::iterator &element, upath::iterator const &end)
{
    for (; element != end; ++element) {
        try {
            upath const candidate = head / *element;
            if (!detail::is_present(candidate))
                return;
            head = candidate;
        } catch (...) { // whatever it is, it can't be resolved any further
            return;
        }
    }
}

/// Joins the rest to `head`. Returns whether there is a `.` or `..` in it.
bool append_rest(upath &head, upath::iterator element, upath::iterator const &end)
{
    bool has_dots = false;
    for (; element != end; ++element) {
        head /= *element;
        has_dots = has_dots || *element == u"." || *element == u"..";
    }
    return has_dots;
}

} // namespace

upath canonical(upath const &p, upath const &base)
{
    if (p.empty())
        return upath();
    try {
        return detail::path_of_native(detail::narrow_native_form(resolve(p, base)));
    } catch (PathNotFound const &) {
        // callers are told neither what they gave nor how far it could be resolved
        detail::throw_exception(PathNotFound());
    }
}

std::u16string canonical(std::u16string const &p, std::u16string const &base)
{
    return canonical(upath(p), upath(base)).u16string();
}

upath weakly_canonical(upath const &p)
{
    if (p.empty())
        return upath();
    if (exists(p))
        return canonical(p, upath());
    upath head;
    upath::iterator element = p.begin();
    walk_what_exists(head, element, p.end());
    head = canonical(head, upath());
    if (!append_rest(head, element, p.end()))
        return head;
    return detail::path_of_native(
        detail::narrow_native_form(detail::standard::lexically_normal(head.wstring())));
}

std::u16string weakly_canonical(std::u16string const &p)
{
    return weakly_canonical(upath(p)).u16string();
}

} // namespace fl::filesystem
