#include "flfs/resolution.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include <windows.h>

#include <algorithm>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

link_kind kind_of(fs::link_kind kind)
{
    switch (kind) {
    case fs::link_kind::relative_symbolic_link:
        return link_kind::symbolic_link_relative;
    case fs::link_kind::junction:
        return link_kind::junction;
    case fs::link_kind::shortcut:
        return link_kind::shortcut;
    case fs::link_kind::symbolic_link:
        break;
    }
    return link_kind::symbolic_link_absolute;
}

bool is_same(hop const &one, hop const &other)
{
    return one.goes_on_with && one.pathname == other.pathname &&
           one.goes_on_with == other.goes_on_with;
}

/// Each hop once: where the way comes to one again, it goes round.
void find_hops(std::u16string const &native, resolution &told)
{
    for (fs::link_hop const &met : fs::link_hops(native)) {
        hop one{met.link, kind_of(met.kind), met.text, met.leads_to, met.is_kept};
        auto const same = [&one](hop const &other) { return is_same(one, other); };
        told.hops_repeat = std::any_of(told.hops.begin(), told.hops.end(), same);
        if (told.hops_repeat)
            return;
        told.hops.push_back(std::move(one));
    }
}

what_is_there look_at(std::wstring const &path)
{
    DWORD const attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return what_is_there::nothing;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? what_is_there::directory
                                                        : what_is_there::file;
}

void resolve_into(resolution &told)
{
    std::u16string const native = fs::upath(told.pathname).native();
    if (native.empty())
        throw fs::InvalidArgument("Empty Path not permitted", {}, {});
    told.absolute = fs::absolute(native);
    find_hops(native, told);
    std::u16string const end = fs::canonical(native);
    std::wstring const form = fs::detail::windows::make_native_access_form_bridge(end);
    told.found = look_at(form);
    told.result = fs::detail::from_filesystem(form);
}

} // namespace

resolution resolve(std::u16string const &pathname)
{
    resolution told;
    told.pathname = pathname;
    try {
        resolve_into(told);
    } catch (fs::FsysExceptionBase const &exception) {
        told.what_failed = describe(exception);
    }
    return told;
}

} // namespace flfs
