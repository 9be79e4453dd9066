#include <fl/filesystem/queries.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/absolute.hpp"
#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "failure/throw.hpp"
#include "links/junction.hpp"
#include "operations/forms_of_two.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/path_type.hpp"
#include "standard/codes.hpp"

#include <windows.h>

namespace fl::filesystem {

namespace {

void demand_both(upath const &one, upath const &other)
{
    if (one.empty() || other.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
}

void make_hard_link(std::wstring const &existing, std::wstring const &link, std::error_code &ec)
{
    detail::standard::attempt(
        ec, [&] { return ::CreateHardLinkW(link.c_str(), existing.c_str(), nullptr); });
}

/// The absolute pathname, without a long prefix, that a junction can lead to.
std::wstring junction_target(upath const &target)
{
    std::wstring full = detail::make_absolute(target).wstring();
    detail::strip_long_path_prefix(full, full.size(), std::wstring::npos);
    if (detail::classify_path_type<wchar_t>(full) != detail::windows::PATH_TYPE_DRIVE_ABSOLUTE)
        detail::throw_exception(
            InvalidArgument("The path type of the given path is not valid", target.native(), {}));
    if (full.size() > detail::longest_junction_target)
        detail::throw_exception(FileNameTooLarge(target.native()));
    return full;
}

} // namespace

void create_hard_link(upath const &existing, upath const &link)
{
    demand_both(existing, link);
    detail::call_with_forms(existing, link, make_hard_link);
}

void create_hard_link(std::u16string const &existing, std::u16string const &link)
{
    create_hard_link(upath(existing), upath(link));
}

void create_junction(upath const &target, upath const &link)
{
    demand_both(target, link);
    // made ahead of the directory, so that there is none if memory runs out
    auto data = detail::junction_data(junction_target(target));
    std::wstring const form = detail::make_filesystem_form(link);
    std::error_code ec;
    bool const is_created =
        detail::standard::attempt(ec, [&] { return ::CreateDirectoryW(form.c_str(), nullptr); });
    if (is_created && !detail::make_junction(form, data, ec))
        ::RemoveDirectoryW(form.c_str());
    detail::throw_on_filesystem_error(ec, link);
}

void create_junction(std::u16string const &target, std::u16string const &link)
{
    create_junction(upath(target), upath(link));
}

} // namespace fl::filesystem
