#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/pathname_traits.hpp>
#include <fl/filesystem/windows.hpp>

#include "failure/demanded_attributes.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "operations/removal_calls.hpp"
#include "pathname/growing_pathname.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/shapes.hpp"
#include "platform/found_entry.hpp"
#include "platform/limits.hpp"
#include "platform/owned_handle.hpp"
#include "platform/reparse_point.hpp"

#include <windows.h>

#include <string_view>
#include <utility>
#include <vector>

namespace fl::filesystem {

namespace {

/// Whether `path` is a link to a directory, of which only the name may go. Its buffer
/// lives no longer than the question.
bool is_link(std::wstring const &path, DWORD attributes)
{
    detail::windows::reparse_data_context data;
    return detail::read_link_data(data, path, attributes);
}

/// Whether the system, without a long prefix, would take something else for `path`, which ends
/// in `name`, or nothing at all.
bool needs_prefix(std::wstring const &path, std::wstring_view name)
{
    return path.size() > detail::longest_bare_pathname || detail::loses_its_end(name);
}

/// A directory that is being emptied.
struct level
{
    detail::find_handle search;
    detail::file_handle directory; ///< closes ahead of the search
    detail::addition added;        ///< by its own name
};

/// Removes a directory with all that is in it. A tree can be 16,000 levels deep, more than
/// a thread's stack has frames for: the levels stand in a list.
class tree_remover
{
public:
    explicit tree_remover(std::wstring directory) : path_(std::move(directory)) {}
    tree_remover(tree_remover const &) = delete;
    tree_remover &operator=(tree_remover const &) = delete;
    ~tree_remover();

    void run();

private:
    void descend(detail::addition added);
    void take_entry();
    void ascend();
    void finish(detail::addition added);
    void advance();
    detail::addition append(std::wstring_view name);
    std::wstring search_pattern() const;
    detail::find_handle begin_search(std::wstring const &pattern);
    detail::file_handle open_directory(std::wstring const &pattern) const;
    bool is_reparse_point(detail::file_handle const &directory) const;

    std::wstring path_; ///< of the directory at hand
    std::vector<level> levels_;
    detail::found_entry entry_;
};

void close_search(detail::find_handle &search)
{
    if (::FindClose(search.release()))
        return;
    DWORD const code = ::GetLastError();
    detail::throw_win32_exception(code, std::wstring());
}

tree_remover::~tree_remover()
{
    while (!levels_.empty()) // the deepest first
        levels_.pop_back();
}

void tree_remover::run()
{
    descend({});
    while (!levels_.empty()) {
        if (entry_.is_there())
            take_entry();
        else
            ascend();
    }
}

/// Begins to empty the directory that `path_` has become by `added`. One that is no link
/// but a reparse point all the same holds what its filter shows in it: it goes as it is or
/// not at all.
void tree_remover::descend(detail::addition added)
{
    std::wstring const pattern = search_pattern();
    detail::find_handle search = begin_search(pattern);
    detail::file_handle directory = open_directory(pattern);
    level below{std::move(search), std::move(directory), added};
    if (!is_reparse_point(below.directory)) {
        levels_.push_back(std::move(below));
        return;
    }
    detail::remove_directory_at(path_); // it vanishes when both handles are closed
    below.directory = detail::file_handle();
    close_search(below.search);
    finish(added);
}

void tree_remover::take_entry()
{
    if (detail::is_dot_name(entry_.name()))
        return advance();
    detail::addition const added = append(entry_.name());
    DWORD const attributes = entry_.attributes();
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        detail::delete_file_at(path_);
    else if (is_link(path_, attributes))
        detail::remove_directory_at(path_);
    else
        return descend(added);
    finish(added);
}

/// Ends the directory at hand, which has no more entries.
void tree_remover::ascend()
{
    level &ended = levels_.back();
    close_search(ended.search);
    ended.directory = detail::file_handle();
    if (entry_.end_code() != ERROR_NO_MORE_FILES)
        detail::throw_win32_exception(entry_.end_code(), path_);
    detail::remove_directory_at(path_);
    detail::addition const added = ended.added;
    levels_.pop_back();
    finish(added);
}

/// Goes on behind an entry that is gone.
void tree_remover::finish(detail::addition added)
{
    detail::take_off(path_, added);
    if (!levels_.empty())
        advance();
}

void tree_remover::advance()
{
    entry_.advance(levels_.back().search);
}

detail::addition tree_remover::append(std::wstring_view name)
{
    return detail::add_name(path_, [name](std::wstring &path) {
        path += detail::backslash<wchar_t>;
        path += name;
        if (needs_prefix(path, name))
            path = detail::add_long_prefix<wchar_t, wchar_t>(path);
    });
}

std::wstring tree_remover::search_pattern() const
{
    std::wstring pattern;
    pattern.reserve(path_.size() + 2);
    pattern.append(path_).append(L"\\*");
    if (pattern.size() > detail::longest_bare_pathname)
        return detail::add_long_prefix<wchar_t, wchar_t>(pattern);
    return pattern;
}

detail::find_handle tree_remover::begin_search(std::wstring const &pattern)
{
    detail::find_handle search = entry_.begin(pattern, 0);
    if (!search)
        detail::throw_win32_exception(entry_.end_code(), pattern);
    return search;
}

/// A failure names the pattern, as that of the search ahead of it does.
detail::file_handle tree_remover::open_directory(std::wstring const &pattern) const
{
    auto [directory, code] = detail::open_reparse_point(path_, FILE_LIST_DIRECTORY);
    if (!directory) // even if no code says why
        detail::throw_win32_exception(code, pattern);
    return std::move(directory);
}

bool tree_remover::is_reparse_point(detail::file_handle const &directory) const
{
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!::GetFileInformationByHandle(directory.get(), &info)) {
        DWORD const code = ::GetLastError();
        detail::throw_win32_exception(code, path_);
    }
    return (info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

} // namespace

void remove_all(upath const &p)
{
    if (p.empty())
        return;
    std::wstring form = detail::windows::make_native_access_form_bridge(p.native());
    DWORD const attributes = detail::demand_attribute_data(form).dwFileAttributes;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        detail::delete_file_at(form);
    else if (is_link(form, attributes))
        detail::remove_directory_at(form);
    else
        tree_remover(std::move(form)).run();
}

void remove_all(std::u16string const &p)
{
    remove_all(upath(p));
}

} // namespace fl::filesystem
