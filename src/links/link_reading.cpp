#include "links/link_reading.hpp"

#include "links/reparse_data.hpp"
#include "links/shortcut.hpp"

#include <utility>

namespace fl::filesystem::detail {

namespace {

link_kind kind_of(windows::attrib_link_type link_type) noexcept
{
    switch (link_type) {
    case windows::link_type_mount_point:
        return link_kind::junction;
    case windows::link_type_symlink_relative:
        return link_kind::relative_symbolic_link;
    default:
        return link_kind::symbolic_link;
    }
}

} // namespace

std::optional<found_link> read_link(std::wstring const &path, bool must_be_there,
                                    unsigned int &error)
{
    unsigned int code = 0;
    windows::attrib_link_type link_type = windows::link_type_none;
    std::wstring text = read_link_text(path, link_type, code);
    if (!text.empty())
        return found_link{std::move(text), kind_of(link_type)};
    if (code == 0 || !must_be_there)
        text = read_shortcut_target(path, code);
    if (code != 0)
        error = code;
    if (text.empty())
        return std::nullopt;
    return found_link{std::move(text), link_kind::shortcut};
}

} // namespace fl::filesystem::detail
