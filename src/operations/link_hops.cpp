#include <fl/filesystem/links.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "access/link_chain.hpp"
#include "access/resolved_form.hpp"

namespace fl::filesystem {

std::vector<link_hop> link_hops(upath const &p)
{
    using detail::windows::path_type_enum;
    std::vector<link_hop> hops;
    if (p.empty())
        return hops;
    path_type_enum path_type = detail::windows::PATH_TYPE_INVALID;
    std::wstring const cleaned = detail::make_cleaned_form(p, upath(), path_type);
    try {
        detail::resolve_link_chain(cleaned, path_type_enum(0), &hops);
    } catch (FsysExceptionBase const &) {
        // what there is of the way says where it ends
    } catch (foundation::ustring::CtypeExceptionBase const &) {
        // a mount point that can't be told from the mount point of a volume
    }
    return hops;
}

std::vector<link_hop> link_hops(std::u16string const &p)
{
    return link_hops(upath(p));
}

} // namespace fl::filesystem
