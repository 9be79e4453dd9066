#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/pathname_traits.hpp>
#include <fl/filesystem/windows.hpp>

#include "failure/demanded_attributes.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "operations/removal_calls.hpp"
#include "pathname/long_prefix.hpp"
#include "pathname/shapes.hpp"
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

/// What an element added to the pathname that it went behind.
struct addition
{
    std::size_t former_size = 0;
    bool added_prefix = false;
};

/// A directory that is being emptied.
struct level
{
    detail::find_handle search;
    detail::file_handle directory; ///< closes ahead of the search
    addition added;                ///< by its own name
};

/// Removes a directory with all that is in it. A tree can be 16,000 levels deep, more than
/// a thread's stack has frames for, and the pathnames of all levels together would take
/// half a gigabyte. So the levels stand in a list, and there is one pathname.
class tree_remover
{
public:
    explicit tree_remover(std::wstring directory) : path_(std::move(directory)) {}
    tree_remover(tree_remover const &) = delete;
    tree_remover &operator=(tree_remover const &) = delete;
    ~tree_remover();

    void run();

private:
    void descend(addition added);
    void take_entry();
    void ascend();
    void advance();
    addition append(std::wstring_view name);
    void restore(addition added);
    std::wstring search_pattern() const;
    detail::find_handle begin_search(std::wstring const &pattern);
    detail::file_handle open_directory(std::wstring const &pattern) const;
    bool is_reparse_point(detail::file_handle const &directory) const;

    std::wstring path_; ///< of the directory at hand
    std::vector<level> levels_;
    WIN32_FIND_DATAW entry_ = {};
    bool has_entry_ = false;
    DWORD end_code_ = ERROR_SUCCESS; ///< why there is none
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
        if (has_entry_)
            take_entry();
        else
            ascend();
    }
}

/// Begins to empty the directory that `path_` has become by `added`. One that is no link
/// but a reparse point all the same holds what its filter shows in it: it goes as it is or
/// not at all.
void tree_remover::descend(addition added)
{
    std::wstring const pattern = search_pattern();
    level below{begin_search(pattern), open_directory(pattern), added};
    if (!is_reparse_point(below.directory)) {
        levels_.push_back(std::move(below));
        return;
    }
    detail::remove_directory_at(path_); // it vanishes when both handles are closed
    below.directory = detail::file_handle();
    close_search(below.search);
    restore(added);
    advance();
}

void tree_remover::take_entry()
{
    std::wstring_view const name = entry_.cFileName;
    if (detail::is_dot_name(name))
        return advance();
    addition const added = append(name);
    DWORD const attributes = entry_.dwFileAttributes;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        detail::delete_file_at(path_);
    else if (is_link(path_, attributes))
        detail::remove_directory_at(path_);
    else
        return descend(added);
    restore(added);
    advance();
}

/// Ends the directory at hand, which has no more entries.
void tree_remover::ascend()
{
    level &ended = levels_.back();
    close_search(ended.search);
    ended.directory = detail::file_handle();
    if (end_code_ != ERROR_NO_MORE_FILES)
        detail::throw_win32_exception(end_code_, path_);
    detail::remove_directory_at(path_);
    addition const added = ended.added;
    levels_.pop_back();
    restore(added);
    advance();
}

void tree_remover::advance()
{
    has_entry_ = !levels_.empty() && ::FindNextFileW(levels_.back().search.get(), &entry_);
    end_code_ = has_entry_ ? DWORD{ERROR_SUCCESS} : ::GetLastError();
}

addition tree_remover::append(std::wstring_view name)
{
    addition added{path_.size(), false};
    path_ += detail::backslash<wchar_t>;
    path_ += name;
    if (!needs_prefix(path_, name))
        return added;
    std::size_t const bare_size = path_.size();
    path_ = detail::add_long_prefix<wchar_t, wchar_t>(path_);
    added.added_prefix = path_.size() != bare_size;
    return added;
}

void tree_remover::restore(addition added)
{
    if (added.added_prefix)
        detail::strip_long_path_prefix(path_, path_.size(), std::wstring::npos);
    path_.resize(added.former_size);
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
    HANDLE const raw = ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry_,
                                          FindExSearchNameMatch, nullptr, 0);
    DWORD const code = ::GetLastError();
    if (raw == INVALID_HANDLE_VALUE)
        detail::throw_win32_exception(code, pattern);
    has_entry_ = true;
    return detail::find_handle(raw);
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
