#include "standard/filesystem.hpp"

#include "pathname/growing_pathname.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/shapes.hpp"
#include "platform/found_entry.hpp"
#include "platform/owned_handle.hpp"
#include "platform/reparse_point.hpp"
#include "standard/codes.hpp"
#include "standard/lexical.hpp"
#include "standard/opening.hpp"

#include <windows.h>

#include <winioctl.h>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace fl::filesystem::detail::standard {

namespace {

using std::filesystem::copy_options;
using std::filesystem::file_type;

bool has(copy_options options, copy_options asked)
{
    return (options & asked) != copy_options::none;
}

void call_copy_file(std::wstring const &from, std::wstring const &to, bool fail_if_there,
                    std::error_code &ec)
{
    attempt(ec, [&] { return ::CopyFileW(from.c_str(), to.c_str(), fail_if_there); });
}

/// The time of the last write of what `text` leads to, as the system counts it. None if it
/// can't be asked; then `ec` holds the system's code.
std::optional<std::int64_t> last_write(std::wstring const &text, std::error_code &ec)
{
    auto const [file, open_code] = open_target(text);
    FILE_BASIC_INFO info = {};
    ec = system_code(file ? get_information(file, FileBasicInfo, info) : open_code);
    if (ec)
        return std::nullopt;
    return info.LastWriteTime.QuadPart;
}

/// Whether `from` was written later than `to`. Not if it isn't known.
bool is_newer(std::wstring const &from, std::wstring const &to, std::error_code &ec)
{
    auto const from_time = last_write(from, ec);
    auto const to_time = from_time ? last_write(to, ec) : std::nullopt;
    return to_time && *from_time > *to_time;
}

/// A file that is there takes the place of no other, but it may be the very same.
bool copy_over_existing(std::wstring const &from, std::wstring const &to, copy_options options,
                        std::error_code &ec)
{
    if (equivalent(from, to, ec))
        ec = system_code(ERROR_SHARING_VIOLATION);
    if (ec || has(options, copy_options::skip_existing) || !is_newer(from, to, ec))
        return false;
    call_copy_file(from, to, false, ec);
    return !ec;
}

/// A file, a directory, a symbolic link, a junction, or none of them: there is nothing else that
/// couldn't be copied, such as the devices of other systems.
file_type look_at(std::wstring const &text, bool is_followed, std::error_code &ec)
{
    return (is_followed ? status(text, ec) : symlink_status(text, ec)).type();
}

std::wstring joined(std::wstring_view head, std::wstring_view name)
{
    std::wstring text;
    text.reserve(head.size() + 1 + name.size());
    text = head;
    join(text, name);
    return text;
}

/// Of the pathname of a file in native form.
std::wstring_view last_name(std::wstring_view text)
{
    return text.substr(text.rfind(backslash<wchar_t>) + 1);
}

/// Makes the empty directory `path` a junction like the one that `data` was read from.
bool set_reparse_point(std::wstring const &path, std::vector<unsigned char> &data,
                       std::error_code &ec)
{
    auto const [directory, code] = open_entry(path, GENERIC_WRITE);
    if (!directory)
        return fail(code, ec);
    return set_reparse_data(directory, data, ec);
}

bool read_junction(std::wstring const &path, std::vector<unsigned char> &data, std::error_code &ec)
{
    auto const [directory, code] = open_entry(path, FILE_READ_ATTRIBUTES);
    if (!directory)
        return fail(code, ec);
    data.resize(MAXIMUM_REPARSE_DATA_BUFFER_SIZE);
    if (!get_reparse_data(directory, data, ec))
        return false;
    data.resize(reparse_size(data)); // the system refuses any byte more
    return true;
}

/// Leaves nothing behind if it can't be done.
void copy_junction(std::wstring const &from, std::wstring const &to, std::error_code &ec)
{
    std::vector<unsigned char> data;
    if (read_junction(from, data, ec) && create_directory(to, ec) &&
        !set_reparse_point(to, data, ec))
        ::RemoveDirectoryW(to.c_str());
}

/// Whether what an enumeration found counts as a directory: it is one, or leads to one. A
/// link that can't be followed leads to none, and a reason for that is one for a later call.
bool is_directory_entry(std::wstring const &path, DWORD attributes, std::error_code &ec)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    std::error_code followed;
    bool const is_directory = status(path, followed).type() == file_type::directory;
    if (is_unexplained(followed))
        ec = followed;
    return is_directory;
}

/// What a name added to the pathnames that it went behind.
struct additions
{
    addition from;
    addition to;
};

/// A directory whose entries are being copied.
struct level
{
    find_handle search;
    additions added; ///< by its own name
};

/// Copies one name and, if it is a directory, what is in it. The levels of a tree stand in
/// a list and not on the stack: whoever copies a directory into itself makes as many as the
/// system lets him.
class copier
{
public:
    copier(std::wstring from, std::wstring to, copy_options options, std::error_code &ec,
           copy_listener const &listener)
        : from_(std::move(from)), to_(std::move(to)), options_(options), ec_(ec),
          listener_(listener)
    {
    }
    copier(copier const &) = delete;
    copier &operator=(copier const &) = delete;

    /// Returns whether nobody stopped it.
    bool run();

private:
    bool has(copy_options asked) const { return standard::has(options_, asked); }
    /// Whether a directory that is met is copied. A link can lead to one by now that led
    /// nowhere when it was listed.
    bool goes_below() const { return levels_.empty() || has(copy_options::recursive); }
    void copy_name();
    void copy_as(file_type from_type, file_type to_type);
    void copy_regular(file_type to_type);
    void copy_directory(file_type to_type);
    void enter();
    void take_entry();
    void append(std::wstring_view name);
    void leave();
    void finish();
    void advance();

    std::wstring from_;
    std::wstring to_;
    copy_options options_;
    std::error_code &ec_;
    copy_listener const &listener_;
    bool is_stopped_ = false;
    std::vector<level> levels_;
    found_entry entry_;
    additions added_; ///< by the name at hand
};

bool copier::run()
{
    copy_name();
    while (!ec_ && !is_stopped_ && !levels_.empty()) {
        if (entry_.is_there())
            take_entry();
        else
            leave();
    }
    return !is_stopped_;
}

void copier::copy_name()
{
    ec_.clear();
    bool const follows_from = !has(copy_options::copy_symlinks | copy_options::skip_symlinks);
    bool const follows_to = !has(copy_options::skip_symlinks | copy_options::create_symlinks);
    file_type const from_type = look_at(from_, follows_from, ec_);
    if (ec_)
        return;
    std::error_code to_code; // to be missing is what is expected of it
    file_type const to_type = look_at(to_, follows_to, to_code);
    if (to_type == file_type::none)
        ec_ = to_code;
    else
        copy_as(from_type, to_type);
    if (!ec_ && listener_)
        is_stopped_ = !listener_(from_, to_);
}

void copier::copy_as(file_type from_type, file_type to_type)
{
    bool const is_there = to_type != file_type::not_found;
    std::error_code compared; // a reason why it can't be done is one for a later call, too
    if (is_there && equivalent(from_, to_, compared))
        ec_ = generic_code(generic_file_exists);
    else if (is_unexplained(compared))
        ec_ = compared;
    else if (from_type == file_type::regular)
        copy_regular(to_type);
    else if (from_type == file_type::directory && goes_below())
        copy_directory(to_type);
    else if (has(copy_options::skip_symlinks))
        return;
    else if (from_type == junction && !is_there)
        copy_junction(from_, to_, ec_);
    else if (from_type == file_type::symlink && is_there)
        ec_ = generic_code(generic_not_supported);
    else if (from_type == file_type::symlink)
        copy_symlink(from_, to_, ec_);
}

void copier::copy_regular(file_type to_type)
{
    if (has(copy_options::directories_only))
        return;
    if (has(copy_options::create_symlinks))
        create_symlink(from_, to_, ec_);
    else if (has(copy_options::create_hard_links))
        attempt(ec_, [&] { return ::CreateHardLinkW(to_.c_str(), from_.c_str(), nullptr); });
    else if (to_type == file_type::directory)
        copy_file(from_, joined(to_, last_name(from_)), options_, ec_);
    else
        copy_file(from_, to_, options_, ec_);
}

void copier::copy_directory(file_type to_type)
{
    if (to_type == file_type::regular)
        ec_ = generic_code(generic_file_exists);
    else if (has(copy_options::create_symlinks))
        ec_ = generic_code(generic_is_a_directory);
    else
        create_directory(to_, ec_);
    if (!ec_ && (has(copy_options::recursive) || !has(copy_options::directories_only)))
        enter();
}

void copier::enter()
{
    find_handle search = begin_search(entry_, joined(from_, L"*"), 0);
    if (search)
        levels_.push_back({std::move(search), added_});
    else if (entry_.end_code() != ERROR_FILE_NOT_FOUND) // an empty root: it has no dots either
        ec_ = system_code(entry_.end_code());
}

void copier::take_entry()
{
    if (is_dot_name(entry_.name()))
        return advance();
    std::size_t const depth = levels_.size();
    append(entry_.name());
    bool const goes_along =
        has(copy_options::recursive) || !is_directory_entry(from_, entry_.attributes(), ec_);
    if (goes_along && !ec_)
        copy_name();
    if (!ec_ && !is_stopped_ && levels_.size() == depth)
        finish();
}

/// A name that the system would read as another one takes the pathnames along into a form in
/// which it doesn't.
void copier::append(std::wstring_view name)
{
    auto const append_to = [name](std::wstring &path) {
        return add_name(path, [name](std::wstring &grown) {
            if (loses_its_end(name))
                grown = make_literal_form<wchar_t, wchar_t>(grown);
            join(grown, name);
        });
    };
    added_ = {append_to(from_), append_to(to_)};
}

void copier::leave()
{
    added_ = levels_.back().added;
    levels_.pop_back();
    if (!levels_.empty())
        finish();
}

/// Goes on behind an entry that is done.
void copier::finish()
{
    take_off(from_, added_.from);
    take_off(to_, added_.to);
    advance();
}

void copier::advance()
{
    bool const goes_on = next_entry(entry_, levels_.back().search);
    if (!goes_on && entry_.end_code() != ERROR_NO_MORE_FILES)
        ec_ = system_code(entry_.end_code());
}

} // namespace

bool copy_file(std::wstring const &from, std::wstring const &to, copy_options options,
               std::error_code &ec)
{
    constexpr copy_options yielding = copy_options::skip_existing | copy_options::update_existing;
    call_copy_file(from, to, !has(options, copy_options::overwrite_existing), ec);
    if (!ec)
        return true;
    if (ec.value() != ERROR_FILE_EXISTS || !has(options, yielding))
        return false;
    return copy_over_existing(from, to, options, ec);
}

void copy(std::wstring const &from, std::wstring const &to, copy_options options,
          std::error_code &ec)
{
    copy(from, to, options, ec, copy_listener());
}

bool copy(std::wstring const &from, std::wstring const &to, copy_options options,
          std::error_code &ec, copy_listener const &listener)
{
    return copier(from, to, options, ec, listener).run();
}

} // namespace fl::filesystem::detail::standard
