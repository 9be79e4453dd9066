#include "access/former_link_chain.hpp"

#include "access/buffer_size.hpp"
#include "access/link_target.hpp"
#include "access/mapped_drive.hpp"
#include "failure/demanded_attributes.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "links/shortcut.hpp"
#include "pathname/path_type.hpp"
#include "platform/code_units.hpp"

#include <windows.h>

#include <algorithm>
#include <optional>

namespace fl::filesystem::detail::former {

namespace {

using windows::path_type_enum;

constexpr int most_links = 100;
constexpr std::size_t drive_root_size = 3; // C:\ and nothing else

[[noreturn]] void throw_invalid_type()
{
    throw_invalid_argument("Invalid Path Type");
}

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
        throw_invalid_type();
    default:
        throw_nowhere();
    }
}

/// Whether a directory is there, which `.` and `..` need: behind a file they lead nowhere.
/// The separator stays away from the system, which would call it an invalid name.
bool is_directory_at(std::wstring_view text)
{
    std::wstring const name(without_trailing_separator(text));
    return (demand_attribute_data(name).dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// A link on the way: its text, and whether a shortcut file says it.
struct found_link
{
    std::wstring target;
    bool is_shortcut = false;
};

/// The first units of a text, as many as there are.
std::wstring_view clamped(std::wstring_view text, std::size_t count)
{
    return text.substr(0, std::min(count, text.size()));
}

/// One walk. What is settled stands in `resolved_`, what is to come in `rest_`. Both are
/// buffers: what they hold behind their lengths has been settled or walked before, or is
/// zero, and a `..` next to a bare server root can bring it back.
class walk
{
public:
    walk(std::wstring_view path, path_type_enum path_type);
    std::wstring run();

private:
    enum class step
    {
        next,
        end
    };

    void begin(std::wstring_view path);
    step take_element();
    step take_dot();
    step take_two_dots();
    step take_name();
    step keep_name();
    void climb();
    bool climb_at_the_end();

    std::optional<found_link> look_for_link();
    void check_query(unsigned int error) const;
    void count_link();
    step follow(found_link link);
    step follow_relative(std::wstring const &target);
    step follow_rooted(std::wstring const &target);
    step follow_drive(std::wstring const &target, bool is_shortcut);
    step follow_server(std::wstring const &target);
    step follow_long_drive(std::wstring const &target);
    step follow_long_server(std::wstring const &target);
    step keep_remote_link();

    std::wstring_view settled() const { return std::wstring_view(resolved_).substr(0, length_); }
    std::wstring_view element() const
    {
        return std::wstring_view(rest_).substr(position_, end_ - position_);
    }
    std::size_t root_end() const { return prefix_length_ + root_length_; }
    std::size_t tail() const { return rest_length_ - end_; }
    std::size_t last_backslash_before_end() const;

    void append(std::wstring_view text);
    void append_backslash();
    void replace_root(std::wstring_view root);
    void settle(std::wstring_view text);
    void skip_doubled_separator(std::wstring const &target);
    void splice_rest(std::wstring_view target, std::size_t skip);
    step finish_with(std::wstring_view text);

    std::wstring resolved_;
    std::size_t length_ = 0;
    std::wstring rest_;
    std::size_t rest_length_ = 0;
    std::size_t position_ = 0;
    std::size_t end_ = 0; ///< of the current element in `rest_`
    std::size_t saved_length_ = 0;
    std::size_t prefix_length_ = 0;
    std::size_t root_length_ = 0;
    path_type_enum initial_type_;
    path_type_enum current_type_;
    int link_count_ = 0;
    bool more_ = true; ///< whether a separator stands behind the current element
    std::optional<std::wstring> answer_;
};

/// Writes `text` at `at`, where the buffer may be too small.
void write_at(std::wstring &buffer, std::size_t at, std::wstring_view text)
{
    if (at + text.size() >= buffer.size())
        buffer.resize(round_up_to_512(at + text.size() + 1));
    std::copy(text.begin(), text.end(), buffer.begin() + static_cast<std::ptrdiff_t>(at));
}

walk::walk(std::wstring_view path, path_type_enum path_type)
    : resolved_(round_up_to_512(path.size() + 9), L'\0'),
      rest_(round_up_to_512(path.size() + 1), L'\0'),
      initial_type_(path_type == 0 ? classify_path_type(path) : path_type),
      current_type_(initial_type_)
{
    begin(path);
}

void walk::begin(std::wstring_view path)
{
    std::size_t root = 0;
    switch (initial_type_) {
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        root = drive_root_size;
        append(pathname_traits<wchar_t>::LONG_PATHNAME_PREFIX);
        append(clamped(path, root));
        prefix_length_ = long_prefix_size;
        root_length_ = root;
        break;
    case windows::PATH_TYPE_UNC:
        root = checked_unc_root_length(path, 2);
        append(pathname_traits<wchar_t>::LONG_UNC_PATHNAME_PREFIX);
        append(path.substr(2, root - 2));
        prefix_length_ = long_unc_prefix_size;
        root_length_ = root; // with the two separators that the long form has not
        break;
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
        root = long_prefix_size + drive_root_size;
        append(clamped(path, root));
        prefix_length_ = long_prefix_size;
        root_length_ = drive_root_size;
        break;
    case windows::PATH_TYPE_LONG_UNC:
        root = checked_unc_root_length(path, long_unc_prefix_size);
        append(path.substr(0, root));
        prefix_length_ = long_unc_prefix_size;
        root_length_ = root - long_unc_prefix_size;
        break;
    default:
        reject_root(initial_type_);
    }
    if (root_length_ == path.size())
        answer_ = settled();
    std::wstring_view const rest = path.substr(std::min(root, path.size()));
    write_at(rest_, 0, rest);
    rest_length_ = rest.size();
}

std::wstring walk::run()
{
    while (!answer_ && take_element() == step::next)
        continue;
    return answer_ ? *std::move(answer_) : std::wstring(without_trailing_separator(settled()));
}

walk::step walk::take_element()
{
    if (position_ == rest_length_)
        return step::end;
    end_ = find_backslash(std::wstring_view(rest_).substr(0, rest_length_), position_);
    if (end_ == rest_length_)
        more_ = false;
    if (element() == L".")
        return take_dot();
    if (element() == L"..")
        return take_two_dots();
    return take_name();
}

walk::step walk::take_dot()
{
    if (!is_directory_at(settled()))
        throw_nowhere();
    position_ = end_ + 1;
    return more_ ? step::next : step::end;
}

walk::step walk::take_two_dots()
{
    if (!is_directory_at(settled()))
        throw_nowhere();
    if (more_) {
        climb();
        position_ = end_ + 1;
        return step::next;
    }
    std::size_t const above = last_backslash_before_end();
    if (above >= root_end()) {
        length_ = above;
        return step::end;
    }
    bool const is_on_drive = current_type_ == windows::PATH_TYPE_DRIVE_ABSOLUTE ||
                             current_type_ == windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE;
    length_ = std::min(root_end(), resolved_.size());
    return is_on_drive ? finish_with(settled()) : step::end; // a drive keeps its backslash
}

void walk::climb()
{
    if (length_ != root_end())
        length_ = last_backslash_before_end() + 1;
}

walk::step walk::take_name()
{
    saved_length_ = length_;
    append(element());
    std::optional<found_link> link = look_for_link();
    return link ? follow(*std::move(link)) : keep_name();
}

walk::step walk::keep_name()
{
    append_backslash();
    position_ = end_ + 1;
    return more_ ? step::next : step::end;
}

std::optional<found_link> walk::look_for_link()
{
    std::wstring const here(settled());
    unsigned int error = ERROR_SUCCESS;
    windows::attrib_link_type type{};
    found_link link{read_link_text(here, type, error), false};
    check_query(error);
    if (link.target.empty()) {
        link.target = read_shortcut_target(here, error);
        link.is_shortcut = !link.target.empty();
        check_query(error);
    }
    return link.target.empty() ? std::nullopt : std::optional(std::move(link));
}

/// Only the last element has to be there: what is missing before it shows at the end.
void walk::check_query(unsigned int error) const
{
    if (error != ERROR_SUCCESS && !more_)
        throw_win32_exception(error, std::wstring(settled()));
}

void walk::count_link()
{
    if (link_count_ >= most_links)
        throw_exception(SystemError(ERROR_DS_LOOP_DETECT, narrow(settled())));
    ++link_count_;
}

walk::step walk::follow(found_link link)
{
    std::wstring &target = link.target;
    if (target.size() > 1 && is_backslash(target.back()))
        target.pop_back();
    count_link();
    length_ = saved_length_;
    path_type_enum const type = normalise_link_target(target);
    current_type_ = type;
    if (type == windows::PATH_TYPE_INVALID)
        throw_invalid_type();
    if (target.empty())
        throw_nowhere();
    more_ = true;
    switch (type) {
    case windows::PATH_TYPE_RELATIVE:
        return follow_relative(target);
    case windows::PATH_TYPE_ROOTED:
        return follow_rooted(target);
    case windows::PATH_TYPE_DRIVE_ABSOLUTE:
        return follow_drive(target, link.is_shortcut);
    case windows::PATH_TYPE_UNC:
        return follow_server(target);
    case windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE:
        return follow_long_drive(target);
    case windows::PATH_TYPE_LONG_UNC:
        return follow_long_server(target);
    default:
        reject_root(type);
    }
}

// a\b, from the directory that holds the link
walk::step walk::follow_relative(std::wstring const &target)
{
    splice_rest(target, 0);
    return step::next;
}

// \a, from the root that is in use
walk::step walk::follow_rooted(std::wstring const &target)
{
    if (target.size() > 1) {
        splice_rest(target, 1);
    } else if (end_ == rest_length_) {
        std::size_t const root = std::min(root_end(), resolved_.size());
        return finish_with(
            without_trailing_separator(std::wstring_view(resolved_).substr(0, root)));
    } else {
        ++end_;
        splice_rest({}, 0);
    }
    length_ = std::min(root_end(), resolved_.size());
    return step::next;
}

// C:\a
walk::step walk::follow_drive(std::wstring const &target, bool is_shortcut)
{
    bool const is_remote = initial_type_ == windows::PATH_TYPE_UNC ||
                           initial_type_ == windows::PATH_TYPE_LONG_UNC ||
                           is_mapped_network_drive(settled(), initial_type_);
    // a drive of the server, unless it was this machine that wrote the text
    if (is_remote && !is_shortcut)
        return keep_remote_link();
    root_length_ = drive_root_size;
    std::wstring_view const prefix = pathname_traits<wchar_t>::LONG_PATHNAME_PREFIX;
    if (target.size() == drive_root_size && tail() == 0)
        return finish_with(std::wstring(prefix) + target);
    skip_doubled_separator(target);
    splice_rest(target, drive_root_size);
    prefix_length_ = long_prefix_size;
    // the same drive stays as it was written, and the prefix with it
    std::wstring_view const root = clamped(target, drive_root_size);
    if (std::wstring_view(resolved_).substr(long_prefix_size, drive_root_size) != root)
        settle(std::wstring(prefix).append(root));
    length_ = long_prefix_size + root.size();
    return step::next;
}

// \\server\share\a
walk::step walk::follow_server(std::wstring const &target)
{
    std::size_t const root = element_root_length<wchar_t>(target);
    if (root == target.size() && tail() == 0)
        return finish_with(
            std::wstring(pathname_traits<wchar_t>::LONG_UNC_PATHNAME_PREFIX).append(target, 2));
    skip_doubled_separator(target);
    splice_rest(target, root);
    std::wstring root_text(pathname_traits<wchar_t>::LONG_UNC_PATHNAME_PREFIX);
    root_text.append(target, 2, root - 2);
    replace_root(root_text);
    return step::next;
}

// \\?\C:\a
walk::step walk::follow_long_drive(std::wstring const &target)
{
    constexpr std::size_t root = long_prefix_size + drive_root_size;
    root_length_ = drive_root_size;
    prefix_length_ = long_prefix_size;
    if (target.size() == root && tail() == 0)
        return finish_with(target);
    skip_doubled_separator(target);
    splice_rest(target, root);
    settle(clamped(target, root));
    if (length_ < root) {
        // the expansion of `C:` has no prefix, and all of it is the root: nothing counts
        // that stood behind it before
        std::fill(resolved_.begin() + static_cast<std::ptrdiff_t>(length_), resolved_.end(), L'\0');
        prefix_length_ = 0;
        root_length_ = length_;
    }
    return step::next;
}

// \\?\UNC\server\share\a
walk::step walk::follow_long_server(std::wstring const &target)
{
    std::size_t const root = checked_unc_root_length<wchar_t>(target, long_unc_prefix_size);
    bool const is_root_only =
        target.size() == root || (target.size() == root + 1 && is_backslash(target.back()));
    if (tail() == 0 && is_root_only)
        return finish_with(without_trailing_separator(target));
    skip_doubled_separator(target);
    splice_rest(target, root);
    replace_root(std::wstring_view(target).substr(0, root));
    return step::next;
}

/// A link to a drive of the server stays what it is, and nothing behind it is known.
walk::step walk::keep_remote_link()
{
    length_ = saved_length_ + (end_ - position_);
    if (ends_in_backslash(settled()) || end_ == rest_length_) {
        more_ = false;
        return step::end;
    }
    append_backslash();
    position_ = end_ + 1;
    return step::next;
}

/// The index of the backslash ahead of the last settled element. A drive without a prefix
/// has none ahead of its root, which is where it ends.
std::size_t walk::last_backslash_before_end() const
{
    std::size_t const found = resolved_.rfind(backslash<wchar_t>, length_ - 2);
    return found == std::wstring::npos ? drive_size : found;
}

void walk::append(std::wstring_view text)
{
    write_at(resolved_, length_, text);
    length_ += text.size();
}

void walk::append_backslash()
{
    if (!ends_in_backslash(settled()))
        append({&backslash<wchar_t>, 1});
}

/// The root of a server gets the backslash that elements need, and keeps it: no `..`
/// climbs above it.
void walk::replace_root(std::wstring_view root)
{
    settle(root);
    append_backslash();
    prefix_length_ = long_unc_prefix_size;
    root_length_ = length_ - long_unc_prefix_size;
    // the separator ahead of what is left stands in the root now
    position_ = rest_length_ > 0 && is_backslash(rest_.front()) ? 1 : 0;
}

void walk::settle(std::wstring_view text)
{
    write_at(resolved_, 0, text);
    length_ = text.size();
}

/// A target that ends in a backslash brings the separator ahead of the tail along.
void walk::skip_doubled_separator(std::wstring const &target)
{
    if (ends_in_backslash<wchar_t>(target) && tail() != 0)
        ++end_;
}

/// What is left to walk: the target from `skip` on, and what stood behind the link, with
/// one separator between them.
void walk::splice_rest(std::wstring_view target, std::size_t skip)
{
    std::wstring spliced(target.substr(std::min(skip, target.size())));
    std::wstring_view const old_tail = std::wstring_view(rest_).substr(end_, tail());
    if (ends_in_backslash<wchar_t>(spliced))
        spliced.pop_back();
    if (!spliced.empty() && !old_tail.empty() && !is_backslash(old_tail.front()))
        spliced += backslash<wchar_t>;
    spliced += old_tail;
    write_at(rest_, 0, spliced);
    rest_length_ = spliced.size();
    position_ = 0;
}

walk::step walk::finish_with(std::wstring_view text)
{
    answer_ = text;
    return step::end;
}

} // namespace

std::wstring resolve_link_chain(std::wstring_view path, path_type_enum path_type)
{
    return walk(path, path_type).run();
}

} // namespace fl::filesystem::detail::former
