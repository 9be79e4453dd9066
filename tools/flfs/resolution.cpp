#include "flfs/resolution.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "pathname/path_type.hpp"

#include <windows.h>

#include <algorithm>
#include <deque>

namespace flfs {

namespace fs = fl::filesystem;
namespace windows = fl::filesystem::detail::windows;

namespace {

using traits = fs::pathname_traits<wchar_t>;
using elements = std::deque<std::wstring>;

constexpr std::size_t most_links = 100; // of one walk of the library
constexpr wchar_t backslash = traits::PATHNAME_SEPARATOR_CHARACTER;

std::u16string narrow(std::wstring const &text)
{
    return fs::detail::from_filesystem(text);
}

std::size_t root_length(std::wstring_view text)
{
    return fs::detail::element_root_length(text);
}

/// The root of an absolute pathname, a backslash at its end.
std::wstring root_of(std::wstring_view text)
{
    std::wstring root(text.substr(0, root_length(text)));
    if (!fs::detail::ends_in_backslash<wchar_t>(root))
        root += backslash;
    return root;
}

/// A separator at the end ends no further element.
elements split(std::wstring_view text)
{
    elements all;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = fs::detail::find_backslash(text, begin);
        all.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return all;
}

std::wstring join(std::wstring path, std::wstring_view element)
{
    if (!path.empty() && !fs::detail::ends_in_backslash<wchar_t>(path))
        path += backslash;
    return path.append(element);
}

std::wstring join(std::wstring path, elements const &all)
{
    for (std::wstring const &element : all)
        path = join(std::move(path), element);
    return path;
}

bool is_dots(std::wstring_view element)
{
    return element.empty() || element == L"." || element == L"..";
}

// \\?\UNC\server\share\x and \\?\C:\x, as people write them
std::wstring without_prefix(std::wstring const &text)
{
    if (fs::detail::is_long_unc_prefix_at<wchar_t>(text, 0))
        return L"\\\\" + text.substr(std::wstring_view(traits::LONG_UNC_PATHNAME_PREFIX).size());
    if (fs::detail::is_long_prefix_at<wchar_t>(text, 0))
        return text.substr(std::wstring_view(traits::LONG_PATHNAME_PREFIX).size());
    return text;
}

[[noreturn]] void refuse(std::wstring const &text)
{
    throw fs::InvalidArgument("Invalid Path Type", narrow(text), {});
}

/// The library's walk. It only walks what isn't clean, so some empty elements, which lead
/// nowhere, go ahead of the first one. Of a shorter text it wouldn't see that it isn't clean.
std::wstring walk(std::wstring const &absolute)
{
    std::size_t const root = std::min(root_length(absolute), absolute.size());
    std::wstring const text = root_of(absolute) + L"\\\\\\\\" + absolute.substr(root);
    return windows::build_target_path_bridge(L"", text, windows::link_type_symlink_absolute);
}

/// The walk through a pathname that others go on behind: a missing end is no failure.
std::wstring walk_through(std::wstring const &absolute)
{
    return walk(join(absolute, L""));
}

std::optional<std::wstring> try_walk_through(std::wstring const &absolute)
{
    try {
        return walk_through(absolute);
    } catch (fs::FsysExceptionBase const &) {
        return std::nullopt; // the walk over the whole pathname tells it
    }
}

/// The link at `path`, if there is one that a walk would follow.
std::optional<link> link_at(std::wstring const &path)
{
    try {
        link found = read_link(narrow(without_prefix(path)));
        return found.target.empty() ? std::nullopt : std::optional(std::move(found));
    } catch (fs::FsysExceptionBase const &) {
        return std::nullopt; // an ordinary name, or a missing one
    }
}

/// Where a walk stands: on `settled`, which passes no link, with `pending` ahead of it.
struct position
{
    std::wstring settled;
    elements pending;
};

/// Cuts the `.` and `..` off that `target` begins with behind its `root`.
std::wstring take_leading_dots(std::wstring const &root, elements &target)
{
    std::wstring text = root;
    for (; !target.empty() && is_dots(target.front()); target.pop_front())
        text = join(std::move(text), target.front());
    return text;
}

/// What the walk stands on behind the link at `path`, which says `text`.
position behind(std::wstring const &path, std::wstring text)
{
    windows::path_type_enum type = fs::detail::classify_path_type<wchar_t>(text);
    if (type == windows::PATH_TYPE_INVALID)
        refuse(text);
    if (type == windows::PATH_TYPE_DRIVE_RELATIVE ||
        type == windows::PATH_TYPE_LONG_DRIVE_RELATIVE) {
        text = fs::detail::to_filesystem(fs::absolute(narrow(without_prefix(text))));
        type = windows::PATH_TYPE_DRIVE_ABSOLUTE;
    }
    if (type == windows::PATH_TYPE_DEVICE) { // in a link only one of its backslashes counts
        text.erase(0, 1);
        type = windows::PATH_TYPE_ROOTED;
    }
    position next{{}, split(std::wstring_view(text).substr(root_length(text)))};
    if (type == windows::PATH_TYPE_RELATIVE) {
        std::wstring const dots = take_leading_dots(L".", next.pending);
        next.settled =
            windows::build_target_path_bridge(path, dots, windows::link_type_symlink_relative);
        return next;
    }
    std::wstring const root = root_of(type == windows::PATH_TYPE_ROOTED ? path : text);
    std::wstring const dots = take_leading_dots(root, next.pending);
    next.settled =
        windows::build_target_path_bridge(L"", dots, windows::link_type_symlink_absolute);
    return next;
}

/// What is left of the walk from `here`, once the link at `path` has been followed.
position after_link(position const &here, std::wstring const &path, link const &found)
{
    std::u16string const text = fs::upath(found.target).native();
    position next = behind(path, fs::detail::to_filesystem(text));
    next.pending.insert(next.pending.end(), here.pending.begin(), here.pending.end());
    return next;
}

hop hop_from(std::wstring const &path, link const &found)
{
    return {narrow(without_prefix(path)), found.kind, found.text.value(), {}};
}

bool is_same(hop const &one, hop const &other)
{
    return one.goes_on_with && one.pathname == other.pathname &&
           one.goes_on_with == other.goes_on_with;
}

/// Finds the hops of one walk.
class tracer
{
public:
    tracer(std::wstring const &absolute, resolution &told)
        : path_(root_of(absolute)), ahead_(split(std::wstring_view(absolute).substr(
                                        std::min(root_length(absolute), absolute.size())))),
          told_(told)
    {
    }

    /// Ends where a walk fails, too.
    void run()
    {
        std::optional<std::wstring> settled = try_walk_through(path_);
        while (settled && !ahead_.empty() && !is_over()) {
            std::wstring const element = ahead_.front();
            ahead_.pop_front();
            path_ = join(std::move(path_), element);
            std::optional<std::wstring> const end = try_walk_through(path_);
            trace({*settled, {element}}, end);
            // whatever was found on the way, this is where the library stands
            settled = end;
        }
    }

private:
    bool is_over() const { return told_.hops_repeat || told_.hops.size() >= most_links; }

    /// Follows one element of the pathname, and all that its links put in its place.
    void trace(position here, std::optional<std::wstring> const &end)
    {
        while (!here.pending.empty() && !is_over()) {
            std::wstring const element = here.pending.front();
            here.pending.pop_front();
            std::wstring const path = join(here.settled, element);
            std::optional<link> const found = is_dots(element) ? std::nullopt : link_at(path);
            if (is_dots(element)) {
                here.settled = walk_through(path);
            } else if (!found) {
                here.settled = path;
            } else if (end == path || try_walk_through(path) == path) {
                told_.hops.push_back(hop_from(path, *found));
                told_.hops.back().is_kept = true;
                here.settled = path;
            } else {
                follow(here, path, *found);
            }
        }
    }

    void follow(position &here, std::wstring const &path, link const &found)
    {
        hop one = hop_from(path, found);
        try {
            here = after_link(here, path, found);
        } catch (fs::FsysExceptionBase const &) {
            add(std::move(one)); // the way ends at this link
            throw;
        }
        std::wstring const left = join(without_prefix(here.settled), here.pending);
        one.goes_on_with = narrow(join(left, ahead_));
        add(std::move(one));
    }

    void add(hop one)
    {
        auto const same = [&one](hop const &other) { return is_same(one, other); };
        if (std::any_of(told_.hops.begin(), told_.hops.end(), same))
            told_.hops_repeat = true;
        else
            told_.hops.push_back(std::move(one));
    }

    std::wstring path_; ///< the part of the pathname that has been walked, as it is written
    elements ahead_;
    resolution &told_;
};

what_is_there look_at(std::wstring const &path)
{
    DWORD const attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return what_is_there::nothing;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? what_is_there::directory
                                                        : what_is_there::file;
}

void find_hops(std::wstring const &absolute, resolution &told)
{
    try {
        tracer(absolute, told).run();
    } catch (fs::FsysExceptionBase const &) {
        return; // the walk over the whole pathname tells it
    }
}

void resolve_into(resolution &told)
{
    std::u16string const native = fs::upath(told.pathname).native();
    if (native.empty())
        throw fs::InvalidArgument("Empty Path not permitted", {}, {});
    told.absolute = fs::absolute(native);
    std::wstring const absolute = fs::detail::to_filesystem(*told.absolute);
    windows::path_type_enum const type = fs::detail::classify_path_type<wchar_t>(absolute);
    if (type == windows::PATH_TYPE_INVALID || type == windows::PATH_TYPE_DEVICE)
        refuse(absolute); // no root to begin with
    find_hops(absolute, told);
    std::wstring const end = walk(absolute);
    told.found = look_at(end);
    told.result = narrow(windows::make_native_access_form_bridge(narrow(end)));
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
