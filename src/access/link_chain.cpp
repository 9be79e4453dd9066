#include "access/link_chain.hpp"

#include "access/buffer_size.hpp"
#include "access/link_target.hpp"
#include "access/mapped_drive.hpp"
#include "failure/demanded_attributes.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/link_reading.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace fl::filesystem::detail {

namespace {

using windows::path_type_enum;

constexpr int most_links = 100;

[[noreturn]] void throw_nowhere()
{
    throw_exception(PathNotFound());
}

/// Roots that say nothing about where they are can't be walked from.
[[noreturn]] void reject_root(path_type_enum type)
{
    switch (type) {
    case windows::PATH_TYPE_INVALID:
    case windows::PATH_TYPE_RELATIVE:
    case windows::PATH_TYPE_DEVICE:
        throw_invalid_argument("Invalid Path Type");
    default:
        throw_nowhere();
    }
}

bool is_drive(path_type_enum type)
{
    return type == windows::PATH_TYPE_DRIVE_ABSOLUTE ||
           type == windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE;
}

/// Where the root of a pathname ends that a walk begins with.
std::size_t first_root_size(std::wstring_view path, path_type_enum type)
{
    switch (type) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return drive_root_size;
    case windows::PATH_TYPE_UNC:
        return checked_unc_root_length(path, server_prefix_size);
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
        return long_prefix_size + drive_root_size;
    case windows::PATH_TYPE_LONG_UNC:
        return checked_unc_root_length(path, long_unc_prefix_size);
    default:
        reject_root(type);
    }
}

/// A pathname as callers write it.
std::u16string plain(std::wstring path)
{
    return narrow(strip_long_path_prefix(path, path.size(), std::wstring::npos));
}

/// What is to come of a pathname. Taking from its front moves nothing: a pathname of 16,000
/// elements would be moved as often.
class text_to_come
{
public:
    /// Good until something is put ahead.
    std::wstring_view view() const { return std::wstring_view(text_).substr(begin_); }
    bool empty() const { return begin_ == text_.size(); }

    /// Takes away up to `size` units.
    void drop(std::size_t size) { begin_ += std::min(size, text_.size() - begin_); }

    void put_ahead(std::wstring_view text)
    {
        if (text.size() <= begin_) { // where the link itself stood
            begin_ -= text.size();
            std::copy(text.begin(), text.end(), &text_[begin_]);
            return;
        }
        std::wstring joined;
        joined.reserve(text.size() + view().size());
        joined.append(text).append(view());
        text_ = std::move(joined);
        begin_ = 0;
    }

private:
    std::wstring text_;
    std::size_t begin_ = 0;
};

/// One walk. What is settled stands in `resolved_`, what is to come in `rest_`, where a
/// separator stands ahead of it once an element has been taken.
class walk
{
public:
    walk(std::wstring_view path, path_type_enum path_type, std::vector<link_hop> *hops);
    std::wstring run();

private:
    using answer = std::optional<std::wstring>; ///< with which the walk is over

    answer take_element();
    answer take_two_dots();
    answer take_name(std::wstring_view element);
    answer keep_name();
    answer follow(found_link link, std::size_t parent);
    answer enter_target(std::wstring_view target);
    answer follow_rooted(std::wstring_view target);
    answer enter_root(std::wstring_view target);
    answer keep_remote_link();
    answer go_on();
    std::wstring end() const { return std::wstring(without_trailing_separator(resolved_)); }

    void count_link(found_link const &link);
    bool is_remote(std::size_t parent) const;
    void demand_directory() const;
    std::size_t last_backslash() const;
    void settle(std::wstring_view text);
    void put_ahead(std::wstring_view text);

    std::wstring resolved_;
    std::wstring root_; ///< at the start of `resolved_`, and no `..` removes it
    text_to_come rest_;
    path_type_enum initial_type_;
    path_type_enum current_type_; ///< of the last link's target, before of the pathname
    int link_count_ = 0;
    std::vector<link_hop> *hops_; ///< null if nobody wants to know
};

walk::walk(std::wstring_view path, path_type_enum path_type, std::vector<link_hop> *hops)
    : initial_type_(path_type == 0 ? classify_path_type(path) : path_type),
      current_type_(initial_type_), hops_(hops)
{
    resolved_.reserve(round_up_to_512(path.size() + 9));
    std::size_t const size = first_root_size(path, initial_type_);
    resolved_ += long_root(path, size, initial_type_);
    rest_.put_ahead(path.substr(std::min(size, path.size())));
    root_ = resolved_;
    if (initial_type_ == windows::PATH_TYPE_UNC) // by the size that it is written in: see settle
        root_.append(server_prefix_size, L'\0');
}

std::wstring walk::run()
{
    while (!rest_.empty())
        if (answer over = take_element())
            return *std::move(over);
    return end();
}

walk::answer walk::take_element()
{
    std::wstring_view const rest = rest_.view();
    std::wstring_view const element = rest.substr(0, find_backslash(rest, 0));
    rest_.drop(element.size());
    if (element != L"." && element != L"..")
        return take_name(element);
    demand_directory();
    return element == L"." ? go_on() : take_two_dots();
}

walk::answer walk::take_two_dots()
{
    std::size_t const above = last_backslash();
    if (!rest_.empty()) {
        if (resolved_.size() != root_.size())
            resolved_.resize(above + 1);
        return go_on();
    }
    if (above >= root_.size()) {
        resolved_.resize(above);
        return end();
    }
    resolved_ = root_;
    return is_drive(current_type_) ? resolved_ : end(); // a drive keeps its backslash
}

/// Only the last element has to be there: what is missing before it shows at the end.
walk::answer walk::take_name(std::wstring_view element)
{
    std::size_t const parent = resolved_.size();
    settle(element);
    bool const is_last = rest_.empty();
    unsigned int error = ERROR_SUCCESS;
    std::optional<found_link> link = read_link(resolved_, is_last, error);
    if (error != ERROR_SUCCESS && is_last)
        throw_win32_exception(error, resolved_);
    if (link)
        return follow(*std::move(link), parent);
    return keep_name();
}

walk::answer walk::keep_name()
{
    if (!ends_in_backslash<wchar_t>(resolved_))
        settle({&backslash<wchar_t>, 1});
    return go_on();
}

/// Follows the link that stands behind the first `parent` units of what is settled.
walk::answer walk::follow(found_link link, std::size_t parent)
{
    count_link(link);
    std::wstring &target = link.text;
    if (target.size() > 1 && is_backslash(target.back()))
        target.pop_back();
    current_type_ = normalise_link_target(target);
    if (current_type_ == windows::PATH_TYPE_INVALID)
        reject_root(current_type_);
    // a drive of the server, unless it was this machine that wrote the text
    if (current_type_ == windows::PATH_TYPE_DRIVE_ABSOLUTE && is_remote(parent) &&
        link.kind != link_kind::shortcut)
        return keep_remote_link();
    resolved_.resize(parent);
    answer over = enter_target(target);
    if (hops_ != nullptr) {
        std::wstring whole = over ? *over : resolved_;
        if (!over)
            whole += rest_.view();
        hops_->back().leads_to = plain(std::move(whole));
    }
    return over;
}

walk::answer walk::enter_target(std::wstring_view target)
{
    switch (current_type_) {
    case windows::PATH_TYPE_RELATIVE:
        put_ahead(target);
        return std::nullopt;
    case windows::PATH_TYPE_ROOTED:
        return follow_rooted(target);
    default:
        return enter_root(target);
    }
}

// \a, from the root that is in use
walk::answer walk::follow_rooted(std::wstring_view target)
{
    resolved_ = root_;
    if (target.size() == 1) // the root itself, and what is behind the separator
        return go_on();
    put_ahead(target.substr(1));
    return std::nullopt;
}

/// The root of `target` takes the place of the one in use.
walk::answer walk::enter_root(std::wstring_view target)
{
    std::size_t const size = target_root_size(target, current_type_);
    std::wstring root = long_root(target, size, current_type_);
    if (target.size() == size && rest_.empty())
        return root;
    if (ends_in_backslash(target))
        rest_.drop(1); // the target brings its own separator
    put_ahead(target.substr(std::min(size, target.size())));
    if (is_server(current_type_)) {
        if (!ends_in_backslash<wchar_t>(root))
            root += backslash<wchar_t>;
        if (is_backslash(unit_at(rest_.view(), 0))) // the root has it now
            rest_.drop(1);
    }
    // the same drive stays as it was written, and the prefix with it
    bool const is_same_drive =
        root_.size() == root.size() && root_.ends_with(target.substr(0, size));
    if (!is_same_drive)
        root_ = std::move(root);
    resolved_ = root_;
    return std::nullopt;
}

/// A link to a drive of the server stays an ordinary name, and nothing behind it is known. An
/// empty element finds it a second time, which is the end.
walk::answer walk::keep_remote_link()
{
    if (hops_ != nullptr)
        hops_->back().is_kept = true;
    if (ends_in_backslash<wchar_t>(resolved_))
        return end();
    return keep_name();
}

/// On to the next element, past the separator ahead of it.
walk::answer walk::go_on()
{
    rest_.drop(1);
    return std::nullopt;
}

void walk::count_link(found_link const &link)
{
    if (link_count_ >= most_links)
        throw_exception(SystemError(ERROR_DS_LOOP_DETECT, narrow(resolved_)));
    ++link_count_;
    if (hops_ == nullptr)
        return;
    link_hop hop;
    hop.link = plain(resolved_);
    hop.kind = link.kind;
    hop.text = narrow(link.text);
    hops_->push_back(std::move(hop));
}

/// Whether a link in the directory that the first `parent` units name is a server's.
bool walk::is_remote(std::size_t parent) const
{
    return is_server(initial_type_) ||
           is_mapped_network_drive(std::wstring_view(resolved_).substr(0, parent), initial_type_);
}

/// Whether a directory is there, which `.` and `..` need: behind a file they lead nowhere.
/// The separator stays away from the system, which would call it an invalid name.
void walk::demand_directory() const
{
    if ((demand_attribute_data(end()).dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        throw_nowhere();
}

/// The index of the backslash ahead of the last settled element. A drive without a prefix
/// has none ahead of its root, which is where it ends.
std::size_t walk::last_backslash() const
{
    std::size_t const found = resolved_.rfind(backslash<wchar_t>, resolved_.size() - 2);
    return found == std::wstring::npos ? drive_size : found;
}

/// Appends to what is settled. The root of a pathname that began as a bare `\\server\share` is
/// taken for two units longer than it is: in these stands what was last settled there, or
/// zeros, and a `..` at the end or a rooted link brings it back. So it is below a drive
/// without its prefix, from which a `..` can climb into the root.
void walk::settle(std::wstring_view text)
{
    std::size_t const at = resolved_.size();
    resolved_ += text;
    if (at < root_.size()) {
        std::wstring_view const inside = text.substr(0, root_.size() - at);
        root_.replace(at, inside.size(), inside);
    }
}

/// Puts `text` ahead of what is to come, with one separator between them.
void walk::put_ahead(std::wstring_view text)
{
    if (ends_in_backslash(text))
        text.remove_suffix(1);
    if (!text.empty() && !rest_.empty() && !is_backslash(rest_.view().front()))
        rest_.put_ahead({&backslash<wchar_t>, 1});
    rest_.put_ahead(text);
}

} // namespace

std::wstring resolve_link_chain(std::wstring_view path, path_type_enum path_type,
                                std::vector<link_hop> *hops)
{
    return walk(path, path_type, hops).run();
}

} // namespace fl::filesystem::detail
